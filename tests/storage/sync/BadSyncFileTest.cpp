// A damaged shared file: a machine that has a library replaces it, and no machine loses anything.

#include <sys/stat.h>

#include <gtest/gtest.h>

#include "storage/sync/OrdinaryUser.h"
#include "storage/sync/SyncHarness.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

// One of each record, on one line.
const QByteArray good =
    R"({"snippets":[{"id":"0A1B2C3D-4E5F-6789-ABCD-EF0123456789","title":"t","trigger":";t",)"
    R"("replacement":"r","createdAt":"2026-01-21T09:30:00Z","modifiedAt":"2026-01-21T09:30:00Z"}],)"
    R"("folders":[{"id":"00000000-0000-0000-0000-000000000001","name":"f","color":"red",)"
    R"("sortOrder":1}],)"
    R"("globalVariables":[{"id":"00000000-0000-0000-0000-000000000002","name":"v","value":"x",)"
    R"("createdAt":"2026-01-21T09:30:00Z","modifiedAt":"2026-01-21T09:30:00Z"}],)"
    R"("metadata":{"lastSyncDate":"2026-01-21T09:30:00Z","deviceID":"B","dataVersion":3}})";

class BadSyncFile : public SyncHarness {
 protected:
  // A machine without metadata leaves the file alone; one with metadata replaces it. `cause` is the
  // printed line's end; absent where any will do.
  void expectRefused(const std::optional<QString>& cause = std::nullopt) {
    const LocalLibrary own = m_machine.library;
    const QByteArray before = content();
    m_machine.metadata.reset();
    EXPECT_EQ(m_machine.sync(), SyncResult{SyncStatus::success(m_clock.now())});
    expectLines({}, cause);
    EXPECT_EQ(content(), before);

    m_machine.metadata = SyncMetadata{m_clock.now(), u"A"_s, 1};
    EXPECT_EQ(m_machine.sync(), (SyncResult{SyncStatus::success(m_clock.now()),
                                            SyncMetadata{m_clock.now(), u"A"_s, 2}}));
    expectLines({uploadedLine}, cause);
    EXPECT_EQ(m_machine.library, own);
    EXPECT_EQ(m_machine.download()->snippets, own.snippets);
    forgetLines();
  }

  void expectLines(const QStringList& after, const std::optional<QString>& cause) {
    QStringList lines = m_output.takeLines();
    ASSERT_GE(lines.size(), 2);
    const QString error = lines.takeAt(1);
    const QString beginning = u"iCloud sync download error: "_s;
    EXPECT_EQ(lines, QStringList{usingLine()} + after);
    if (cause) {
      EXPECT_EQ(error, beginning + *cause);
    } else {
      EXPECT_TRUE(error.startsWith(beginning) && error.size() > beginning.size());
      EXPECT_FALSE(error.contains(u'\n'));
    }
  }
};

// Without a block on the disk.
TEST_F(BadSyncFile, IsRefusedWhereItIsTooLarge) {
  write(good);
  ASSERT_TRUE(QFile::resize(file(), qint64{256} * 1024 * 1024 + 1));
  EXPECT_EQ(m_machine.download(), std::nullopt);
  EXPECT_EQ(m_output.takeLines(),
            QStringList{u"iCloud sync download error: Larger than 256 MiB"_s});
}

TEST_F(BadSyncFile, IsNotTheGoodOneOfTheseTests) {
  write(good);
  EXPECT_EQ(m_machine.sync().metadata->dataVersion, 3);
  EXPECT_EQ(m_output.lines(), (QStringList{usingLine(),
                                           u"iCloud sync: Downloaded 1 snippets, 1 folders, and 1 "
                                           "global variables"_s}));
}

TEST_F(BadSyncFile, MayBeCutOffAnywhere) {
  for (qsizetype length = 0; length < good.size(); ++length) {
    SCOPED_TRACE(length);
    write(good.first(length));
    expectRefused();
    if (HasFailure()) return;
  }
}

TEST_F(BadSyncFile, MayBeGarbage) {
  for (const QByteArray& garbage :
       {"not json"_ba, "[]"_ba, "{}"_ba, "null"_ba, "3"_ba, QByteArray(1, '\0'),
        QByteArray(4096, '\0'), "\xEF\xBB\xBF"_ba + good + "x", QByteArray(100000, '['),
        good + good, "\xFF\xFE{}"_ba}) {
    SCOPED_TRACE(garbage.first(std::min<qsizetype>(garbage.size(), 20)).toStdString());
    write(garbage);
    expectRefused();
  }
}

TEST_F(BadSyncFile, IsRefusedWholeForOneWrongValue) {
  struct Row {
    QByteArray from;
    QByteArray to;
    QString cause;
  };
  for (const Row& row :
       {Row{R"("snippets":)", R"("other":)", u"key \"snippets\" is missing"_s},
        Row{R"("folders":)", R"("other":)", u"key \"folders\" is missing"_s},
        Row{R"("globalVariables":)", R"("other":)", u"key \"globalVariables\" is missing"_s},
        Row{R"("metadata":)", R"("other":)", u"key \"metadata\" is missing"_s},
        Row{R"("lastSyncDate":)", R"("other":)",
            u"key \"metadata\", key \"lastSyncDate\" is missing"_s},
        Row{R"("deviceID":)", R"("other":)", u"key \"metadata\", key \"deviceID\" is missing"_s},
        Row{R"("dataVersion":)", R"("other":)",
            u"key \"metadata\", key \"dataVersion\" is missing"_s},
        Row{R"("dataVersion":3)", R"("dataVersion":3.5)",
            u"key \"metadata\", key \"dataVersion\" is not a whole number of 64 bits"_s},
        Row{R"("dataVersion":3)", R"("dataVersion":9223372036854775808)",
            u"key \"metadata\", key \"dataVersion\" is not a whole number of 64 bits"_s},
        Row{R"("lastSyncDate":"2026-01-21T09:30:00Z")",
            R"("lastSyncDate":"2026-01-21T09:30:00.5Z")",
            u"key \"metadata\", key \"lastSyncDate\" is not a date of the form "
            "2026-01-21T09:30:00Z"_s},
        Row{R"("replacement":"r","createdAt":"2026-01-21T09:30:00Z")",
            R"("replacement":"r","createdAt":"2026-01-21T09:30:00.000Z")",
            u"key \"snippets\", element 0, key \"createdAt\" is not a date of the form "
            "2026-01-21T09:30:00Z"_s},
        Row{R"("trigger":)", R"("other":)",
            u"key \"snippets\", element 0, key \"trigger\" is missing"_s},
        Row{"red", "teal",
            u"key \"folders\", element 0, key \"color\" is not one of the eight colours"_s},
        Row{R"("value":"x")", R"("value":5)",
            u"key \"globalVariables\", element 0, key \"value\" is a number and not a string"_s},
        Row{R"("deviceID":"B")", R"("deviceID":null)",
            u"key \"metadata\", key \"deviceID\" is null and not a string"_s}}) {
    SCOPED_TRACE(row.to.toStdString());
    QByteArray bad = good;
    bad.replace(row.from, row.to);
    ASSERT_NE(bad, good);
    write(bad);
    expectRefused(row.cause);
  }
}

TEST_F(BadSyncFile, MayHoldMoreThanThisVersionKnows) {
  QByteArray later = good;
  later.replace(R"("metadata":{)", R"("format":2,"metadata":{"later":[{}],)");
  later.replace(R"("title":"t")", R"("title":"t","later":true)");
  write(later);
  EXPECT_EQ(m_machine.sync().metadata->dataVersion, 3);
}

TEST_F(BadSyncFile, MayBeAFolder) {
  ASSERT_TRUE(QDir().mkpath(file()));
  const LocalLibrary own = m_machine.library;
  m_machine.metadata = SyncMetadata{m_clock.now(), u"A"_s, 1};
  EXPECT_EQ(m_machine.sync().metadata->dataVersion, 2);
  const QStringList lines = m_output.lines();
  ASSERT_EQ(lines.size(), 3);
  EXPECT_TRUE(lines[1].startsWith(u"iCloud sync download error: "));
  EXPECT_TRUE(lines[2].startsWith(u"iCloud sync upload error: "));
  EXPECT_EQ(m_machine.library, own);
  EXPECT_EQ(files(), QStringList());
}

TEST_F(BadSyncFile, MayBeUnreadable) {
  write(good);
  changeMode(file(), 0);
  m_machine.metadata = SyncMetadata{m_clock.now(), u"A"_s, 1};
  const OrdinaryUser user({m_root.path(), m_home, m_place, folder(), file()});
  EXPECT_EQ(m_machine.sync().metadata->dataVersion, 2);
  EXPECT_EQ(
      m_output.lines(),
      (QStringList{usingLine(), u"iCloud sync download error: Permission denied"_s, uploadedLine}));
}

}  // namespace
}  // namespace zarvy
