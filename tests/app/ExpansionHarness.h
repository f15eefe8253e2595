#pragma once

#include <memory>
#include <string>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "app/AppState.h"
#include "fakes/FakeCloudDrive.h"
#include "fakes/FakeFillInWindow.h"
#include "fakes/FakeHotKeys.h"
#include "fakes/FakeInputMethod.h"
#include "fakes/FakeKeyEventSource.h"
#include "fakes/FakePermission.h"
#include "fakes/FakePlaceholders.h"
#include "fakes/FakePresence.h"
#include "fakes/FakeQuickSearchWindow.h"
#include "fakes/FakeSecureInput.h"
#include "fakes/FakeUserDefaults.h"
#include "fakes/FakeWorkspace.h"
#include "fakes/ImmediateQueue.h"
#include "fakes/ManualClock.h"
#include "fakes/ManualQueue.h"
#include "fakes/ManualScheduler.h"
#include "fakes/ManualSteadyClock.h"
#include "fakes/RecordingKeyEventPoster.h"
#include "fakes/RecordingSleeper.h"
#include "fakes/RecordingSoundOutput.h"

namespace zarvy {

// AppState among the real monitor, engine, injector, stores and sync, with fakes of everything
// outside. One journal has all that reaches the world: lines as "print ...", keys, pauses, windows
// and sounds. The documents and the shared file are on the disk, in folders that go with it.
class ExpansionHarness {
 public:
  explicit ExpansionHarness(bool trusted = true) : permission(trusted) {
    workspace.setFrontmost(RunningApplication{10, QStringLiteral("editor"), {}, 1});
    makeState();
  }

  // Makes AppState, in place of the one that there may be.
  void makeState() {
    state.reset();
    state = std::make_unique<AppState>(libraryServices(), coordinatorServices(),
                                       expansionServices(), presence.services(scheduler, output));
  }

  [[nodiscard]] Snippet snippet(const QString& trigger, const QString& replacement) const {
    return Snippet::create(QStringLiteral("title"), trigger, replacement, clock);
  }

  // Writes these documents, and lets the state read them.
  void load(const LoadedLibrary& library) {
    store.saveSnippets(library.snippets);
    store.saveFolders(library.folders);
    store.saveSettings(library.settings);
    store.saveGlobalVariables(library.globalVariables);
    store.saveImportBatches(library.importBatches);
    if (library.syncMetadata) store.saveSyncMetadata(*library.syncMetadata);
    loadDocuments();
  }

  // Lets the state read the documents as they are.
  void loadDocuments() {
    state->loadData();
    documentQueue.drain();
    scheduler.runPending();
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

  // Lets `duration` pass, with all that comes due, file work and sync included.
  void pass(std::chrono::milliseconds duration) {
    for (std::chrono::milliseconds passed{0}; passed <= duration; ++passed) {
      do {
        documentQueue.drain();
        syncQueue.drain();
      } while (scheduler.runPending() != 0 || documentQueue.pendingCount() != 0 ||
               syncQueue.pendingCount() != 0);
      if (passed < duration) scheduler.advance(std::chrono::milliseconds{1});
    }
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
  FakeInputMethod inputMethod;
  RecordingKeyEventPoster poster{journal};
  RecordingSleeper sleeper{journal};
  RecordingSoundOutput sound{journal};
  FakeSecureInput secureInput;
  SecureInputWatch secureInputWatch{secureInput, workspace, scheduler};
  FakeFillInWindow fillInWindow{journal};
  FakeQuickSearchWindow quickSearchWindow{journal};
  FakeHotKeys hotKeys;
  FakePresence presence{journal};

 private:
  class JournalOutput final : public LineOutput {
   public:
    explicit JournalOutput(Journal& journal) : m_journal(journal) {}
    void print(const QString& line) override { m_journal.add(QStringLiteral("print ") + line); }

   private:
    Journal& m_journal;
  };

  [[nodiscard]] CoordinatorServices coordinatorServices() {
    return {monitor,           engine,    *injector, workspace, stats, fillInWindow,
            quickSearchWindow, scheduler, output};
  }

  [[nodiscard]] ExpansionServices expansionServices() {
    return {monitor,          engine,     *injector,         poster,  sound,     workers,
            secureInputWatch, permission, quickSearchWindow, hotKeys, scheduler, output};
  }

  [[nodiscard]] LibraryServices libraryServices() {
    return {documents, {counters, stats, fieldDefaults}, cloudSync, clock, "en_US"};
  }

 public:
  JournalOutput output{journal};
  FakePlaceholders placeholders;
  ManualSteadyClock steadyClock;
  TextExpansionEngine engine{output, steadyClock, placeholders.services()};
  KeyboardMonitor monitor{source, permission, scheduler, keyQueue, output};
  std::shared_ptr<TextInjector> injector =
      TextInjector::make(poster, workspace, inputMethod, sleeper, workers, scheduler);

  const QTemporaryDir folder;
  DataStore store{output, [this] { return folder.path(); }};
  ManualSerialQueue documentQueue;
  DocumentQueue documents{store, documentQueue};
  CounterStore counters{documents, scheduler};
  FieldDefaultsStore fieldDefaults{documents, scheduler};
  StatsStore stats{documents, scheduler, clock};

  FakeCloudDrive drive{folder.path(), folder.filePath(QStringLiteral("Drive"))};
  FakeUserDefaults defaults;
  ManualSerialQueue syncQueue;
  iCloudSyncService cloudSync{drive, defaults, clock, scheduler, syncQueue, output};

  std::unique_ptr<AppState> state;
};

}  // namespace zarvy
