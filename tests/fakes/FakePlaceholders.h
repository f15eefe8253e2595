#pragma once

#include <algorithm>
#include <deque>
#include <utility>

#include <QHash>
#include <QMap>
#include <QStringList>

#include "base/MainThread.h"
#include "core/evaluation/Evaluator.h"
#include "core/placeholders/DateFormatters.h"
#include "core/placeholders/PlaceholderServices.h"
#include "fakes/ManualClock.h"
#include "fakes/ManualScheduler.h"
#include "platform/Pasteboard.h"
#include "support/EnvironmentVariable.h"

namespace zarvy {

class FakePasteboard final : public Pasteboard {
 public:
  [[nodiscard]] QString text() const override { return content; }

  QString content;
};

class FakeCounters final : public Counters {
 public:
  qint64 nextValue(const QString& name, qint64 startValue) override {
    const auto known = values.find(name);
    if (known == values.end()) return *values.insert(name, startValue);
    return ++*known;
  }

  void resetCounter(const QString& name) override { values.insert(name, 0); }

  QMap<QString, qint64> values;
};

class FakeFieldDefaults final : public FieldDefaults {
 public:
  [[nodiscard]] std::optional<QString> value(const QString& name) const override {
    const auto known = values.constFind(name);
    return known == values.constEnd() ? std::nullopt : std::optional(*known);
  }

  QMap<QString, QString> values;
};

// Answers each source with the texts given for it, one after the other, the last one for ever; a
// source without any with "<source>". Keeps what it was asked.
class FakeEvaluator final : public Evaluator {
 public:
  void addAnswer(const QString& source, const QString& text) { m_answers[source].push_back(text); }

  QString evaluate(const QString& source) override {
    asked.append(source);
    const auto answers = m_answers.find(source);
    if (answers == m_answers.end()) return QLatin1Char('<') + source + QLatin1Char('>');
    const QString answer = answers->front();
    if (answers->size() > 1) answers->pop_front();
    return answer;
  }

  QStringList asked;

 private:
  QHash<QString, std::deque<QString>> m_answers;
};

// All that placeholders are made from, as the test sets it. The thread that makes it is the main
// one.
struct FakePlaceholders {
  explicit FakePlaceholders(RegionalSettings region = {"en_US"},
                            const QByteArray& timeZone = "Europe/Berlin")
      : machinesZone("TZ", timeZone), dates(std::move(region)) {}

  [[nodiscard]] PlaceholderServices services() {
    return {clock, dates, pasteboard, mainThread, counters, fieldDefaults, shell, javaScript};
  }

  EnvironmentVariable machinesZone;
  ManualClock clock;
  ManualScheduler scheduler;
  MainThread mainThread{scheduler};
  DateFormatters dates;
  FakePasteboard pasteboard;
  FakeCounters counters;
  FakeFieldDefaults fieldDefaults;
  FakeEvaluator shell;
  FakeEvaluator javaScript;
};

}  // namespace zarvy
