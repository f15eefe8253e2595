#pragma once

#include <functional>
#include <memory>
#include <optional>

#include <QList>
#include <QMap>
#include <QString>

#include "base/LineOutput.h"
#include "core/model/ExpansionEvent.h"
#include "core/model/Folder.h"
#include "core/model/GlobalVariable.h"
#include "core/model/ImportBatch.h"
#include "core/model/Settings.h"
#include "core/model/Snippet.h"
#include "core/model/StatsSummary.h"
#include "core/model/SyncMetadata.h"

namespace zarvy {

class DocumentBackups;
class DocumentFile;
template <typename Value>
struct StoredDocument;

// Where the documents of the program live and how they are written. Holds none of them: a load
// reads the file, a save replaces it.
//
// Every operation does its work before it returns and takes no lock: all of them run on one serial
// queue, off the main thread, which is what keeps saves in order. DocumentQueue is the way there.
//
// Failures do not travel: each prints one line; a failed load gives what a missing file gives, a
// failed save leaves the old file.
class DataStore {
 public:
  // Finds the folder that holds the data folders of the user's applications; absent where the
  // system names none.
  using ApplicationSupportLookup = std::function<std::optional<QString>()>;

  // The one of the desktop: $XDG_DATA_HOME, else ~/.local/share; where HOME is not set, the home
  // that the system has for the user. Any thread.
  [[nodiscard]] static std::optional<QString> desktopApplicationSupport();

  // Looks there.
  explicit DataStore(LineOutput& output);
  DataStore(LineOutput& output, ApplicationSupportLookup applicationSupport);
  ~DataStore();
  DataStore(const DataStore&) = delete;
  DataStore& operator=(const DataStore&) = delete;

  // The folder of the documents, looked up each time and made where it is missing, for the user
  // alone.
  [[nodiscard]] QString dataDirectory() const;

  // Keeps the documents as they are, ahead of a sync that replaces the library. Each other write
  // keeps them by itself: see DocumentBackups.
  void keepBackupBeforeSync() const;

  // Takes the rights to the folder and the documents from all but the user. What links lead to
  // is left as it is: the user has put it there.
  void makePrivate() const;

  // Deletes what saves left behind whose process was killed in the middle.
  void removeUnfinishedSaves() const;

  [[nodiscard]] QList<Snippet> loadSnippets() const;
  void saveSnippets(const QList<Snippet>& snippets) const;

  [[nodiscard]] QList<Folder> loadFolders() const;
  void saveFolders(const QList<Folder>& folders) const;

  [[nodiscard]] Settings loadSettings() const;
  void saveSettings(const Settings& settings) const;

  [[nodiscard]] QList<ImportBatch> loadImportBatches() const;
  void saveImportBatches(const QList<ImportBatch>& importBatches) const;

  // Absent before the first sync.
  [[nodiscard]] std::optional<SyncMetadata> loadSyncMetadata() const;
  void saveSyncMetadata(const SyncMetadata& syncMetadata) const;

  [[nodiscard]] QList<GlobalVariable> loadGlobalVariables() const;
  void saveGlobalVariables(const QList<GlobalVariable>& globalVariables) const;

  // Values by the counter's name. One so near to the greatest number of 64 bits that counting on
  // could pass it is read as a smaller one.
  [[nodiscard]] QMap<QString, qint64> loadCounters() const;
  void saveCounters(const QMap<QString, qint64>& counters) const;

  // Oldest first.
  [[nodiscard]] QList<ExpansionEvent> loadStatsEvents() const;
  void saveStatsEvents(const QList<ExpansionEvent>& statsEvents) const;

  [[nodiscard]] StatsSummary loadStatsSummary() const;
  void saveStatsSummary(const StatsSummary& statsSummary) const;

  // Remembered texts by the field's name.
  [[nodiscard]] QMap<QString, QString> loadFieldDefaults() const;
  void saveFieldDefaults(const QMap<QString, QString>& fieldDefaults) const;

 private:
  [[nodiscard]] DocumentFile file(QStringView name, QStringView content) const;
  template <typename Value>
  [[nodiscard]] std::optional<Value> loadIfThere(const StoredDocument<Value>& document) const;
  template <typename Value>
  [[nodiscard]] Value load(const StoredDocument<Value>& document) const;
  template <typename Value>
  void save(const StoredDocument<Value>& document, const Value& value) const;

  LineOutput& m_output;
  ApplicationSupportLookup m_applicationSupport;
  const std::unique_ptr<DocumentBackups> m_backups;
};

}  // namespace zarvy
