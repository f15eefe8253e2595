#include <gtest/gtest.h>

#include "base/UtcZone.h"
#include "storage/sync/SyncStatus.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

TEST(SyncStatus, IsEqualWhereItsKindAndWhatItCarriesAre) {
  const QDateTime date = QDateTime::fromSecsSinceEpoch(1768987800, utcZone);
  const QList<SyncStatus> statuses{SyncStatus::success(date), SyncStatus::success(date.addMSecs(1)),
                                   SyncStatus::error(u"a"_s), SyncStatus::error(u"b"_s),
                                   SyncStatus::error(u""_s),  SyncStatus::idle(),
                                   SyncStatus::syncing(),     SyncStatus::disabled(),
                                   SyncStatus::unavailable()};
  for (qsizetype one = 0; one < statuses.size(); ++one) {
    for (qsizetype other = 0; other < statuses.size(); ++other) {
      EXPECT_EQ(statuses[one] == statuses[other], one == other) << one << ' ' << other;
    }
  }
}

TEST(SyncStatus, CarriesADateOrAMessageOrNothing) {
  const QDateTime date = QDateTime::fromSecsSinceEpoch(1768987800, utcZone);
  EXPECT_EQ(SyncStatus::success(date).kind(), SyncStatus::Kind::success);
  EXPECT_EQ(SyncStatus::success(date).date(), date);
  EXPECT_EQ(SyncStatus::error(u"why"_s).kind(), SyncStatus::Kind::error);
  EXPECT_EQ(SyncStatus::error(u"why"_s).message(), u"why"_s);
  EXPECT_EQ(SyncStatus::error(u"why"_s).date(), std::nullopt);
  EXPECT_EQ(SyncStatus(), SyncStatus::idle());
  EXPECT_EQ(SyncStatus::idle().date(), std::nullopt);
}

}  // namespace
}  // namespace zarvy
