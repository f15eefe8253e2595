#include <limits>
#include <pwd.h>
#include <sys/file.h>
#include <unistd.h>

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include "base/UtcZone.h"
#include "fakes/ManualClock.h"
#include "storage/DataFolder.h"
#include "support/EnvironmentVariable.h"
#include "support/FileSizeLimit.h"
#include "support/QtPrinters.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

class DataStoreTest : public DataFolder {};

TEST_F(DataStoreTest, MakesItsFolderWithItsParentsForTheUserAlone) {
  EXPECT_EQ(m_store.dataDirectory(), m_root.filePath(u"share/Zarvy"_s));
  EXPECT_TRUE(QDir(path(QString())).exists());
  EXPECT_EQ(mode(QString()), 0700U);
  EXPECT_EQ(m_output.lines(), QStringList());
}

TEST_F(DataStoreTest, LooksForItsFolderAgainAtEachUse) {
  EXPECT_TRUE(QDir(m_store.dataDirectory()).exists());
  ASSERT_TRUE(QDir(path(QString())).removeRecursively());
  EXPECT_TRUE(QDir(m_store.dataDirectory()).exists());
}

TEST_F(DataStoreTest, TakesTheRightsToWhatIsThereFromOthers) {
  write(u"snippets.json"_s, "[]");
  write(u"target.json"_s, "[]");
  ASSERT_TRUE(QFile::link(u"target.json"_s, path(u"folders.json"_s)));
  const auto open = [&](const QString& name, mode_t mode) {
    ASSERT_EQ(::chmod(QFile::encodeName(path(name)).constData(), mode), 0);
  };
  open(QString(), 0755);
  open(u"snippets.json"_s, 0664);
  open(u"target.json"_s, 0644);
  m_store.makePrivate();
  EXPECT_EQ(mode(QString()), 0700U);
  EXPECT_EQ(mode(u"snippets.json"_s), 0600U);
  EXPECT_EQ(mode(u"target.json"_s), 0644U) << "behind a link";
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
  const EnvironmentVariable folder("TMPDIR", QFile::encodeName(temporary));
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
}

TEST_F(DataStoreTest, StandsInTheDataFolderOfTheDesktop) {
  const EnvironmentVariable home("HOME", QFile::encodeName(m_root.filePath(u"home"_s)));
  const QString usual = m_root.filePath(u"home/.local/share/Zarvy"_s);
  {
    const EnvironmentVariable chosen("XDG_DATA_HOME", QFile::encodeName(m_root.filePath(u"xdg"_s)));
    EXPECT_EQ(DataStore(m_output).dataDirectory(), m_root.filePath(u"xdg/Zarvy"_s));
  }
  for (const char* noChoice : {"", "relative/path"}) {
    const EnvironmentVariable chosen("XDG_DATA_HOME", noChoice);
    EXPECT_EQ(DataStore(m_output).dataDirectory(), usual);
  }
  const EnvironmentVariable unchosen("XDG_DATA_HOME");
  EXPECT_EQ(DataStore(m_output).dataDirectory(), usual);
  EXPECT_EQ(m_output.lines(), QStringList());
}

// A temporary folder would be open to other users.
TEST_F(DataStoreTest, KnowsTheHomeOfTheUserWhereTheEnvironmentDoesNot) {
  const EnvironmentVariable unchosen("XDG_DATA_HOME");
  const EnvironmentVariable homeless("HOME");
  const passwd* const user = ::getpwuid(::getuid());
  ASSERT_NE(user, nullptr);
  EXPECT_EQ(DataStore::desktopApplicationSupport(),
            QFile::decodeName(user->pw_dir) + u"/.local/share"_s);
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
  EXPECT_EQ(files(), (QStringList{u"folders.json"_s, u"global_variables.json"_s, u"settings.json"_s,
                                  u"snippets.json"_s}));
}

TEST_F(DataStoreTest, WritesAnEmptyListAsAnEmptyArray) {
  m_store.saveSnippets({});
  EXPECT_EQ(content(u"snippets.json"_s), QByteArray("[\n\n]"));
  EXPECT_TRUE(m_store.loadSnippets().isEmpty());
  EXPECT_EQ(m_output.lines(), QStringList());
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
  const QDateTime exact(QDate(2026, 1, 21), QTime(9, 30, 15, 750), utcZone);
  const ManualClock clock(exact);
  m_store.saveSnippets({Snippet::create(u"T"_s, u";t"_s, u"r"_s, clock)});
  const QList<Snippet> snippets = m_store.loadSnippets();
  ASSERT_EQ(snippets.size(), 1);
  EXPECT_EQ(snippets.front().createdAt, exact.addMSecs(-750));
}

TEST_F(DataStoreTest, KeepsTextThatIsNotProperUnicode) {
  const ManualClock clock;
  const QString text = u"a"_s + QChar(0xD83D) + QChar(0) + u"\u2028"_s + QChar(0xDE00);
  const QList<Snippet> snippets{Snippet::create(text, text, text, clock)};
  m_store.saveSnippets(snippets);
  EXPECT_EQ(m_store.loadSnippets(), snippets);
  EXPECT_EQ(m_output.lines(), QStringList());
}

// Only the administrator can give files away.
class ForeignDocuments : public DataStoreTest {
 protected:
  void SetUp() override {
    if (::geteuid() != 0) GTEST_SKIP() << "this user cannot give files away";
    m_store.saveCounters({{u"a"_s, 1}});
  }

  void giveAway(const QString& file) {
    constexpr uid_t nobody = 65534;
    ASSERT_EQ(::chown(QFile::encodeName(file).constData(), nobody, nobody), 0);
  }

  const QMap<QString, qint64> m_none;
};

TEST_F(ForeignDocuments, AreNotReadAndReplacedByTheUsersOwn) {
  giveAway(path(u"counters.json"_s));
  EXPECT_EQ(m_store.loadCounters(), m_none);
  EXPECT_EQ(m_output.takeLines(),
            QStringList{u"Error loading counters: It belongs to another user"_s});
  m_store.saveCounters({{u"b"_s, 2}});
  EXPECT_EQ(m_store.loadCounters(), (QMap<QString, qint64>{{u"b"_s, 2}}));
}

TEST_F(ForeignDocuments, AreNeitherReadNorWrittenInAForeignFolder) {
  const QByteArray before = content(u"counters.json"_s);
  giveAway(m_store.dataDirectory());
  EXPECT_EQ(m_store.loadCounters(), m_none);
  m_store.saveCounters({{u"b"_s, 2}});
  EXPECT_EQ(m_output.takeLines(),
            (QStringList{u"Error loading counters: Its folder belongs to another user"_s,
                         u"Error saving counters: Its folder belongs to another user"_s}));
  EXPECT_EQ(content(u"counters.json"_s), before);
}

TEST_F(DataStoreTest, KeepsAwkwardNamesAndTheLargestNumbersOfCounters) {
  const QMap<QString, qint64> counters{{u""_s, 0},
                                       {u"Invoice"_s, 9007199254740993},
                                       {u"invoice"_s, qint64{1} << 62},
                                       {u"a/b \"c\"\n"_s, std::numeric_limits<qint64>::min()},
                                       {u"\U0001F600"_s, 1},
                                       {u"\uFF21"_s, 2},
                                       {QString(QChar(0xD83D)), 3},
                                       {QString(QChar(0)), -1}};
  m_store.saveCounters(counters);
  EXPECT_EQ(m_store.loadCounters(), counters);
  EXPECT_EQ(m_output.lines(), QStringList());
}

TEST_F(DataStoreTest, TellsWhatIsWrongWithAMapWithoutNamingTheUsersOwnNames) {
  write(u"counters.json"_s, "{\"a\":1,\"secret\":0.5}");
  EXPECT_TRUE(m_store.loadCounters().isEmpty());
  write(u"field_defaults.json"_s, "{\"secret\":5}");
  EXPECT_TRUE(m_store.loadFieldDefaults().isEmpty());
  EXPECT_EQ(m_output.lines(),
            (QStringList{u"Error loading counters: member 1 is not a whole number of 64 bits"_s,
                         u"Error loading field defaults: member 0 is not a string"_s}));
}

// As where the disk is full: the file that is being written cannot grow.
TEST_F(DataStoreTest, KeepsTheOldDocumentWhereTheNewOneCannotBeWritten) {
  const QMap<QString, qint64> counters{{u"a"_s, 1}};
  m_store.saveCounters(counters);
  const QByteArray before = content(u"counters.json"_s);
  {
    const FileSizeLimit full(10);
    m_store.saveCounters({{u"much longer"_s, 123456789}});
  }
  EXPECT_EQ(m_output.takeLines(), QStringList{u"Error saving counters: File too large"_s});
  EXPECT_EQ(content(u"counters.json"_s), before);
  EXPECT_EQ(files(), QStringList{u"counters.json"_s});
}

TEST_F(DataStoreTest, RemovesOnlyWhatUnfinishedSavesLeftBehind) {
  m_store.saveFolders({});
  const QStringList left = {u".counters.json.XXXXXX.zarvy-save"_s,
                            u".folders.json.a1B2c3.zarvy-save"_s};
  const QStringList ofOthers = {u".folders.json"_s,
                                u".folders.json.a1B2c3"_s,  // as rsync names its own
                                u".folders.json.a1B2c34.zarvy-save"_s,
                                u".other.a1B2c3.zarvy-save"_s,
                                u".snippets.json.backup"_s,
                                u"folders.json.a1B2c3.zarvy-save"_s};
  for (const QString& name : left + ofOthers) {
    write(name, "x");
    makeOld(name);
  }
  m_store.removeUnfinishedSaves();
  EXPECT_EQ(files(), ofOthers.mid(0, 5) + QStringList{u"folders.json"_s} + ofOthers.mid(5));
  EXPECT_EQ(m_output.lines(), QStringList());
}

// It may be that of another machine, or of a process that is at it.
TEST_F(DataStoreTest, LeavesAnUnfinishedSaveAloneUntilItIsOld) {
  const QString name = u".folders.json.a1B2c3.zarvy-save"_s;
  write(name, "x");
  m_store.removeUnfinishedSaves();
  EXPECT_EQ(files(), QStringList{name});
  makeOld(name);
  m_store.removeUnfinishedSaves();
  EXPECT_EQ(files(), QStringList());
}

TEST_F(DataStoreTest, LeavesTheSaveOfAnotherProcessAlone) {
  const QString name = u".folders.json.a1B2c3.zarvy-save"_s;
  write(name, "x");
  makeOld(name);
  QFile other(path(name));
  ASSERT_TRUE(other.open(QIODevice::ReadWrite));
  ASSERT_EQ(::flock(other.handle(), LOCK_EX), 0);
  m_store.removeUnfinishedSaves();
  EXPECT_EQ(files(), QStringList{name});
  other.close();
  m_store.removeUnfinishedSaves();
  EXPECT_EQ(files(), QStringList());
}

TEST_F(DataStoreTest, LeavesLinksAlone) {
  const QString name = u".folders.json.a1B2c3.zarvy-save"_s;
  write(u"elsewhere"_s, "x");
  makeOld(u"elsewhere"_s);
  ASSERT_TRUE(QFile::link(path(u"elsewhere"_s), path(name)));
  m_store.removeUnfinishedSaves();
  EXPECT_EQ(files(), (QStringList{name, u"elsewhere"_s}));
}

// As users have it who keep their documents under version control.
TEST_F(DataStoreTest, SavesADocumentThatIsALinkWhereItLeads) {
  ASSERT_TRUE(QDir().mkpath(path(u"kept"_s)));
  write(u"kept/counters"_s, "{}");
  ASSERT_TRUE(QFile::link(u"kept/counters"_s, path(u"counters.json"_s)));
  const QString left = u"kept/.counters.a1B2c3.zarvy-save"_s;
  write(left, "x");
  makeOld(left);
  m_store.saveCounters({{u"n"_s, 7}});
  m_store.removeUnfinishedSaves();
  EXPECT_EQ(QFileInfo(path(u"counters.json"_s)).symLinkTarget(), path(u"kept/counters"_s));
  EXPECT_EQ(m_store.loadCounters(), (QMap<QString, qint64>{{u"n"_s, 7}}));
  EXPECT_TRUE(QFileInfo(path(u"kept/counters"_s)).isFile());
  EXPECT_EQ(QDir(path(u"kept"_s)).entryList(QDir::Files | QDir::Hidden),
            QStringList{u"counters"_s});
  EXPECT_EQ(files(), QStringList{u"counters.json"_s});
}

}  // namespace
}  // namespace zarvy
