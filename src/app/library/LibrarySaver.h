#pragma once

#include <functional>
#include <memory>
#include <optional>

#include <QObject>

#include "base/Scheduler.h"
#include "core/TextExpansionEngine.h"
#include "core/model/Folder.h"
#include "core/model/GlobalVariable.h"
#include "core/model/SnippetList.h"
#include "core/model/SyncMetadata.h"
#include "storage/DocumentQueue.h"
#include "storage/sync/iCloudSyncService.h"

namespace zarvy {

class Library;
class LibrarySync;

// Writes the library to its documents after a change, and uploads it behind that if sync is on.
// What is written is what the library was when the save was asked for: a later change comes with a
// save of its own. Several saves can be on their way at once. Nothing is saved before the library
// has been loaded. Main thread; all operations return at
// once, and failures are not reported.
class LibrarySaver final : public QObject {
  Q_OBJECT

 public:
  // All of it outlives this object; all but `library` and `sync` what it posts, too.
  LibrarySaver(const Library& library, LibrarySync& sync, TextExpansionEngine& engine,
               const iCloudSyncService& service, DocumentQueue& documents, Scheduler& scheduler);

  // Saves snippets and folders 50 ms from now, in place of an earlier save that has not begun yet.
  void scheduleSave();

  // Hands the global variables to the engine, and saves them at once.
  void saveGlobalVariablesAndUpload();

 private:
  // What a save is about, as it was when it was asked for.
  struct Snapshot {
    SnippetList snippets;
    QList<Folder> folders;
    QList<GlobalVariable> globalVariables;
    bool iCloudSyncEnabled = false;
    std::optional<SyncMetadata> metadata;
  };
  using Write = void (*)(const DataStore& store, const Snapshot& snapshot);

  static void writeSnippetsAndFolders(const DataStore& store, const Snapshot& snapshot);
  static void writeGlobalVariables(const DataStore& store, const Snapshot& snapshot);
  [[nodiscard]] std::shared_ptr<const Snapshot> snapshot() const;
  [[nodiscard]] DocumentQueue::Work saving(std::shared_ptr<const Snapshot> snapshot, Write write);
  [[nodiscard]] std::function<void(const SyncMetadata&)> announcing();

  const Library& m_library;
  LibrarySync& m_sync;
  TextExpansionEngine& m_engine;
  const iCloudSyncService& m_service;
  DocumentQueue& m_documents;
  Scheduler& m_scheduler;
  DebouncedSave m_saveTask;  // goes with this object, and the save that waits with it
};

}  // namespace zarvy
