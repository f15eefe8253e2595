#include <gtest/gtest.h>

#include "base/UtcZone.h"
#include "core/model/RecordJson.h"
#include "core/model/SyncMetadata.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

SyncMetadata sample() {
  return {.lastSyncDate = QDateTime(QDate(2026, 1, 21), QTime(9, 30), utcZone),
          .deviceID = u"0A1B2C3D-4E5F-6789-ABCD-EF0123456789"_s,
          .dataVersion = 9007199254740993};
}

TEST(SyncMetadata, IsWrittenWithEveryFieldAndReadBack) {
  EXPECT_EQ(writeJson(sample().toJson()),
            QByteArray("{\n"
                       "  \"dataVersion\" : 9007199254740993,\n"
                       "  \"deviceID\" : \"0A1B2C3D-4E5F-6789-ABCD-EF0123456789\",\n"
                       "  \"lastSyncDate\" : \"2026-01-21T09:30:00Z\"\n"
                       "}"));
  const auto read = SyncMetadata::fromJson(sample().toJson());
  ASSERT_TRUE(read);
  EXPECT_EQ(read.value(), sample());
}

TEST(SyncMetadata, NeedsEveryKeyWithItsType) {
  const QJsonObject complete = sample().toJson();
  for (const QString& key : complete.keys()) {
    expectDecoding<SyncMetadata>(complete, {key, QJsonValue::Undefined, false});
    expectDecoding<SyncMetadata>(complete, {key, QJsonValue::Null, false});
    expectDecoding<SyncMetadata>(complete, {key, true, false});
  }
  expectDecoding<SyncMetadata>(complete, {u"lastSyncDate"_s, u"2026-01-21T09:30:00.5Z"_s, false});
  expectDecoding<SyncMetadata>(complete, {u"dataVersion"_s, 1.5, false});
  expectDecoding<SyncMetadata>(complete, {u"deviceID"_s, u"any text"_s, true});
  expectDecoding<SyncMetadata>(complete, {u"unknown"_s, 5, true});
}

}  // namespace
}  // namespace zarvy
