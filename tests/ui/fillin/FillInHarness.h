#pragma once

#include <stdexcept>
#include <string>
#include <utility>

#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

#include "core/TextExpansionEngine.h"
#include "fakes/FakePlaceholders.h"
#include "fakes/FakeWorkspace.h"
#include "fakes/Journal.h"
#include "fakes/ManualQueue.h"
#include "fakes/ManualSteadyClock.h"
#include "fakes/RecordingLineOutput.h"
#include "storage/DataStore.h"
#include "storage/DocumentQueue.h"
#include "storage/FieldDefaultsStore.h"
#include "ui/fillin/StandaloneFillInForm.h"

namespace zarvy {

// What a form works with: the real engine and the real store, which saves to nowhere.
class FillInHarness {
 public:
  FillInHarness() {
    workspace.setFrontmost(RunningApplication{10, QStringLiteral("editor"), {}, 1});
  }

  // The panels that were taken away are deleted by now.
  ~FillInHarness() { QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }
  FillInHarness(const FillInHarness&) = delete;
  FillInHarness& operator=(const FillInHarness&) = delete;

  [[nodiscard]] FillInServices services() {
    return {engine, fieldDefaults, placeholders.dates, placeholders.clock, scheduler, workspace};
  }

  [[nodiscard]] static Snippet snippet(const QString& replacement) {
    Snippet result;
    result.title = QStringLiteral("Letter");
    result.trigger = QStringLiteral(";letter");
    result.replacement = replacement;
    return result;
  }

  Journal journal;
  FakeWorkspace workspace{journal};
  RecordingLineOutput output;
  ManualScheduler scheduler;
  DataStore store{output, [] { return std::nullopt; }};
  ManualSerialQueue documentQueue;
  DocumentQueue documents{store, documentQueue};
  FieldDefaultsStore fieldDefaults{documents, scheduler};
  FakePlaceholders placeholders;
  ManualSteadyClock steadyClock;
  TextExpansionEngine engine{
      output,
      steadyClock,
      {placeholders.clock, placeholders.dates, placeholders.pasteboard, placeholders.mainThread,
       placeholders.counters, fieldDefaults, placeholders.shell, placeholders.javaScript}};
};

// What a screen reader calls `widget`: by the label that belongs to it, or else by its own name.
inline QString spokenName(QWidget& widget) {
  const QAccessibleInterface* const told = QAccessible::queryAccessibleInterface(&widget);
  if (told == nullptr) return {};
  const auto labels = told->relations(QAccessible::Label);
  return (labels.isEmpty() ? told : labels.first().first)->text(QAccessible::Name);
}

// The one control of this kind and spoken name.
template <typename Control>
Control& named(const QWidget& window, const QString& name) {
  Control* found = nullptr;
  for (Control* control : window.findChildren<Control*>()) {
    if (spokenName(*control) != name) continue;
    EXPECT_EQ(found, nullptr) << "two of the name " << name.toStdString();
    found = control;
  }
  if (found == nullptr) throw std::runtime_error("no control " + name.toStdString());
  return *found;
}

inline QPushButton& button(const QWidget& window, const QString& text) {
  for (QPushButton* candidate : window.findChildren<QPushButton*>()) {
    if (candidate->text() == text) return *candidate;
  }
  throw std::runtime_error("no button " + text.toStdString());
}

}  // namespace zarvy
