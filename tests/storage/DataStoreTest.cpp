#include <functional>
#include <sys/stat.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "fakes/ManualClock.h"
#include "fakes/RecordingLineOutput.h"
#include "storage/DataStore.h"
#include "support/QtPrinters.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

class DataStoreTest : public testing::Test {
 protected:
  [[nodiscard]] QString path(const QString& name) const {
    return m_root.filePath(u"share/Zarvy/"_s + name);
  }

  void write(const QString& name, const QByteArray& content) const {
    ASSERT_TRUE(QDir().mkpath(path(QString())));
    QFile file(path(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
  }

  [[nodiscard]] QByteArray content(const QString& name) const {
    QFile file(path(name));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
    return file.readAll();
  }

  // Puts a folder in the place of a document, so that it can be neither read nor replaced.
  void block(const QString& name) const { ASSERT_TRUE(QDir().mkpath(path(name))); }

  QTemporaryDir m_root;
  RecordingLineOutput m_output;
  DataStore m_store{m_output, [this] { return m_root.filePath(u"share"_s); }};
};

TEST_F(DataStoreTest, MakesItsFolderWithItsParentsForTheUserAlone) {
  EXPECT_EQ(m_store.dataDirectory(), m_root.filePath(u"share/Zarvy"_s));
  struct stat status {};
  ASSERT_EQ(::stat(QFile::encodeName(path(QString())).constData(), &status), 0);
  EXPECT_TRUE(S_ISDIR(status.st_mode));
  EXPECT_EQ(status.st_mode & 07777U, 0700U);
  EXPECT_EQ(m_output.lines(), QStringList());
}

TEST_F(DataStoreTest, LooksForItsFolderAnewAtEachUse) {
  EXPECT_TRUE(QDir(m_store.dataDirectory()).exists());
  ASSERT_TRUE(QDir(path(QString())).removeRecursively());
  EXPECT_TRUE(QDir(m_store.dataDirectory()).exists());
}

TEST_F(DataStoreTest, SaysWhenItsFolderCannotBeMade) {
  const QString file = m_root.filePath(u"file"_s);
  QFile blocker(file);
  ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
  const DataStore store(m_output, [&] { return file; });
  EXPECT_EQ(store.dataDirectory(), file + u"/Zarvy"_s);
  const QStringList lines = m_output.takeLines();
  ASSERT_EQ(lines.size(), 1);
  EXPECT_TRUE(lines.front().startsWith(u"Error creating data directory: "));
}

TEST_F(DataStoreTest, FallsBackToATemporaryFolderThatItDoesNotMake) {
  const QString temporary = m_root.filePath(u"tmp"_s);
  ASSERT_TRUE(QDir().mkpath(temporary));
  const QByteArray before = qgetenv("TMPDIR");
  qputenv("TMPDIR", QFile::encodeName(temporary));
  const DataStore store(m_output, [] { return std::nullopt; });
  const QString warning =
      u"Warning: Application Support directory unavailable, using temporary directory"_s;
  EXPECT_EQ(store.dataDirectory(), temporary + u"/Zarvy"_s);
  EXPECT_EQ(m_output.takeLines(), QStringList{warning});
  EXPECT_FALSE(QDir(temporary + u"/Zarvy"_s).exists());
  EXPECT_TRUE(store.loadSnippets().isEmpty());
  EXPECT_EQ(m_output.takeLines(), QStringList{warning});
  store.saveFolders({});
  const QStringList lines = m_output.takeLines();
  ASSERT_EQ(lines.size(), 2);
  EXPECT_EQ(lines.front(), warning);
  EXPECT_TRUE(lines.back().startsWith(u"Error saving folders: "));
  if (before.isNull()) {
    qunsetenv("TMPDIR");
  } else {
    qputenv("TMPDIR", before);
  }
}

TEST_F(DataStoreTest, StandsInTheDataFolderOfTheDesktop) {
  const QByteArray before = qgetenv("XDG_DATA_HOME");
  qputenv("XDG_DATA_HOME", QFile::encodeName(m_root.filePath(u"xdg"_s)));
  EXPECT_EQ(DataStore(m_output).dataDirectory(), m_root.filePath(u"xdg/Zarvy"_s));
  if (before.isNull()) {
    qunsetenv("XDG_DATA_HOME");
  } else {
    qputenv("XDG_DATA_HOME", before);
  }
}

TEST_F(DataStoreTest, GivesTheDefaultsSilentlyWhereNothingWasSaved) {
  EXPECT_TRUE(m_store.loadSnippets().isEmpty());
  EXPECT_TRUE(m_store.loadFolders().isEmpty());
  EXPECT_TRUE(m_store.loadGlobalVariables().isEmpty());
  EXPECT_EQ(m_store.loadSettings().toJson(), Settings().toJson());
  EXPECT_EQ(m_output.lines(), QStringList());
}

TEST_F(DataStoreTest, ReadsBackWhatWasSaved) {
  const ManualClock clock;
  Snippet regex =
      Snippet::create(u"R"_s, u"(?<a>\\d)"_s, u"\U0001F600/\n\"\\"_s, clock, QUuid::createUuid());
  regex.isRegexTrigger = true;
  const QList<Snippet> snippets{Snippet::create(u"T"_s, u";t"_s, u"r"_s, clock), regex};
  const QList<Folder> folders{{QUuid::createUuid(), u"F"_s, FolderColor::pink, -3}};
  const QList<GlobalVariable> variables{
      {QUuid::createUuid(), u"City"_s, u"Bern"_s, clock.now(), clock.now()}};
  Settings settings;
  settings.quickSearchModifiers = 0x120000;
  settings.hideDockIcon = true;

  m_store.saveSnippets(snippets);
  m_store.saveFolders(folders);
  m_store.saveGlobalVariables(variables);
  m_store.saveSettings(settings);
  EXPECT_EQ(m_store.loadSnippets(), snippets);
  EXPECT_EQ(m_store.loadFolders(), folders);
  EXPECT_EQ(m_store.loadGlobalVariables(), variables);
  EXPECT_EQ(m_store.loadSettings().toJson(), settings.toJson());
  EXPECT_EQ(m_output.lines(), QStringList());
  EXPECT_EQ(QDir(path(QString())).entryList(QDir::Files | QDir::Hidden, QDir::Name),
            (QStringList{u"folders.json"_s, u"global_variables.json"_s, u"settings.json"_s,
                         u"snippets.json"_s}));
}

TEST_F(DataStoreTest, WritesTheOneForm) {
  m_store.saveFolders({{QUuid(), u"a/b"_s, FolderColor::blue, 0}});
  EXPECT_EQ(content(u"folders.json"_s),
            QByteArray("[\n"
                       "  {\n"
                       "    \"color\" : \"blue\",\n"
                       "    \"id\" : \"00000000-0000-0000-0000-000000000000\",\n"
                       "    \"name\" : \"a\\/b\",\n"
                       "    \"sortOrder\" : 0\n"
                       "  }\n"
                       "]"));
  struct stat status {};
  ASSERT_EQ(::stat(QFile::encodeName(path(u"folders.json"_s)).constData(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777U, 0600U);
}

TEST_F(DataStoreTest, WritesAnEmptyListAsAnEmptyArray) {
  m_store.saveSnippets({});
  EXPECT_EQ(content(u"snippets.json"_s), QByteArray("[\n\n]"));
  EXPECT_TRUE(m_store.loadSnippets().isEmpty());
  EXPECT_EQ(m_output.lines(), QStringList());
}

// One row for each document: what is printed in front of an error.
struct Row {
  QString fileName;
  QString loadFailure;
  QString saveFailure;
  std::function<bool(const DataStore&)> isDefault;
  std::function<void(const DataStore&)> save;
};

const Row documents[] = {
    {u"snippets.json"_s, u"Error loading snippets: "_s, u"Error saving snippets: "_s,
     [](const DataStore& store) { return store.loadSnippets().isEmpty(); },
     [](const DataStore& store) { store.saveSnippets({}); }},
    {u"folders.json"_s, u"Error loading folders: "_s, u"Error saving folders: "_s,
     [](const DataStore& store) { return store.loadFolders().isEmpty(); },
     [](const DataStore& store) { store.saveFolders({}); }},
    {u"settings.json"_s, u"Error loading settings: "_s, u"Error saving settings: "_s,
     [](const DataStore& store) { return store.loadSettings().toJson() == Settings().toJson(); },
     [](const DataStore& store) { store.saveSettings({}); }},
    {u"global_variables.json"_s, u"Error loading global variables: "_s,
     u"Error saving global variables: "_s,
     [](const DataStore& store) { return store.loadGlobalVariables().isEmpty(); },
     [](const DataStore& store) { store.saveGlobalVariables({}); }},
};

TEST_F(DataStoreTest, PrintsOneLineForADocumentThatCannotBeReadAndKeepsIt) {
  for (const Row& document : documents) {
    SCOPED_TRACE(document.fileName.toStdString());
    for (const QByteArray& text :
         {QByteArray("{not json"), QByteArray(), QByteArray("[1]"), QByteArray("{\"a\":1}"),
          QByteArray("[{}]"), QByteArray("\xFF")}) {
      write(document.fileName, text);
      EXPECT_TRUE(document.isDefault(m_store));
      const QStringList lines = m_output.takeLines();
      ASSERT_EQ(lines.size(), 1) << text.toStdString();
      EXPECT_TRUE(lines.front().startsWith(document.loadFailure));
      EXPECT_GT(lines.front().size(), document.loadFailure.size());
      EXPECT_FALSE(lines.front().contains(u'\n'));
      EXPECT_EQ(content(document.fileName), text);
    }
    document.save(m_store);
    EXPECT_TRUE(document.isDefault(m_store)) << "the next save replaces what was damaged";
    EXPECT_EQ(m_output.takeLines(), QStringList());
  }
}

TEST_F(DataStoreTest, PrintsOneLineWhereTheFileItselfCannotBeReadOrReplaced) {
  for (const Row& document : documents) {
    SCOPED_TRACE(document.fileName.toStdString());
    block(document.fileName);
    EXPECT_TRUE(document.isDefault(m_store));
    document.save(m_store);
    const QStringList lines = m_output.takeLines();
    ASSERT_EQ(lines.size(), 2);
    EXPECT_TRUE(lines.front().startsWith(document.loadFailure));
    EXPECT_TRUE(lines.back().startsWith(document.saveFailure));
  }
}

TEST_F(DataStoreTest, FailsTheWholeDocumentForOneBadRecord) {
  const QByteArray good =
      "{\"id\":\"0A1B2C3D-4E5F-6789-ABCD-EF0123456789\",\"name\":\"n\",\"color\":\"red\","
      "\"sortOrder\":1}";
  write(u"folders.json"_s, "[" + good + "]");
  EXPECT_EQ(m_store.loadFolders().size(), 1);
  QByteArray bad = good;
  write(u"folders.json"_s, "[" + good + "," + bad.replace("red", "teal") + "]");
  EXPECT_TRUE(m_store.loadFolders().isEmpty());
  EXPECT_EQ(m_output.takeLines(),
            QStringList{u"Error loading folders: element 1, key \"color\" is not one of the eight "
                        "colours"_s});
}

TEST_F(DataStoreTest, ReadsTheFormsOfEarlierFiles) {
  write(u"snippets.json"_s,
        "[{\"id\":\"0a1b2c3d-4e5f-6789-abcd-ef0123456789\",\"title\":\"\",\"trigger\":\";a\","
        "\"replacement\":\"r\",\"createdAt\":\"2026-01-21T09:30:00Z\","
        "\"modifiedAt\":\"2026-01-21T09:30:00Z\",\"later\":{\"x\":[1]}}]");
  const QList<Snippet> snippets = m_store.loadSnippets();
  ASSERT_EQ(snippets.size(), 1);
  EXPECT_FALSE(snippets.front().isRegexTrigger);
  EXPECT_EQ(snippets.front().folderID, std::nullopt);
  EXPECT_EQ(m_output.lines(), QStringList());
}

TEST_F(DataStoreTest, DropsFractionsOfASecondOnTheWayThroughAFile) {
  const QDateTime exact(QDate(2026, 1, 21), QTime(9, 30, 15, 750), Qt::UTC);
  const ManualClock clock(exact);
  m_store.saveSnippets({Snippet::create(u"T"_s, u";t"_s, u"r"_s, clock)});
  const QList<Snippet> snippets = m_store.loadSnippets();
  ASSERT_EQ(snippets.size(), 1);
  EXPECT_EQ(snippets.front().createdAt, exact.addMSecs(-750));
}

TEST_F(DataStoreTest, RefusesADateWithAFraction) {
  write(u"global_variables.json"_s,
        "[{\"id\":\"0a1b2c3d-4e5f-6789-abcd-ef0123456789\",\"name\":\"n\",\"value\":\"v\","
        "\"createdAt\":\"2026-01-21T09:30:00.5Z\",\"modifiedAt\":\"2026-01-21T09:30:00Z\"}]");
  EXPECT_TRUE(m_store.loadGlobalVariables().isEmpty());
  EXPECT_EQ(m_output.lines(),
            QStringList{u"Error loading global variables: element 0, key \"createdAt\" is not a "
                        "date of the form 2026-01-21T09:30:00Z"_s});
}

TEST_F(DataStoreTest, KeepsTextThatIsNoProperUnicode) {
  const ManualClock clock;
  const QString text = u"a"_s + QChar(0xD83D) + QChar(0) + u"\u2028"_s + QChar(0xDE00);
  const QList<Snippet> snippets{Snippet::create(text, text, text, clock)};
  m_store.saveSnippets(snippets);
  EXPECT_EQ(m_store.loadSnippets(), snippets);
  EXPECT_EQ(m_output.lines(), QStringList());
}

}  // namespace
}  // namespace zarvy
