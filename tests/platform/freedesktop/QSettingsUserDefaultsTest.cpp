#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "platform/freedesktop/QSettingsUserDefaults.h"
#include "support/EnvironmentVariable.h"
#include "support/QtPrinters.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

class QSettingsUserDefaultsTest : public testing::Test {
 protected:
  void write(const QByteArray& content) const {
    ASSERT_TRUE(QDir().mkpath(QFileInfo(m_file).path()));
    QFile file(m_file);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
  }

  const QTemporaryDir m_root;
  const QString m_file = m_root.filePath(u"config/Zarvy/Zarvy.conf"_s);
};

TEST_F(QSettingsUserDefaultsTest, LieInTheDesktopsFolderForSettings) {
  const EnvironmentVariable chosen("XDG_CONFIG_HOME", QFile::encodeName(m_root.path()));
  EXPECT_EQ(QSettingsUserDefaults::desktopFile(), m_root.filePath(u"Zarvy/Zarvy.conf"_s));
}

TEST_F(QSettingsUserDefaultsTest, HoldNothingUntilSomethingIsStored) {
  QSettingsUserDefaults defaults(m_file);
  EXPECT_EQ(defaults.string(u"key"_s), std::nullopt);
  EXPECT_FALSE(QFile::exists(m_file));
}

TEST_F(QSettingsUserDefaultsTest, KeepAnyTextForTheNextStart) {
  const QStringList texts{u""_s,
                          u"plain"_s,
                          u"1, 2,3"_s,
                          u"@Invalid()"_s,
                          u" a=\"b\";c "_s,
                          u"line\nline\\"_s,
                          u"\u05D0 \U0001F600"_s};
  for (const QString& text : texts) {
    QSettingsUserDefaults(m_file).setString(u"key"_s, text);
    QFile file(m_file);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray onDisk = file.readAll();
    // From the disk alone: under another name nothing is remembered.
    const QString copy = m_root.filePath(u"%1.conf"_s.arg(texts.indexOf(text)));
    ASSERT_TRUE(QFile::copy(m_file, copy));
    EXPECT_EQ(QSettingsUserDefaults(copy).string(u"key"_s), text) << onDisk.toStdString();
  }
}

TEST_F(QSettingsUserDefaultsTest, SeeAndKeepWhatOthersWriteInTheMeantime) {
  QSettingsUserDefaults defaults(m_file);
  defaults.setString(u"own"_s, u"1"_s);
  write("[General]\nown=1\nother=written by hand\n");
  EXPECT_EQ(defaults.string(u"other"_s), u"written by hand"_s);
  defaults.setString(u"own"_s, u"2"_s);
  EXPECT_EQ(defaults.string(u"other"_s), u"written by hand"_s);
  EXPECT_EQ(defaults.string(u"own"_s), u"2"_s);
}

TEST_F(QSettingsUserDefaultsTest, ReadATextWithCommasThatWasWrittenWithoutQuotes) {
  write("[General]\nfolder=/srv/Files, mine\n");
  EXPECT_EQ(QSettingsUserDefaults(m_file).string(u"folder"_s), u"/srv/Files, mine"_s);
}

TEST_F(QSettingsUserDefaultsTest, AreEmptyWhereTheFileIsGarbageOrAFolder) {
  write(QByteArray("\0\xFF[[[\n==\n", 10));
  EXPECT_EQ(QSettingsUserDefaults(m_file).string(u"key"_s), std::nullopt);
  QSettingsUserDefaults defaults(m_root.path());
  defaults.setString(u"key"_s, u"lost"_s);
  EXPECT_TRUE(QDir(m_root.path()).exists());
}

}  // namespace
}  // namespace zarvy
