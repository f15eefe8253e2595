// Where the shared file lies, and what comes of a drive that is not there, cannot be written to or
// goes away.

#include <QDateTime>

#include <gtest/gtest.h>

#include "storage/sync/OrdinaryUser.h"
#include "storage/sync/SyncHarness.h"
#include "support/FileSizeLimit.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

class iCloudSyncFolderTest : public SyncHarness {
 protected:
  iCloudSyncFolderTest() { m_machine.metadata = m_before; }

  // Nothing but a status came of it, and the library is what it was.
  void expectNothingTaken(const SyncResult& result, const SyncStatus& status) const {
    EXPECT_EQ(result, SyncResult{status});
    EXPECT_EQ(m_machine.metadata, m_before);
    EXPECT_EQ(m_machine.library, LocalLibrary::of(u"A"_s));
  }

  void upload() const {
    const LocalLibrary& own = m_machine.library;
    m_machine.service().upload(own.snippets, own.folders, own.globalVariables, m_before);
  }

  void removeDrive() const { ASSERT_TRUE(QDir(m_place).removeRecursively()); }

  [[nodiscard]] QString notFoundLine() const {
    return u"iCloud sync: Mobile Documents folder not found at "_s + m_place;
  }
  [[nodiscard]] static QStringList adviceLines(const QString& home, const QString& places) {
    return {u"iCloud sync: iCloud Drive folder not found."_s, u"  Real home directory: "_s + home,
            u"  Looking for: "_s + places,
            u"  Make sure iCloud Drive is enabled in System Settings > Apple ID > iCloud"_s};
  }

  const SyncMetadata m_before{m_clock.now().addSecs(-60), u"A"_s, 4};
};

TEST_F(iCloudSyncFolderTest, IsMadeForTheUserAlone) {
  m_machine.sync();
  for (const auto& [path, mode] : {std::pair(folder(), 0700U), std::pair(file(), 0600U)}) {
    struct stat status {};
    ASSERT_EQ(::stat(QFile::encodeName(path).constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, mode);
  }
}

TEST_F(iCloudSyncFolderTest, LiesInTheFirstPlaceThatIsThere) {
  const QString later = m_home + u"/Later"_s;
  ASSERT_TRUE(QDir().mkpath(later));
  m_drive.setPlaces({m_home + u"/Missing"_s, m_place, later});
  m_machine.sync();
  EXPECT_EQ(m_output.lines(), (QStringList{usingLine(), uploadedLine}));
  EXPECT_TRUE(QFile::exists(file()));
  EXPECT_EQ(QDir(m_home).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name),
            (QStringList{u"Drive"_s, u"Later"_s}));
}

TEST_F(iCloudSyncFolderTest, IsNotTouchedWhileTheUserIsSignedOut) {
  m_drive.setSignedIn(false);
  expectNothingTaken(m_machine.sync(), SyncStatus::unavailable());
  EXPECT_EQ(m_output.takeLines(), QStringList{u"iCloud sync: User not signed into iCloud"_s});
  upload();
  EXPECT_EQ(m_machine.download(), std::nullopt);
  EXPECT_EQ(m_output.lines(), QStringList());
  EXPECT_FALSE(QDir(folder()).exists());
}

TEST_F(iCloudSyncFolderTest, IsLookedForInVainWithoutAHome) {
  const QString line = u"iCloud sync: Could not determine real home directory"_s;
  m_drive.setHome(std::nullopt);
  m_drive.setPlaces({u"unknown/Drive"_s});
  expectNothingTaken(m_machine.sync(), SyncStatus::error(u"iCloud Drive not available"_s));
  EXPECT_EQ(m_output.takeLines(),
            QStringList{line} + adviceLines(u"unknown"_s, u"unknown/Drive"_s));
  upload();
  EXPECT_EQ(m_output.takeLines(), QStringList{line});
  EXPECT_EQ(m_machine.download(), std::nullopt);
  EXPECT_EQ(m_output.lines(), QStringList{line});
}

TEST_F(iCloudSyncFolderTest, IsLookedForInEveryPlace) {
  removeDrive();
  const QString other = m_home + u"/Other"_s;
  m_drive.setPlaces({m_place, other});
  const QString places = m_place + u", "_s + other;
  expectNothingTaken(m_machine.sync(), SyncStatus::error(u"iCloud Drive not available"_s));
  EXPECT_EQ(m_output.takeLines(),
            QStringList{u"iCloud sync: Mobile Documents folder not found at "_s + places} +
                adviceLines(m_home, places));
  EXPECT_EQ(m_machine.download(), std::nullopt);
  EXPECT_FALSE(QDir(m_place).exists());
}

TEST_F(iCloudSyncFolderTest, IsNotMadeByAnUpload) {
  upload();
  EXPECT_EQ(m_output.lines(),
            QStringList{u"iCloud sync upload error: No such file or directory"_s});
  EXPECT_FALSE(QDir(folder()).exists());
}

TEST_F(iCloudSyncFolderTest, CannotBeMadeInADriveWithoutWritePermission) {
  changeMode(m_place, 0500);
  {
    const OrdinaryUser user({m_root.path(), m_home, m_place});
    expectNothingTaken(
        m_machine.sync(),
        SyncStatus::error(u"Failed to create iCloud directory: Permission denied"_s));
    EXPECT_EQ(m_output.takeLines(), QStringList{usingLine()});
  }
  changeMode(m_place, 0700);
  EXPECT_EQ(m_machine.sync().metadata->dataVersion, 5);
}

// The generation moves on all the same, and the next sync makes up for it.
TEST_F(iCloudSyncFolderTest, LosesNothingWhereItCannotBeWrittenTo) {
  m_machine.sync();
  const QByteArray old = content();
  forgetLines();
  m_machine.library = LocalLibrary::of(u"edited"_s);
  m_machine.metadata->dataVersion = 8;
  changeMode(folder(), 0500);
  {
    const OrdinaryUser user({m_root.path(), m_home, m_place, folder(), file()});
    const SyncResult result = m_machine.sync();
    EXPECT_EQ(result, (SyncResult{SyncStatus::success(m_clock.now()),
                                  SyncMetadata{m_clock.now(), u"A"_s, 9}}));
    EXPECT_EQ(m_output.takeLines(),
              (QStringList{usingLine(), downloadedLine,
                           u"iCloud sync upload error: Permission denied"_s}));
    EXPECT_EQ(content(), old);
  }
  changeMode(folder(), 0700);
  EXPECT_EQ(m_machine.sync().metadata->dataVersion, 10);
  EXPECT_EQ(m_output.lines(), (QStringList{usingLine(), downloadedLine, uploadedLine}));
  EXPECT_EQ(m_machine.library, LocalLibrary::of(u"edited"_s));
  EXPECT_EQ(m_machine.download()->snippets, m_machine.library.snippets);
}

// As where the disk is full: the file that is being written cannot grow.
TEST_F(iCloudSyncFolderTest, KeepsTheOldFileWhereTheNewOneCannotBeWritten) {
  m_machine.sync();
  const QByteArray old = content();
  forgetLines();
  {
    const FileSizeLimit full(10);
    upload();
  }
  EXPECT_EQ(m_output.lines(), QStringList{u"iCloud sync upload error: File too large"_s});
  EXPECT_EQ(content(), old);
  EXPECT_EQ(files(), QStringList{u"zarvy_sync.json"_s});
}

TEST_F(iCloudSyncFolderTest, LosesWhatKilledUploadsHaveLeft) {
  ASSERT_TRUE(QDir().mkpath(folder()));
  const QString left = u".zarvy_sync.json.a1B2c3.zarvy-save"_s;
  const QString ofRsync = u".zarvy_sync.json.AbC123"_s;
  for (const QString& name : {left, ofRsync, u"somebody's notes"_s}) {
    QFile file(folder() + u'/' + name);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    const QDateTime then = QDateTime::currentDateTimeUtc().addSecs(-2 * 60 * 60);
    ASSERT_TRUE(file.setFileTime(then, QFileDevice::FileModificationTime));
  }
  m_machine.sync();
  EXPECT_EQ(files(), (QStringList{ofRsync, u"somebody's notes"_s, u"zarvy_sync.json"_s}));
}

TEST_F(iCloudSyncFolderTest, MayBeTakenByAFile) {
  QFile blocker(folder());
  ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
  EXPECT_EQ(m_machine.sync().status, SyncStatus::success(m_clock.now()));
  EXPECT_EQ(m_output.lines(),
            (QStringList{usingLine(), u"iCloud sync upload error: Not a directory"_s}));
}

TEST_F(iCloudSyncFolderTest, MayGoAwayWithItsDriveBetweenTwoUploads) {
  m_machine.sync();
  forgetLines();
  removeDrive();
  upload();
  EXPECT_EQ(m_output.takeLines(), QStringList{notFoundLine()});
  EXPECT_FALSE(QDir(m_place).exists());
}

struct Vanishing {
  const char* name;
  QString folder;  // below the home
  QStringList lineOf(const QString& notFound) const {
    return {folder == u"Drive" ? notFound
                               : u"iCloud sync upload error: No such file or directory"_s};
  }
};

class VanishingFolder : public iCloudSyncFolderTest,
                        public testing::WithParamInterface<Vanishing> {};

INSTANTIATE_TEST_SUITE_P(All, VanishingFolder,
                         testing::Values(Vanishing{"Drive", u"Drive"_s},
                                         Vanishing{"FolderInIt", u"Drive/Zarvy"_s}),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_P(VanishingFolder, LosesNothingWhereItGoesDuringASync) {
  m_machine.sync();
  forgetLines();
  const LocalLibrary edited = LocalLibrary::of(u"edited"_s);
  m_machine.library = edited;
  m_machine.metadata->dataVersion = 20;
  m_machine.beginSync();
  ASSERT_TRUE(QDir(m_home + u'/' + GetParam().folder).removeRecursively());
  m_machine.wait();
  EXPECT_EQ(m_machine.result(), (SyncResult{SyncStatus::success(m_clock.now()),
                                            SyncMetadata{m_clock.now(), u"A"_s, 21}}));
  EXPECT_EQ(m_output.takeLines(), QStringList{usingLine()} + GetParam().lineOf(notFoundLine()));
  EXPECT_EQ(m_machine.library, edited);

  // It comes back, with the file that it had or without.
  ASSERT_TRUE(QDir().mkpath(m_place));
  EXPECT_EQ(m_machine.sync().metadata->dataVersion, 22);
  EXPECT_EQ(m_output.lines(), (QStringList{usingLine(), uploadedLine}));
  EXPECT_EQ(m_machine.library, edited);
  EXPECT_EQ(m_machine.download()->snippets, edited.snippets);
}

}  // namespace
}  // namespace zarvy
