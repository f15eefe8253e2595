#include <QDir>
#include <QFile>
#include <QProcess>
#include <QProcessEnvironment>
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

  // What a desktop makes of the Exec key: the file format's backslashes first, and then arguments,
  // some of them in quotation marks.
  [[nodiscard]] QStringList startedCommand() const {
    for (const QByteArray& line : entry()) {
      if (!line.startsWith("Exec=")) continue;
      return argumentsOf(QString::fromUtf8(line.mid(5)).replace(u"\\\\"_s, u"\\"_s));
    }
    return {};
  }

  [[nodiscard]] static QStringList argumentsOf(const QString& value) {
    QStringList arguments(u""_s);
    bool isQuoted = false;
    for (qsizetype at = 0; at < value.size(); ++at) {
      if (value[at] == u'"') {
        isQuoted = !isQuoted;
      } else if (value[at] == u' ' && !isQuoted) {
        arguments.append(u""_s);
      } else {
        const bool isEscape = (value[at] == u'\\' && isQuoted) || value[at] == u'%';
        arguments.last() += value[isEscape ? ++at : at];
      }
    }
    return arguments;
  }

  const QTemporaryDir m_folder;
  const QString m_file = m_folder.filePath(u"config/autostart/zarvy.desktop"_s);
};

TEST_F(XdgLoginItemTest, WritesAnEntryThatStartsTheProgram) {
  EXPECT_EQ(XdgLoginItem(u"/opt/zarvy/bin/zarvy"_s, m_file).enable(), std::nullopt);
  const QByteArrayList lines = entry();
  EXPECT_EQ(lines.front(), "[Desktop Entry]");
  for (const char* line : {"Type=Application", "Name=Zarvy", "Terminal=false"}) {
    EXPECT_TRUE(lines.contains(line)) << line;
  }
}

TEST_F(XdgLoginItemTest, StartsTheProgramWhateverItsPathHoldsAndLeavesItsOutputNowhere) {
  const QString folder = m_folder.filePath(u"a b/100%/$x/\"q\"/c\\d'"_s);
  ASSERT_TRUE(QDir().mkpath(folder));
  const QString program = folder + u"/zarvy"_s;
  {
    QFile script(program);
    ASSERT_TRUE(script.open(QIODevice::WriteOnly));
    script.write("#!/bin/sh\necho said; echo complained >&2; echo ran $# > \"$RESULT\"\n");
    script.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  }
  ASSERT_EQ(XdgLoginItem(program, m_file).enable(), std::nullopt);
  const QString result = m_folder.filePath(u"result"_s);
  QProcess desktop;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(u"RESULT"_s, result);
  desktop.setProcessEnvironment(environment);
  QStringList command = startedCommand();
  ASSERT_FALSE(command.isEmpty());
  desktop.start(command.takeFirst(), command);
  ASSERT_TRUE(desktop.waitForFinished());
  EXPECT_EQ(desktop.readAllStandardOutput(), "");
  EXPECT_EQ(desktop.readAllStandardError(), "complained\n");
  QFile written(result);
  ASSERT_TRUE(written.open(QIODevice::ReadOnly));
  EXPECT_EQ(written.readAll(), "ran 0\n");
}

TEST_F(XdgLoginItemTest, ReplacesAnOlderEntryAndTakesItAway) {
  EXPECT_EQ(XdgLoginItem(u"/old"_s, m_file).enable(), std::nullopt);
  XdgLoginItem item(u"/new"_s, m_file);
  EXPECT_EQ(item.enable(), std::nullopt);
  EXPECT_EQ(startedCommand().last(), u"/new"_s);
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
