#include "storage/DataStore.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

#include <QDateTime>
#include <QDir>
#include <QFileInfo>

#include "base/json/JsonText.h"
#include "base/posix/Users.h"
#include "storage/DocumentBackups.h"
#include "storage/DocumentFile.h"
#include "storage/PrivateFolder.h"
#include "storage/ReplaceFile.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

// A counter that passes the greatest number ends the process. One that is read can be counted on
// for longer than anybody does, whatever stands in the document.
constexpr qint64 greatestCounter = std::numeric_limits<qint64>::max() - (qint64{1} << 32);

constexpr DocumentKind snippetsDocument{u"snippets.json", u"Error loading snippets: ",
                                        u"Error saving snippets: "};
constexpr DocumentKind foldersDocument{u"folders.json", u"Error loading folders: ",
                                       u"Error saving folders: "};
constexpr DocumentKind settingsDocument{u"settings.json", u"Error loading settings: ",
                                        u"Error saving settings: "};
constexpr DocumentKind importBatchesDocument{
    u"import_batches.json", u"Error loading import batches: ", u"Error saving import batches: "};
constexpr DocumentKind syncMetadataDocument{u"sync_metadata.json", u"Error loading sync metadata: ",
                                            u"Error saving sync metadata: "};
constexpr DocumentKind globalVariablesDocument{u"global_variables.json",
                                               u"Error loading global variables: ",
                                               u"Error saving global variables: "};
constexpr DocumentKind countersDocument{u"counters.json", u"Error loading counters: ",
                                        u"Error saving counters: "};
constexpr DocumentKind statsEventsDocument{u"stats_events.json", u"Error loading stats events: ",
                                           u"Error saving stats events: "};
constexpr DocumentKind statsSummaryDocument{u"stats_summary.json", u"Error loading stats summary: ",
                                            u"Error saving stats summary: "};
constexpr DocumentKind fieldDefaultsDocument{
    u"field_defaults.json", u"Error loading field defaults: ", u"Error saving field defaults: "};

constexpr std::array allDocuments{
    snippetsDocument,     foldersDocument,         settingsDocument, importBatchesDocument,
    syncMetadataDocument, globalVariablesDocument, countersDocument, statsEventsDocument,
    statsSummaryDocument, fieldDefaultsDocument};

QStringList documentNames() {
  QStringList names;
  for (const DocumentKind& kind : allDocuments) names += kind.fileName.toString();
  return names;
}

}  // namespace

// By the base directory rules of the desktops, where a path that is not absolute does not count.
std::optional<QString> DataStore::desktopApplicationSupport() {
  QString chosen = qEnvironmentVariable("XDG_DATA_HOME");
  if (QDir::isAbsolutePath(chosen)) return chosen;
  QString home = qEnvironmentVariable("HOME");
  if (!QDir::isAbsolutePath(home)) home = homeInUserList().value_or(QString());
  if (!QDir::isAbsolutePath(home)) return std::nullopt;
  return QDir::cleanPath(home + u"/.local/share"_s);
}

DataStore::DataStore(LineOutput& output) : DataStore(output, desktopApplicationSupport) {}

DataStore::DataStore(LineOutput& output, ApplicationSupportLookup applicationSupport)
    : m_output(output),
      m_applicationSupport(std::move(applicationSupport)),
      m_backups(std::make_unique<DocumentBackups>(documentNames(), output)) {}

DataStore::~DataStore() = default;

QString DataStore::dataDirectory() const {
  const auto applicationSupport = m_applicationSupport();
  if (!applicationSupport) {
    m_output.print(
        u"Warning: Application Support directory unavailable, using temporary directory"_s);
    return QDir::tempPath() + u"/Zarvy"_s;
  }
  QString path = *applicationSupport + u"/Zarvy"_s;
  if (QFileInfo::exists(path)) return path;
  if (const auto error = makePrivateFolder(path)) {
    m_output.print(u"Error creating data directory: "_s + *error);
  }
  return path;
}

void DataStore::keepBackupBeforeSync() const {
  m_backups->beforeSync(dataDirectory(), QDateTime::currentDateTimeUtc());
}

void DataStore::makePrivate() const {
  const QString folder = dataDirectory();
  takeRightsFromOthers(folder);
  for (const QString& name : documentNames()) takeRightsFromOthers(folder + u'/' + name);
}

void DataStore::removeUnfinishedSaves() const {
  const QString folder = dataDirectory();
  for (const DocumentKind& kind : allDocuments) {
    removeUnfinishedReplacements(folder + u'/' + kind.fileName.toString());
  }
}

DocumentFile DataStore::document(const DocumentKind& kind) const {
  return {kind, dataDirectory(), m_output, m_backups.get()};
}

QList<Snippet> DataStore::loadSnippets() const {
  return document(snippetsDocument).load(recordsFromJson<Snippet>).value_or(QList<Snippet>());
}

void DataStore::saveSnippets(const QList<Snippet>& snippets) const {
  document(snippetsDocument).save(recordsToJson(snippets));
}

QList<Folder> DataStore::loadFolders() const {
  return document(foldersDocument).load(recordsFromJson<Folder>).value_or(QList<Folder>());
}

void DataStore::saveFolders(const QList<Folder>& folders) const {
  document(foldersDocument).save(recordsToJson(folders));
}

Settings DataStore::loadSettings() const {
  return document(settingsDocument).load(Settings::fromJson).value_or(Settings());
}

void DataStore::saveSettings(const Settings& settings) const {
  document(settingsDocument).save(writeJson(settings.toJson()));
}

QList<ImportBatch> DataStore::loadImportBatches() const {
  return document(importBatchesDocument)
      .load(recordsFromJson<ImportBatch>)
      .value_or(QList<ImportBatch>());
}

void DataStore::saveImportBatches(const QList<ImportBatch>& importBatches) const {
  document(importBatchesDocument).save(recordsToJson(importBatches));
}

std::optional<SyncMetadata> DataStore::loadSyncMetadata() const {
  return document(syncMetadataDocument).load(SyncMetadata::fromJson);
}

void DataStore::saveSyncMetadata(const SyncMetadata& syncMetadata) const {
  document(syncMetadataDocument).save(writeJson(syncMetadata.toJson()));
}

QList<GlobalVariable> DataStore::loadGlobalVariables() const {
  return document(globalVariablesDocument)
      .load(recordsFromJson<GlobalVariable>)
      .value_or(QList<GlobalVariable>());
}

void DataStore::saveGlobalVariables(const QList<GlobalVariable>& globalVariables) const {
  document(globalVariablesDocument).save(recordsToJson(globalVariables));
}

QMap<QString, qint64> DataStore::loadCounters() const {
  auto counters =
      document(countersDocument).load(integersFromJson).value_or(QMap<QString, qint64>());
  for (qint64& value : counters) value = std::min(value, greatestCounter);
  return counters;
}

void DataStore::saveCounters(const QMap<QString, qint64>& counters) const {
  document(countersDocument).save(mapToJson(counters));
}

QList<ExpansionEvent> DataStore::loadStatsEvents() const {
  return document(statsEventsDocument)
      .load(recordsFromJson<ExpansionEvent>)
      .value_or(QList<ExpansionEvent>());
}

void DataStore::saveStatsEvents(const QList<ExpansionEvent>& statsEvents) const {
  document(statsEventsDocument).save(recordsToJson(statsEvents));
}

StatsSummary DataStore::loadStatsSummary() const {
  return document(statsSummaryDocument).load(StatsSummary::fromJson).value_or(StatsSummary());
}

void DataStore::saveStatsSummary(const StatsSummary& statsSummary) const {
  document(statsSummaryDocument).save(writeJson(statsSummary.toJson()));
}

QMap<QString, QString> DataStore::loadFieldDefaults() const {
  return document(fieldDefaultsDocument).load(textsFromJson).value_or(QMap<QString, QString>());
}

void DataStore::saveFieldDefaults(const QMap<QString, QString>& fieldDefaults) const {
  document(fieldDefaultsDocument).save(mapToJson(fieldDefaults));
}

}  // namespace zarvy
