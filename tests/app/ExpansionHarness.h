#pragma once

#include <memory>
#include <string>

#include "app/AppState.h"
#include "fakes/FakeKeyEventSource.h"
#include "fakes/FakePermission.h"
#include "fakes/FakePlaceholders.h"
#include "fakes/FakeSecureInput.h"
#include "fakes/FakeWorkspace.h"
#include "fakes/ImmediateQueue.h"
#include "fakes/ManualClock.h"
#include "fakes/ManualQueue.h"
#include "fakes/ManualScheduler.h"
#include "fakes/RecordingKeyEventPoster.h"
#include "fakes/RecordingSleeper.h"
#include "fakes/RecordingSoundOutput.h"

namespace zarvy {

// AppState among the real monitor, engine and injector, with fakes of everything outside. One
// journal has all that reaches the world: lines as "print ...", keys, pauses and sounds.
class ExpansionHarness {
 public:
  explicit ExpansionHarness(bool trusted = true) : permission(trusted) {
    workspace.setFrontmost(RunningApplication{10, QStringLiteral("editor"), {}, 1});
    state = std::make_unique<AppState>(services(), permission);
  }

  [[nodiscard]] ExpansionServices services() {
    return {monitor, engine, *injector,        poster,    sound,
            workers, stats,  secureInputWatch, scheduler, output};
  }

  [[nodiscard]] Snippet snippet(const QString& trigger, const QString& replacement) const {
    return Snippet::create(QStringLiteral("title"), trigger, replacement, clock);
  }

  // Types key by key, and lets the main thread come to rest after each.
  void type(const QString& text) {
    for (const QChar character : text) {
      source.type(character);
      scheduler.runPending();
    }
  }

  // Lets the workers and then the main thread do all they have to.
  void finish() {
    workers.drain();
    scheduler.runPending();
  }

  // What reached the world since the last call, one entry a line.
  [[nodiscard]] std::string takeJournal() {
    return journal.takeEntries().join(QStringLiteral("; ")).toStdString();
  }

  Journal journal;
  ManualClock clock;
  ManualScheduler scheduler;
  ImmediateSerialQueue keyQueue;
  ManualWorkerPool workers;
  FakeKeyEventSource source;
  FakePermission permission;
  FakeWorkspace workspace{journal};
  RecordingKeyEventPoster poster{journal};
  RecordingSleeper sleeper{journal};
  RecordingSoundOutput sound{journal};
  FakeSecureInput secureInput;
  SecureInputWatch secureInputWatch{secureInput, workspace, scheduler};

 private:
  class JournalOutput final : public LineOutput {
   public:
    explicit JournalOutput(Journal& journal) : m_journal(journal) {}
    void print(const QString& line) override { m_journal.add(QStringLiteral("print ") + line); }

   private:
    Journal& m_journal;
  };

 public:
  JournalOutput output{journal};
  FakePlaceholders placeholders;
  TextExpansionEngine engine{output, placeholders.services()};
  KeyboardMonitor monitor{source, permission, scheduler, keyQueue, output};
  std::shared_ptr<TextInjector> injector =
      TextInjector::make(poster, workspace, sleeper, workers, scheduler);
  // Their saves wait for ever: nothing drains the queue.
  DataStore store{output, [] { return std::nullopt; }};
  ManualSerialQueue documentQueue;
  DocumentQueue documents{store, documentQueue};
  StatsStore stats{documents, scheduler, clock, [] { return CalendarDays(QStringLiteral("UTC")); }};
  std::unique_ptr<AppState> state;
};

}  // namespace zarvy
