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

// A document as the program knows it.
template <typename Value>
struct StoredDocument {
  QStringView fileName;
  QStringView content;  // what it holds, in the lines on failures
  JsonResult<Value> (*fromJson)(const QJsonValue& value) = nullptr;
  QByteArray (*toJson)(const Value& value) = nullptr;
};

namespace {

// A counter that passes the greatest number ends the process. One that is read is kept so far below
// it that no use reaches it, whatever number stands in the document.
constexpr qint64 greatestCounter = std::numeric_limits<qint64>::max() - (qint64{1} << 32);

template <typename Record>
QByteArray oneToJson(const Record& record) {
  return writeJson(record.toJson());
}

template <typename Record>
constexpr StoredDocument<Record> documentOf(QStringView fileName, QStringView content) {
  return {fileName, content, Record::fromJson, oneToJson<Record>};
}

template <typename Record>
constexpr StoredDocument<QList<Record>> listOf(QStringView fileName, QStringView content) {
  return {fileName, content, recordsFromJson<Record>, recordsToJson<Record>};
}

constexpr auto snippetsDocument = listOf<Snippet>(u"snippets.json", u"snippets");
constexpr auto foldersDocument = listOf<Folder>(u"folders.json", u"folders");
constexpr auto settingsDocument = documentOf<Settings>(u"settings.json", u"settings");
constexpr auto importBatchesDocument =
    listOf<ImportBatch>(u"import_batches.json", u"import batches");
constexpr auto syncMetadataDocument =
    documentOf<SyncMetadata>(u"sync_metadata.json", u"sync metadata");
constexpr auto globalVariablesDocument =
    listOf<GlobalVariable>(u"global_variables.json", u"global variables");
constexpr StoredDocument<QMap<QString, qint64>> countersDocument{u"counters.json", u"counters",
                                                                 integersFromJson, mapToJson};
constexpr auto statsEventsDocument = listOf<ExpansionEvent>(u"stats_events.json", u"stats events");
constexpr auto statsSummaryDocument =
    documentOf<StatsSummary>(u"stats_summary.json", u"stats summary");
constexpr StoredDocument<QMap<QString, QString>> fieldDefaultsDocument{
    u"field_defaults.json", u"field defaults", textsFromJson, mapToJson};

constexpr std::array allFileNames{snippetsDocument.fileName,     foldersDocument.fileName,
                                  settingsDocument.fileName,     importBatchesDocument.fileName,
                                  syncMetadataDocument.fileName, globalVariablesDocument.fileName,
                                  countersDocument.fileName,     statsEventsDocument.fileName,
                                  statsSummaryDocument.fileName, fieldDefaultsDocument.fileName};

QStringList documentNames() {
  QStringList names;
  for (const QStringView name : allFileNames) names += name.toString();
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
  for (const QString& name : documentNames()) removeUnfinishedReplacements(folder + u'/' + name);
}

DocumentFile DataStore::file(QStringView name, QStringView content) const {
  const DocumentKind kind{name, u"Error loading %1: "_s.arg(content),
                          u"Error saving %1: "_s.arg(content)};
  return {kind, dataDirectory(), m_output, m_backups.get()};
}

template <typename Value>
std::optional<Value> DataStore::loadIfThere(const StoredDocument<Value>& document) const {
  return file(document.fileName, document.content).load(document.fromJson);
}

template <typename Value>
Value DataStore::load(const StoredDocument<Value>& document) const {
  return loadIfThere(document).value_or(Value());
}

template <typename Value>
void DataStore::save(const StoredDocument<Value>& document, const Value& value) const {
  file(document.fileName, document.content).save(document.toJson(value));
}

QList<Snippet> DataStore::loadSnippets() const {
  return load(snippetsDocument);
}

void DataStore::saveSnippets(const QList<Snippet>& snippets) const {
  save(snippetsDocument, snippets);
}

QList<Folder> DataStore::loadFolders() const {
  return load(foldersDocument);
}

void DataStore::saveFolders(const QList<Folder>& folders) const {
  save(foldersDocument, folders);
}

Settings DataStore::loadSettings() const {
  return load(settingsDocument);
}

void DataStore::saveSettings(const Settings& settings) const {
  save(settingsDocument, settings);
}

QList<ImportBatch> DataStore::loadImportBatches() const {
  return load(importBatchesDocument);
}

void DataStore::saveImportBatches(const QList<ImportBatch>& importBatches) const {
  save(importBatchesDocument, importBatches);
}

std::optional<SyncMetadata> DataStore::loadSyncMetadata() const {
  return loadIfThere(syncMetadataDocument);
}

void DataStore::saveSyncMetadata(const SyncMetadata& syncMetadata) const {
  save(syncMetadataDocument, syncMetadata);
}

QList<GlobalVariable> DataStore::loadGlobalVariables() const {
  return load(globalVariablesDocument);
}

void DataStore::saveGlobalVariables(const QList<GlobalVariable>& globalVariables) const {
  save(globalVariablesDocument, globalVariables);
}

QMap<QString, qint64> DataStore::loadCounters() const {
  auto counters = load(countersDocument);
  for (qint64& value : counters) value = std::min(value, greatestCounter);
  return counters;
}

void DataStore::saveCounters(const QMap<QString, qint64>& counters) const {
  save(countersDocument, counters);
}

QList<ExpansionEvent> DataStore::loadStatsEvents() const {
  return load(statsEventsDocument);
}

void DataStore::saveStatsEvents(const QList<ExpansionEvent>& statsEvents) const {
  save(statsEventsDocument, statsEvents);
}

StatsSummary DataStore::loadStatsSummary() const {
  return load(statsSummaryDocument);
}

void DataStore::saveStatsSummary(const StatsSummary& statsSummary) const {
  save(statsSummaryDocument, statsSummary);
}

QMap<QString, QString> DataStore::loadFieldDefaults() const {
  return load(fieldDefaultsDocument);
}

void DataStore::saveFieldDefaults(const QMap<QString, QString>& fieldDefaults) const {
  save(fieldDefaultsDocument, fieldDefaults);
}

}  // namespace zarvy
