#include <QJsonArray>

#include <gtest/gtest.h>

#include "base/UtcZone.h"
#include "core/model/ImportBatch.h"
#include "core/model/RecordJson.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

ImportBatch sample() {
  return {.id = QUuid::fromString(u"{0a1b2c3d-4e5f-6789-abcd-ef0123456789}"),
          .timestamp = QDateTime(QDate(2026, 1, 21), QTime(9, 30), utcZone),
          .sourceFile = u"export.csv"_s,
          .snippetIDs = {QUuid::fromString(u"{2a1b2c3d-4e5f-6789-abcd-ef0123456789}"),
                         QUuid::fromString(u"{1a1b2c3d-4e5f-6789-abcd-ef0123456789}")}};
}

TEST(ImportBatch, IsWrittenWithEveryFieldAndReadBack) {
  EXPECT_EQ(writeJson(sample().toJson()),
            QByteArray("{\n"
                       "  \"id\" : \"0A1B2C3D-4E5F-6789-ABCD-EF0123456789\",\n"
                       "  \"snippetIDs\" : [\n"
                       "    \"2A1B2C3D-4E5F-6789-ABCD-EF0123456789\",\n"
                       "    \"1A1B2C3D-4E5F-6789-ABCD-EF0123456789\"\n"
                       "  ],\n"
                       "  \"sourceFile\" : \"export.csv\",\n"
                       "  \"timestamp\" : \"2026-01-21T09:30:00Z\"\n"
                       "}"));
  const auto read = ImportBatch::fromJson(sample().toJson());
  ASSERT_TRUE(read);
  EXPECT_EQ(read.value(), sample());
}

TEST(ImportBatch, MayHoldNoSnippets) {
  ImportBatch batch = sample();
  batch.snippetIDs.clear();
  EXPECT_TRUE(writeJson(batch.toJson()).contains("  \"snippetIDs\" : [\n\n  ],\n"));
  const auto read = ImportBatch::fromJson(batch.toJson());
  ASSERT_TRUE(read);
  EXPECT_EQ(read.value(), batch);
}

TEST(ImportBatch, NeedsEveryKeyWithItsType) {
  const QJsonObject complete = sample().toJson();
  for (const QString& key : complete.keys()) {
    expectDecoding<ImportBatch>(complete, {key, QJsonValue::Undefined, false});
    expectDecoding<ImportBatch>(complete, {key, QJsonValue::Null, false});
    expectDecoding<ImportBatch>(complete, {key, true, false});
  }
  expectDecoding<ImportBatch>(complete, {u"timestamp"_s, u"2026-01-21T09:30:00.5Z"_s, false});
  expectDecoding<ImportBatch>(complete, {u"snippetIDs"_s, QJsonArray{u"1A1B"_s}, false});
  expectDecoding<ImportBatch>(complete, {u"snippetIDs"_s, QJsonArray{5}, false});
  expectDecoding<ImportBatch>(complete, {u"unknown"_s, 5, true});
}

}  // namespace
}  // namespace zarvy
