// The ten documents, byte for byte.

#include <functional>
#include <ostream>
#include <string>

#include <QJsonDocument>

#include <gtest/gtest.h>

#include "base/UtcZone.h"
#include "storage/DataFolder.h"
#include "support/QtPrinters.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

const QDateTime morning(QDate(2026, 1, 21), QTime(9, 30), utcZone);
const QUuid first = QUuid::fromString(u"{0a1b2c3d-4e5f-6789-abcd-ef0123456789}");
const QUuid second = QUuid::fromString(u"{fedcba98-7654-3210-fedc-ba9876543210}");

const QList<Snippet> snippets{{.id = first,
                               .title = u"Mail / \u00E9"_s,
                               .trigger = u";m"_s,
                               .replacement = u"a\n\"b\" \\ \U0001F600"_s,
                               .folderID = second,
                               .createdAt = morning,
                               .modifiedAt = morning.addSecs(1)},
                              {.id = second,
                               .title = u""_s,
                               .trigger = u"(\\d+)x"_s,
                               .replacement = u""_s,
                               .folderID = std::nullopt,
                               .createdAt = morning,
                               .modifiedAt = morning,
                               .isRegexTrigger = true}};
const QList<Folder> folders{{first, u"Code"_s, FolderColor::gray, -9007199254740993}};
const QList<ImportBatch> importBatches{{first, morning, u"export.csv"_s, {second, first}},
                                       {second, morning, u""_s, {}}};
const SyncMetadata syncMetadata{morning, u"ID"_s, 9007199254740993};
const QList<GlobalVariable> globalVariables{{first, u"City"_s, u"Bern"_s, morning, morning}};
const QMap<QString, qint64> counters{{u"invoice"_s, 42}, {u"Invoice"_s, 9007199254740993}};
const QList<ExpansionEvent> statsEvents{
    {first, second, u";m"_s, u"Mail"_s, 2, 100, morning, 10, 4}};
const StatsSummary statsSummary{1, 98, 98 / 3.33, morning};
const QMap<QString, QString> fieldDefaults{{u"Name"_s, u"Ada"_s}, {u"Empty"_s, u""_s}};

Settings settings() {
  Settings result;
  result.hideDockIcon = true;
  result.quickSearchModifiers = 0x100000;
  return result;
}

// One row for each document.
struct Document {
  const char* name;
  QString beginning;  // of the lines that failures print, behind "Error loading " or "... saving "
  std::function<void(const DataStore&)> save;
  QByteArray text;  // what that writes
  std::function<bool(const DataStore&)> reads;
  std::function<bool(const DataStore&)> readsDefault;
  QList<QByteArray> refused;  // beside what every document refuses

  [[nodiscard]] QString fileName() const { return QString::fromLatin1(name) + u".json"_s; }
};

void PrintTo(const Document& document, std::ostream* stream) {
  *stream << document.name;
}

const Document documents[] = {
    {"snippets",
     u"snippets"_s,  //
     [](const DataStore& store) { store.saveSnippets(snippets); },
     R"([
  {
    "createdAt" : "2026-01-21T09:30:00Z",
    "folderID" : "FEDCBA98-7654-3210-FEDC-BA9876543210",
    "id" : "0A1B2C3D-4E5F-6789-ABCD-EF0123456789",
    "isRegexTrigger" : false,
    "modifiedAt" : "2026-01-21T09:30:01Z",
    "replacement" : "a\n\"b\" \\ 😀",
    "title" : "Mail \/ é",
    "trigger" : ";m"
  },
  {
    "createdAt" : "2026-01-21T09:30:00Z",
    "id" : "FEDCBA98-7654-3210-FEDC-BA9876543210",
    "isRegexTrigger" : true,
    "modifiedAt" : "2026-01-21T09:30:00Z",
    "replacement" : "",
    "title" : "",
    "trigger" : "(\\d+)x"
  }
])",
     [](const DataStore& store) { return store.loadSnippets() == snippets; },
     [](const DataStore& store) { return store.loadSnippets().isEmpty(); },
     {"{}", "[{}]"}},
    {"folders",
     u"folders"_s,  //
     [](const DataStore& store) { store.saveFolders(folders); },
     R"([
  {
    "color" : "gray",
    "id" : "0A1B2C3D-4E5F-6789-ABCD-EF0123456789",
    "name" : "Code",
    "sortOrder" : -9007199254740993
  }
])",
     [](const DataStore& store) { return store.loadFolders() == folders; },
     [](const DataStore& store) { return store.loadFolders().isEmpty(); },
     {"{}", "[{}]",
      R"([{"id":"0A1B2C3D-4E5F-6789-ABCD-EF0123456789","name":"n","color":"teal","sortOrder":1}])"}},
    {"settings",
     u"settings"_s,  //
     [](const DataStore& store) { store.saveSettings(settings()); },
     R"({
  "hideDockIcon" : true,
  "iCloudSyncEnabled" : false,
  "launchAtLogin" : false,
  "quickSearchKeyCode" : 49,
  "quickSearchModifiers" : 1048576,
  "soundEnabled" : true
})",
     [](const DataStore& store) { return store.loadSettings().toJson() == settings().toJson(); },
     [](const DataStore& store) { return store.loadSettings().toJson() == Settings().toJson(); },
     {"{}", "[]"}},
    {"import_batches",
     u"import batches"_s,  //
     [](const DataStore& store) { store.saveImportBatches(importBatches); },
     R"([
  {
    "id" : "0A1B2C3D-4E5F-6789-ABCD-EF0123456789",
    "snippetIDs" : [
      "FEDCBA98-7654-3210-FEDC-BA9876543210",
      "0A1B2C3D-4E5F-6789-ABCD-EF0123456789"
    ],
    "sourceFile" : "export.csv",
    "timestamp" : "2026-01-21T09:30:00Z"
  },
  {
    "id" : "FEDCBA98-7654-3210-FEDC-BA9876543210",
    "snippetIDs" : [

    ],
    "sourceFile" : "",
    "timestamp" : "2026-01-21T09:30:00Z"
  }
])",
     [](const DataStore& store) { return store.loadImportBatches() == importBatches; },
     [](const DataStore& store) { return store.loadImportBatches().isEmpty(); },
     {"{}", "[{}]"}},
    {"sync_metadata",
     u"sync metadata"_s,  //
     [](const DataStore& store) { store.saveSyncMetadata(syncMetadata); },
     R"({
  "dataVersion" : 9007199254740993,
  "deviceID" : "ID",
  "lastSyncDate" : "2026-01-21T09:30:00Z"
})",
     [](const DataStore& store) { return store.loadSyncMetadata() == syncMetadata; },
     [](const DataStore& store) { return !store.loadSyncMetadata(); },
     {"{}", "[]"}},
    {"global_variables",
     u"global variables"_s,  //
     [](const DataStore& store) { store.saveGlobalVariables(globalVariables); },
     R"([
  {
    "createdAt" : "2026-01-21T09:30:00Z",
    "id" : "0A1B2C3D-4E5F-6789-ABCD-EF0123456789",
    "modifiedAt" : "2026-01-21T09:30:00Z",
    "name" : "City",
    "value" : "Bern"
  }
])",
     [](const DataStore& store) { return store.loadGlobalVariables() == globalVariables; },
     [](const DataStore& store) { return store.loadGlobalVariables().isEmpty(); },
     {"{}", "[{}]"}},
    {"counters",
     u"counters"_s,  //
     [](const DataStore& store) { store.saveCounters(counters); },
     R"({
  "Invoice" : 9007199254740993,
  "invoice" : 42
})",
     [](const DataStore& store) { return store.loadCounters() == counters; },
     [](const DataStore& store) { return store.loadCounters().isEmpty(); },
     {"[]", R"({"a":"1"})", R"({"a":1.5})", R"({"a":null})", R"({"a":9223372036854775808})"}},
    {"stats_events",
     u"stats events"_s,  //
     [](const DataStore& store) { store.saveStatsEvents(statsEvents); },
     R"([
  {
    "dayOfWeek" : 4,
    "expansionLength" : 100,
    "hourOfDay" : 10,
    "id" : "0A1B2C3D-4E5F-6789-ABCD-EF0123456789",
    "snippetID" : "FEDCBA98-7654-3210-FEDC-BA9876543210",
    "snippetTitle" : "Mail",
    "snippetTrigger" : ";m",
    "timestamp" : "2026-01-21T09:30:00Z",
    "triggerLength" : 2
  }
])",
     [](const DataStore& store) { return store.loadStatsEvents() == statsEvents; },
     [](const DataStore& store) { return store.loadStatsEvents().isEmpty(); },
     {"{}", "[{}]"}},
    {"stats_summary",
     u"stats summary"_s,  //
     [](const DataStore& store) { store.saveStatsSummary(statsSummary); },
     R"({
  "firstExpansionDate" : "2026-01-21T09:30:00Z",
  "totalCharactersSaved" : 98,
  "totalExpansions" : 1,
  "totalTimeSavedSeconds" : 29.42942942942943
})",
     [](const DataStore& store) { return store.loadStatsSummary() == statsSummary; },
     [](const DataStore& store) { return store.loadStatsSummary() == StatsSummary(); },
     {"{}", "[]"}},
    {"field_defaults",
     u"field defaults"_s,  //
     [](const DataStore& store) { store.saveFieldDefaults(fieldDefaults); },
     R"({
  "Empty" : "",
  "Name" : "Ada"
})",
     [](const DataStore& store) { return store.loadFieldDefaults() == fieldDefaults; },
     [](const DataStore& store) { return store.loadFieldDefaults().isEmpty(); },
     {"[]", R"({"a":1})", R"({"a":null})", R"({"a":["b"]})"}},
};

const QList<QByteArray> refusedByAll = {"{not json", "",     "[1]",        "\xFF",
                                        "[[]]",      "null", "{\"a\":{}}", "[]]"};

class Documents : public DataFolder, public testing::WithParamInterface<Document> {
 protected:
  void expectLoadFailure() {
    EXPECT_TRUE(GetParam().readsDefault(m_store));
    const QStringList lines = m_output.takeLines();
    const QString beginning = u"Error loading "_s + GetParam().beginning + u": "_s;
    ASSERT_EQ(lines.size(), 1);
    EXPECT_TRUE(lines.front().startsWith(beginning)) << lines.front().toStdString();
    EXPECT_GT(lines.front().size(), beginning.size());
    EXPECT_FALSE(lines.front().contains(u'\n'));
  }

  void expectSaveFailure() {
    GetParam().save(m_store);
    const QStringList lines = m_output.takeLines();
    const QString beginning = u"Error saving "_s + GetParam().beginning + u": "_s;
    ASSERT_EQ(lines.size(), 1);
    EXPECT_TRUE(lines.front().startsWith(beginning)) << lines.front().toStdString();
    EXPECT_GT(lines.front().size(), beginning.size());
  }
};

INSTANTIATE_TEST_SUITE_P(, Documents, testing::ValuesIn(documents),
                         [](const testing::TestParamInfo<Document>& row) {
                           return std::string(row.param.name);
                         });

TEST_P(Documents, GiveTheirDefaultSilentlyWhereNothingWasSaved) {
  EXPECT_TRUE(GetParam().readsDefault(m_store));
  EXPECT_EQ(files(), QStringList());
  EXPECT_EQ(m_output.lines(), QStringList());
}

TEST_P(Documents, AreWrittenInTheOneForm) {
  GetParam().save(m_store);
  EXPECT_EQ(content(GetParam().fileName()), GetParam().text);
  EXPECT_EQ(files(), QStringList{GetParam().fileName()});
  EXPECT_EQ(mode(GetParam().fileName()), 0600U);
  EXPECT_EQ(m_output.lines(), QStringList());
}

TEST_P(Documents, AreReadBackAsTheyWereSaved) {
  GetParam().save(m_store);
  EXPECT_TRUE(GetParam().reads(m_store));
  EXPECT_FALSE(GetParam().readsDefault(m_store));
  EXPECT_EQ(m_output.lines(), QStringList());
}

TEST_P(Documents, AreReadInAnyLayout) {
  const QByteArray compact =
      QJsonDocument::fromJson(GetParam().text).toJson(QJsonDocument::Compact);
  ASSERT_NE(compact, GetParam().text);
  write(GetParam().fileName(), compact);
  EXPECT_TRUE(GetParam().reads(m_store));
  EXPECT_EQ(m_output.lines(), QStringList());
}

TEST_P(Documents, AreKeptWhenTheyCannotBeReadUntilTheNextSave) {
  for (const QByteArray& text : refusedByAll + GetParam().refused) {
    SCOPED_TRACE(text.toStdString());
    write(GetParam().fileName(), text);
    expectLoadFailure();
    EXPECT_EQ(content(GetParam().fileName()), text);
  }
  GetParam().save(m_store);
  EXPECT_TRUE(GetParam().reads(m_store));
  EXPECT_EQ(m_output.lines(), QStringList());
}

TEST_P(Documents, SayWhereTheFileItselfCannotBeReadOrReplaced) {
  block(GetParam().fileName());
  expectLoadFailure();
  expectSaveFailure();
}

// Opening a pipe would wait for a writer.
TEST_P(Documents, AreRefusedWhereAPipeStandsInTheirPlace) {
  write(GetParam().fileName(), "");
  ASSERT_TRUE(QFile::remove(path(GetParam().fileName())));
  ASSERT_EQ(::mkfifo(QFile::encodeName(path(GetParam().fileName())).constData(), 0600), 0);
  expectLoadFailure();
  GetParam().save(m_store);
  EXPECT_TRUE(GetParam().reads(m_store));
  EXPECT_EQ(m_output.lines(), QStringList());
}

using AllDocuments = DataFolder;

// Nor are they copied where they are kept, which would fill the disk: the link itself is.
TEST_F(AllDocuments, AreRefusedWhereAFileThatNeverEndsStandsInTheirPlace) {
  const QString place = path(u"counters.json"_s);
  write(u"snippets.json"_s, "[]");
  ASSERT_TRUE(QFile::link(u"/proc/self/pagemap"_s, place));
  EXPECT_TRUE(m_store.loadCounters().isEmpty());
  EXPECT_EQ(m_output.takeLines(), QStringList{u"Error loading counters: Larger than 256 MiB"_s});
  m_store.saveCounters(counters);
  EXPECT_EQ(m_output.takeLines(), QStringList());
  EXPECT_EQ(m_store.loadCounters(), counters);
}

TEST_F(AllDocuments, AreRefusedWholeForOneDateWithAFraction) {
  QStringList refused;
  for (const Document& document : documents) {
    QByteArray text = document.text;
    const qsizetype date = text.lastIndexOf("09:30:00Z");
    if (date < 0) continue;
    write(document.fileName(), text.insert(date + 8, ".5"));
    EXPECT_TRUE(document.readsDefault(m_store)) << document.name;
    EXPECT_EQ(m_output.takeLines().size(), 1) << document.name;
    refused.append(document.fileName());
  }
  EXPECT_EQ(refused, (QStringList{u"snippets.json"_s, u"import_batches.json"_s,
                                  u"sync_metadata.json"_s, u"global_variables.json"_s,
                                  u"stats_events.json"_s, u"stats_summary.json"_s}));
}

}  // namespace
}  // namespace zarvy
