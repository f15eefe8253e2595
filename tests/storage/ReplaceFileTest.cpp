#include <sys/stat.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "storage/ReplaceFile.h"
#include "support/QtPrinters.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

QByteArray contentOf(const QString& path) {
  QFile file(path);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
  return file.readAll();
}

unsigned modeOf(const QString& path) {
  struct stat status {};
  EXPECT_EQ(::stat(QFile::encodeName(path).constData(), &status), 0);
  return status.st_mode & 07777U;
}

QStringList namesIn(const QString& folder) {
  return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
}

class ReplaceFileTest : public testing::Test {
 protected:
  [[nodiscard]] QString path(const QString& name) const { return m_folder.filePath(name); }

  QTemporaryDir m_folder;
};

TEST_F(ReplaceFileTest, MakesAFileForTheUserAlone) {
  const mode_t oldMask = ::umask(0);
  const auto error = replaceFile(path(u"a.json"_s), "one");
  ::umask(oldMask);
  EXPECT_EQ(error, std::nullopt);
  EXPECT_EQ(contentOf(path(u"a.json"_s)), "one");
  EXPECT_EQ(modeOf(path(u"a.json"_s)), 0600U);
  EXPECT_EQ(namesIn(m_folder.path()), QStringList{u"a.json"_s});
}

TEST_F(ReplaceFileTest, ReplacesTheFileAndLeavesItsOldReadersTheirs) {
  ASSERT_EQ(replaceFile(path(u"a.json"_s), "one"), std::nullopt);
  ASSERT_EQ(::chmod(QFile::encodeName(path(u"a.json"_s)).constData(), 0644), 0);
  QFile reader(path(u"a.json"_s));
  ASSERT_TRUE(reader.open(QIODevice::ReadOnly));
  ASSERT_EQ(replaceFile(path(u"a.json"_s), "second"), std::nullopt);
  EXPECT_EQ(reader.readAll(), "one");
  EXPECT_EQ(contentOf(path(u"a.json"_s)), "second");
  EXPECT_EQ(modeOf(path(u"a.json"_s)), 0600U);
  EXPECT_EQ(namesIn(m_folder.path()), QStringList{u"a.json"_s});
}

TEST_F(ReplaceFileTest, WritesEmptyAndLargeContents) {
  ASSERT_EQ(replaceFile(path(u"a"_s), {}), std::nullopt);
  EXPECT_EQ(contentOf(path(u"a"_s)), QByteArray());
  const QByteArray large(5000000, 'x');
  ASSERT_EQ(replaceFile(path(u"a"_s), large), std::nullopt);
  EXPECT_EQ(contentOf(path(u"a"_s)), large);
}

TEST_F(ReplaceFileTest, TellsWhatWentWrongAndLeavesNothingBehind) {
  EXPECT_NE(replaceFile(path(u"missing/a.json"_s), "one"), std::nullopt);
  ASSERT_TRUE(QDir(m_folder.path()).mkdir(u"folder"_s));
  EXPECT_NE(replaceFile(path(u"folder"_s), "one"), std::nullopt);
  EXPECT_EQ(namesIn(m_folder.path()), QStringList{u"folder"_s});
}

// Relative links, links to links, and a link to what is not there yet.
TEST_F(ReplaceFileTest, WritesThroughSymbolicLinks) {
  ASSERT_TRUE(QDir(m_folder.path()).mkpath(u"target"_s));
  ASSERT_TRUE(QFile::link(u"target/b.json"_s, path(u"a.json"_s)));
  ASSERT_TRUE(QFile::link(u"c.json"_s, path(u"target/b.json"_s)));
  for (const QByteArray content : {"one", "second"}) {
    ASSERT_EQ(replaceFile(path(u"a.json"_s), content), std::nullopt);
    EXPECT_EQ(contentOf(path(u"target/c.json"_s)), content);
    EXPECT_EQ(contentOf(path(u"a.json"_s)), content);
  }
  EXPECT_TRUE(QFileInfo(path(u"a.json"_s)).isSymLink());
  EXPECT_TRUE(QFileInfo(path(u"target/b.json"_s)).isSymLink());
  EXPECT_FALSE(QFileInfo(path(u"target/c.json"_s)).isSymLink());
  EXPECT_EQ(namesIn(m_folder.path()), (QStringList{u"a.json"_s, u"target"_s}));
  EXPECT_EQ(namesIn(path(u"target"_s)), (QStringList{u"b.json"_s, u"c.json"_s}));
}

// The user who has put it there decides who may read it.
TEST_F(ReplaceFileTest, LeavesTheModeOfAFileBehindALink) {
  const QString target = path(u"target.json"_s);
  ASSERT_EQ(replaceFile(target, "one"), std::nullopt);
  const QFile::Permissions readable =
      QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser | QFile::ReadGroup;
  ASSERT_TRUE(QFile::setPermissions(target, readable));
  ASSERT_TRUE(QFile::link(target, path(u"a.json"_s)));
  ASSERT_EQ(replaceFile(path(u"a.json"_s), "two"), std::nullopt);
  EXPECT_EQ(contentOf(target), "two");
  EXPECT_EQ(QFile::permissions(target), readable);
}

TEST_F(ReplaceFileTest, TellsThatALinkLeadsNowhere) {
  ASSERT_TRUE(QFile::link(u"missing/b.json"_s, path(u"a.json"_s)));
  EXPECT_EQ(replaceFile(path(u"a.json"_s), "one"), u"No such file or directory"_s);
  EXPECT_TRUE(QFileInfo(path(u"a.json"_s)).isSymLink());
}

// It could not be read either.
TEST_F(ReplaceFileTest, ReplacesALinkToItself) {
  ASSERT_TRUE(QFile::link(u"a.json"_s, path(u"a.json"_s)));
  ASSERT_EQ(replaceFile(path(u"a.json"_s), "one"), std::nullopt);
  EXPECT_EQ(contentOf(path(u"a.json"_s)), "one");
}

TEST_F(ReplaceFileTest, TakesNamesThatAreNotAscii) {
  const QString name = u"\u00E9\u65E5.json"_s;
  ASSERT_EQ(replaceFile(path(name), "one"), std::nullopt);
  EXPECT_EQ(contentOf(path(name)), "one");
}

}  // namespace
}  // namespace zarvy
