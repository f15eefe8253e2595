#include <gtest/gtest.h>

#include "base/UtcZone.h"
#include "storage/sync/SyncVerdict.h"
#include "support/QtPrinters.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

using Metadata = std::optional<SyncMetadata>;

constexpr qint64 largest = std::numeric_limits<qint64>::max();

// Made by `device`, so many seconds after some moment.
Metadata made(const QString& device, qint64 version, qint64 seconds = 0) {
  return SyncMetadata{QDateTime::fromSecsSinceEpoch(1768987800 + seconds, utcZone), device,
                      version};
}

TEST(SyncVerdict, GoesByGenerationAndThenByDevice) {
  struct Row {
    Metadata local;
    Metadata cloud;
    SyncVerdict verdict;
  };
  const QString a = u"A"_s;
  const QString b = u"B"_s;
  for (const Row& row :
       {Row{{}, {}, SyncVerdict::inStep}, Row{{}, made(a, 1), SyncVerdict::cloudNewer},
        Row{{}, made(a, -1), SyncVerdict::cloudNewer}, Row{made(a, 1), {}, SyncVerdict::localNewer},
        Row{made(a, 5), made(a, 5), SyncVerdict::inStep},
        Row{made(a, 5), made(a, 5, 60), SyncVerdict::inStep},
        Row{made(a, 5, 60), made(a, 5), SyncVerdict::inStep},
        Row{made(a, 6), made(a, 5, 60), SyncVerdict::localNewer},
        Row{made(a, 9), made(b, 3, 60), SyncVerdict::localNewer},
        Row{made(a, 5, 60), made(a, 6), SyncVerdict::cloudNewer},
        Row{made(a, 3, 60), made(b, 9), SyncVerdict::cloudNewer},
        Row{made(a, -largest - 1), made(b, largest), SyncVerdict::cloudNewer},
        Row{made(a, largest), made(b, -largest - 1), SyncVerdict::localNewer},
        Row{made(a, 5), made(b, 5), SyncVerdict::conflict},
        Row{made(a, 5), made(b, 5, 60), SyncVerdict::conflict},
        Row{made(a, 5, 60), made(b, 5), SyncVerdict::conflict},
        Row{made(u"a"_s, 5), made(a, 5), SyncVerdict::conflict},
        Row{made(u""_s, 5), made(a, 5), SyncVerdict::conflict}}) {
    EXPECT_EQ(compare(row.local, row.cloud), row.verdict)
        << (row.local ? row.local->dataVersion : 0) << ' '
        << (row.cloud ? row.cloud->dataVersion : 0);
  }
}

TEST(SyncVerdict, SettlesAConflictByTheClock) {
  struct Row {
    Metadata local;
    Metadata cloud;
    SyncVerdict verdict;
    QString line;
  };
  const QString cloudLine = u"iCloud sync: Conflict resolved - cloud is newer"_s;
  const QString localLine = u"iCloud sync: Conflict resolved - local is newer or same"_s;
  const QString missingLine =
      u"iCloud sync: Conflict with missing metadata, uploading local data"_s;
  const Metadata local = made(u"A"_s, 5);
  Metadata fraction = made(u"B"_s, 5);
  fraction->lastSyncDate = fraction->lastSyncDate.addMSecs(1);
  for (const Row& row : {Row{local, made(u"B"_s, 5, 1), SyncVerdict::cloudNewer, cloudLine},
                         Row{local, fraction, SyncVerdict::cloudNewer, cloudLine},
                         Row{local, made(u"B"_s, 5), SyncVerdict::localNewer, localLine},
                         Row{local, made(u"B"_s, 5, -1), SyncVerdict::localNewer, localLine},
                         Row{fraction, local, SyncVerdict::localNewer, localLine},
                         Row{{}, made(u"B"_s, 5, 1), SyncVerdict::localNewer, missingLine},
                         Row{local, {}, SyncVerdict::localNewer, missingLine},
                         Row{{}, {}, SyncVerdict::localNewer, missingLine}}) {
    const SettledConflict settled = settleConflict(row.local, row.cloud);
    EXPECT_EQ(settled.verdict, row.verdict);
    EXPECT_EQ(settled.line.toString(), row.line);
  }
}

}  // namespace
}  // namespace zarvy
