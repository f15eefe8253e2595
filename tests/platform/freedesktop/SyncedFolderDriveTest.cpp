#include <pwd.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "fakes/FakeUserDefaults.h"
#include "platform/freedesktop/SyncedFolderDrive.h"
#include "support/EnvironmentVariable.h"
#include "support/QtPrinters.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

class SyncedFolderDriveTest : public testing::Test {
 protected:
  void makeFolder(const QString& name) const { ASSERT_TRUE(QDir(home()).mkpath(name)); }
  void name(const QString& folder) {
    m_defaults.setString(SyncedFolderDrive::folderKey.toString(), folder);
  }
  [[nodiscard]] QString home() const { return m_root.path(); }
  [[nodiscard]] QString inHome(const QString& name) const { return m_root.filePath(name); }

  const QTemporaryDir m_root;
  FakeUserDefaults m_defaults;
  const SyncedFolderDrive m_drive{m_defaults, [this] { return home(); }};
};

TEST_F(SyncedFolderDriveTest, LooksForWhatTheUsualClientsMake) {
  EXPECT_EQ(m_drive.places(u"/home/u"_s),
            (QStringList{u"/home/u/Nextcloud"_s, u"/home/u/Dropbox"_s, u"/home/u/OneDrive"_s,
                         u"/home/u/pCloudDrive"_s, u"/home/u/Sync"_s}));
  EXPECT_FALSE(m_drive.isSignedIn());
}

TEST_F(SyncedFolderDriveTest, IsSignedInWhileAnyOfThemIsThere) {
  for (const QString& place : m_drive.places(home())) {
    ASSERT_TRUE(QDir().mkdir(place));
    EXPECT_TRUE(m_drive.isSignedIn()) << place.toStdString();
    ASSERT_TRUE(QDir().rmdir(place));
    EXPECT_FALSE(m_drive.isSignedIn()) << place.toStdString();
  }
}

TEST_F(SyncedFolderDriveTest, TakesNoFileForAFolder) {
  QFile file(inHome(u"Dropbox"_s));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  EXPECT_FALSE(m_drive.isSignedIn());
}

TEST_F(SyncedFolderDriveTest, GoesByTheFolderThatTheUserNames) {
  struct Row {
    QString named;
    QString place;
  };
  for (const Row& row :
       {Row{u"/srv/files"_s, u"/srv/files"_s}, Row{u"/srv/files/"_s, u"/srv/files"_s},
        Row{u"Shared/Mine"_s, u"/home/u/Shared/Mine"_s}, Row{u"~/Shared"_s, u"/home/u/Shared"_s},
        Row{u"~other"_s, u"/home/u/~other"_s}}) {
    name(row.named);
    EXPECT_EQ(m_drive.places(u"/home/u"_s), QStringList{row.place});
  }
  name(u""_s);
  EXPECT_EQ(m_drive.places(u"/home/u"_s).size(), 5);
}

TEST_F(SyncedFolderDriveTest, TakesNoOtherInThePlaceOfTheOneThatIsNamed) {
  makeFolder(u"Dropbox"_s);
  name(u"Mine"_s);
  EXPECT_FALSE(m_drive.isSignedIn());
  makeFolder(u"Mine"_s);
  EXPECT_TRUE(m_drive.isSignedIn());
}

TEST_F(SyncedFolderDriveTest, IsNotSignedInWithoutAHome) {
  name(home());
  const SyncedFolderDrive drive(m_defaults, [] { return std::nullopt; });
  EXPECT_EQ(drive.homeDirectory(), std::nullopt);
  EXPECT_FALSE(drive.isSignedIn());
}

TEST_F(SyncedFolderDriveTest, KnowsTheHomeWhateverTheEnvironmentSays) {
  const EnvironmentVariable elsewhere("HOME", "/nowhere");
  const passwd* const user = ::getpwuid(::getuid());
  if (user == nullptr) GTEST_SKIP() << "the system's list of users does not have this one";
  EXPECT_EQ(homeInUserList(), QFile::decodeName(user->pw_dir));
  EXPECT_EQ(SyncedFolderDrive(m_defaults).homeDirectory(), QFile::decodeName(user->pw_dir));
}

}  // namespace
}  // namespace zarvy
