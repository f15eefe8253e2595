#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

#include <QDir>
#include <QFileInfo>

#include <gtest/gtest.h>

#include "storage/DataFolder.h"
#include "storage/DocumentBackups.h"
#include "support/FileSizeLimit.h"
#include "support/QtPrinters.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

const QDateTime morning = QDateTime::fromString(u"2026-03-01T08:00:00Z"_s, Qt::ISODate);
const QDateTime evening = QDateTime::fromString(u"2026-03-01T20:30:05Z"_s, Qt::ISODate);

class DocumentBackupsTest : public DataFolder {
 protected:
  DocumentBackupsTest() {
    write(u"a.json"_s, "one");
    write(u"b.json"_s, "two");
    write(u"other.txt"_s, "no document");
  }

  [[nodiscard]] DocumentBackups backups(const DocumentBackups::Limits& limits = {}) {
    return {{u"a.json"_s, u"b.json"_s, u"missing.json"_s}, m_output, limits};
  }

  void beforeWrite(DocumentBackups& backups, const QDateTime& now = morning) const {
    backups.beforeWrite(path(QString()), now);
  }

  [[nodiscard]] QStringList sets() const {
    return QDir(path(u"Backups"_s))
        .entryList(QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
  }

  [[nodiscard]] QStringList filesOf(const QString& set) const {
    return QDir(path(u"Backups/"_s + set)).entryList(QDir::Files | QDir::Hidden, QDir::Name);
  }
};

TEST_F(DocumentBackupsTest, KeepAllDocumentsAsTheyWereBeforeTheFirstWrite) {
  DocumentBackups kept = backups();
  beforeWrite(kept);
  write(u"a.json"_s, "new");
  beforeWrite(kept, evening);
  EXPECT_EQ(sets(), QStringList{u"2026-03-01"_s});
  EXPECT_EQ(filesOf(u"2026-03-01"_s), (QStringList{u"a.json"_s, u"b.json"_s}));
  EXPECT_EQ(content(u"Backups/2026-03-01/a.json"_s), "one");
  EXPECT_EQ(content(u"Backups/2026-03-01/b.json"_s), "two");
  EXPECT_EQ(m_output.lines(), QStringList());
}

TEST_F(DocumentBackupsTest, LoseNoUnreadableDocumentWhereTheDiskIsFull) {
  ASSERT_TRUE(QFile::resize(path(u"a.json"_s), qint64{256} * 1024 * 1024 + 1));
  DocumentBackups kept = backups();
  kept.foundUnreadable();
  {
    const FileSizeLimit full(2);
    beforeWrite(kept, evening);
  }
  EXPECT_EQ(m_output.takeLines().size(), 1);
  EXPECT_TRUE(QFile::exists(path(u"a.json"_s)));
  beforeWrite(kept, evening.addSecs(1));
  EXPECT_EQ(filesOf(u"2026-03-01T203006Z unreadable"_s), (QStringList{u"a.json"_s, u"b.json"_s}));
}

TEST_F(DocumentBackupsTest, AreForTheUserAlone) {
  DocumentBackups kept = backups();
  beforeWrite(kept);
  EXPECT_EQ(mode(u"Backups"_s), 0700U);
  EXPECT_EQ(mode(u"Backups/2026-03-01"_s), 0700U);
  EXPECT_EQ(mode(u"Backups/2026-03-01/a.json"_s), 0600U);
}

TEST_F(DocumentBackupsTest, AreMadeOnceADayHoweverOftenTheProgramIsStarted) {
  DocumentBackups first = backups();
  beforeWrite(first);
  write(u"a.json"_s, "later");
  DocumentBackups second = backups();
  beforeWrite(second, evening);
  EXPECT_EQ(sets(), QStringList{u"2026-03-01"_s});
  EXPECT_EQ(content(u"Backups/2026-03-01/a.json"_s), "one");
  DocumentBackups third = backups();
  beforeWrite(third, evening.addDays(1));
  EXPECT_EQ(sets(), (QStringList{u"2026-03-01"_s, u"2026-03-02"_s}));
}

TEST_F(DocumentBackupsTest, AreMadeInAnyCaseWhereADocumentCouldNotBeRead) {
  DocumentBackups first = backups();
  beforeWrite(first);
  write(u"a.json"_s, "one comma, too many,");
  DocumentBackups second = backups();
  second.foundUnreadable();
  beforeWrite(second, evening);
  beforeWrite(second, evening.addSecs(1));
  const QString set = u"2026-03-01T203005Z unreadable"_s;
  EXPECT_EQ(sets(), (QStringList{u"2026-03-01"_s, set}));
  EXPECT_EQ(content(u"Backups/"_s + set + u"/a.json"_s), "one comma, too many,");
}

TEST_F(DocumentBackupsTest, AreMadeBeforeEachSync) {
  DocumentBackups kept = backups();
  kept.beforeSync(path(QString()), morning);
  kept.beforeSync(path(QString()), evening);
  EXPECT_EQ(sets(), (QStringList{u"2026-03-01T080000Z before sync"_s,
                                 u"2026-03-01T203005Z before sync"_s}));
}

TEST_F(DocumentBackupsTest, HoldWhatIsBehindLinksAndNotWhatIsWrittenThereLater) {
  write(u"target.json"_s, "behind");
  ASSERT_TRUE(QFile::remove(path(u"a.json"_s)));
  ASSERT_TRUE(QFile::link(u"target.json"_s, path(u"a.json"_s)));
  DocumentBackups kept = backups();
  beforeWrite(kept);
  write(u"target.json"_s, "written in place");
  EXPECT_FALSE(QFileInfo(path(u"Backups/2026-03-01/a.json"_s)).isSymLink());
  EXPECT_EQ(content(u"Backups/2026-03-01/a.json"_s), "behind");
}

TEST_F(DocumentBackupsTest, AreNotMadeWithoutDocuments) {
  ASSERT_TRUE(QFile::remove(path(u"a.json"_s)));
  ASSERT_TRUE(QFile::remove(path(u"b.json"_s)));
  block(u"b.json"_s);
  DocumentBackups kept = backups();
  beforeWrite(kept);
  EXPECT_FALSE(QFile::exists(path(u"Backups"_s)));
  EXPECT_EQ(m_output.lines(), QStringList());
}

TEST_F(DocumentBackupsTest, AreMadeEachDayOfALongRun) {
  DocumentBackups kept = backups();
  for (int day = 0; day < 3; ++day) beforeWrite(kept, morning.addDays(day));
  EXPECT_EQ(sets(), (QStringList{u"2026-03-01"_s, u"2026-03-02"_s, u"2026-03-03"_s}));
}

TEST_F(DocumentBackupsTest, AreWholeOrNotThere) {
  DocumentBackups kept = backups();
  {
    const FileSizeLimit full(2);  // bytes; each document has three
    beforeWrite(kept);
    kept.foundUnreadable();
    beforeWrite(kept, evening);
  }
  EXPECT_EQ(sets(), QStringList{u".unfinished"_s});
  EXPECT_EQ(m_output.takeLines().size(), 2);
  EXPECT_EQ(content(u"a.json"_s), "one") << "it can be read, and stays";
  DocumentBackups next = backups();
  beforeWrite(next, evening);
  EXPECT_EQ(sets(), QStringList{u"2026-03-01"_s});
}

// It is about to be replaced.
// A process that makes sets and is killed when one of them holds more and more documents.
TEST_F(DocumentBackupsTest, AreWholeOrNotThereWhereTheProgramIsKilled) {
  QStringList names;
  for (int number = 10; number < 30; ++number) {
    names.append(u"%1.json"_s.arg(number));
    write(names.last(), QByteArray(10'000, 'x'));
  }
  const auto unfinishedCount = [&] { return filesOf(u".unfinished"_s).size(); };
  int caught = 0;
  for (qsizetype enough = 1; enough <= names.size(); ++enough) {
    const pid_t process = ::fork();
    if (process == 0) {
      DocumentBackups kept(names, m_output);
      kept.beforeWrite(path(QString()), morning.addDays(enough));
      ::_exit(0);
    }
    bool hasEnded = false;
    while (unfinishedCount() < enough && !hasEnded) {
      hasEnded = ::waitpid(process, nullptr, WNOHANG) == process;
    }
    if (hasEnded) continue;
    ::kill(process, SIGKILL);
    ::waitpid(process, nullptr, 0);
    ++caught;
  }
  EXPECT_GT(caught, 0) << "none was killed in time";
  for (const QString& set : sets()) {
    if (set == u".unfinished") continue;
    EXPECT_EQ(filesOf(set), names) << set.toStdString();
  }
  DocumentBackups next(names, m_output);
  next.beforeWrite(path(QString()), morning.addDays(100));
  EXPECT_EQ(filesOf(sets().last()), names) << "what was left is no hindrance";
}

TEST_F(DocumentBackupsTest, KeepWhatTheUserMayNotRead) {
  if (::geteuid() == 0) GTEST_SKIP() << "root may read everything";
  ASSERT_TRUE(QFile::setPermissions(path(u"a.json"_s), {}));
  DocumentBackups kept = backups();
  kept.foundUnreadable();
  beforeWrite(kept, evening);
  const QString set = u"2026-03-01T203005Z unreadable"_s;
  EXPECT_EQ(filesOf(set), (QStringList{u"a.json"_s, u"b.json"_s}));
  const QString copy = u"Backups/"_s + set + u"/a.json"_s;
  ASSERT_TRUE(QFile::setPermissions(path(copy), QFile::ReadOwner));
  EXPECT_EQ(content(copy), "one");
}

TEST_F(DocumentBackupsTest, AreTheLatestTenAndWhatElseIsThereStays) {
  ASSERT_TRUE(QDir().mkpath(path(u"Backups/2026-02-01 before I cleaned up"_s)));
  for (int day = 0; day < 12; ++day) {
    DocumentBackups kept = backups();
    beforeWrite(kept, morning.addDays(day));
  }
  QStringList expected;
  for (int day = 3; day <= 12; ++day) expected += u"2026-03-%1"_s.arg(day, 2, 10, QChar(u'0'));
  EXPECT_EQ(sets(), QStringList{u"2026-02-01 before I cleaned up"_s} + expected);
}

TEST_F(DocumentBackupsTest, AreFewerWhereTheyAreLarge) {
  for (int day = 0; day < 4; ++day) {
    DocumentBackups kept = backups({.sets = 10, .bytes = 13});  // each set has six
    beforeWrite(kept, morning.addDays(day));
  }
  EXPECT_EQ(sets(), (QStringList{u"2026-03-03"_s, u"2026-03-04"_s}));
  DocumentBackups tight = backups({.sets = 10, .bytes = 1});
  beforeWrite(tight, morning.addDays(4));
  EXPECT_EQ(sets(), QStringList{u"2026-03-05"_s});
}

TEST_F(DocumentBackupsTest, ReplaceWhatAKilledProgramHasLeftUnfinished) {
  write(u"Backups/.unfinished/a.json"_s, "half");
  DocumentBackups kept = backups();
  beforeWrite(kept);
  EXPECT_EQ(sets(), QStringList{u"2026-03-01"_s});
  EXPECT_EQ(content(u"Backups/2026-03-01/a.json"_s), "one");
}

TEST_F(DocumentBackupsTest, SayWhenTheyCannotBeMade) {
  write(u"Backups"_s, "a file");
  DocumentBackups kept = backups();
  beforeWrite(kept);
  const QStringList lines = m_output.takeLines();
  ASSERT_EQ(lines.size(), 1);
  EXPECT_TRUE(lines.front().startsWith(u"Error keeping a backup: "_s))
      << lines.front().toStdString();
}

}  // namespace
}  // namespace zarvy
