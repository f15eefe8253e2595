#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "platform/freedesktop/XdgLoginItem.h"
#include "support/EnvironmentVariable.h"
#include "support/QtPrinters.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

class XdgLoginItemTest : public testing::Test {
 protected:
  [[nodiscard]] QByteArrayList entry() const {
    QFile file(m_file);
    if (!file.open(QIODevice::ReadOnly)) return {};
    return file.readAll().split('\n');
  }

  const QTemporaryDir m_folder;
  const QString m_file = m_folder.filePath(u"config/autostart/zarvy.desktop"_s);
};

TEST_F(XdgLoginItemTest, WritesAnEntryThatStartsTheProgram) {
  EXPECT_EQ(XdgLoginItem(u"/opt/zarvy/bin/zarvy"_s, m_file).enable(), std::nullopt);
  const QByteArrayList lines = entry();
  EXPECT_EQ(lines.front(), "[Desktop Entry]");
  for (const char* line : {"Type=Application", "Name=Zarvy", "Exec=\"/opt/zarvy/bin/zarvy\""}) {
    EXPECT_TRUE(lines.contains(line)) << line;
  }
}

TEST_F(XdgLoginItemTest, QuotesWhatAPathMayHold) {
  EXPECT_EQ(XdgLoginItem(u"/a b/100%/$x/\"q\"/c\\d"_s, m_file).enable(), std::nullopt);
  EXPECT_TRUE(entry().contains(R"(Exec="/a b/100%%/\\$x/\\"q\\"/c\\\\d")"))
      << entry().join('|').toStdString();
}

TEST_F(XdgLoginItemTest, ReplacesAnOlderEntryAndTakesItAway) {
  EXPECT_EQ(XdgLoginItem(u"/old"_s, m_file).enable(), std::nullopt);
  XdgLoginItem item(u"/new"_s, m_file);
  EXPECT_EQ(item.enable(), std::nullopt);
  EXPECT_TRUE(entry().contains("Exec=\"/new\""));
  EXPECT_EQ(item.disable(), std::nullopt);
  EXPECT_FALSE(QFile::exists(m_file));
  EXPECT_EQ(item.disable(), std::nullopt) << "there is nothing left to take away";
}

TEST_F(XdgLoginItemTest, TellsWhatStandsInTheWay) {
  ASSERT_TRUE(QFile(m_folder.filePath(u"config"_s)).open(QIODevice::WriteOnly));
  const auto error = XdgLoginItem(u"/new"_s, m_file).enable();
  ASSERT_TRUE(error.has_value());
  EXPECT_FALSE(error->isEmpty());
}

TEST_F(XdgLoginItemTest, LiesWhereTheDesktopKeepsItsSettings) {
  const EnvironmentVariable config("XDG_CONFIG_HOME", "/somewhere");
  EXPECT_EQ(XdgLoginItem::desktopFile(), u"/somewhere/autostart/zarvy.desktop"_s);
}

}  // namespace
}  // namespace zarvy
