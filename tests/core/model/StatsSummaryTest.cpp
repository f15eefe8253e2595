#include <limits>

#include <gtest/gtest.h>

#include "base/UtcZone.h"
#include "core/model/RecordJson.h"
#include "core/model/StatsSummary.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

StatsSummary sample() {
  return {.totalExpansions = std::numeric_limits<qint64>::max(),
          .totalCharactersSaved = 9007199254740993,
          .totalTimeSavedSeconds = 96 / 3.33,
          .firstExpansionDate = QDateTime(QDate(2026, 1, 21), QTime(9, 30), utcZone)};
}

TEST(StatsSummary, IsWrittenWithEveryFieldAndReadBack) {
  EXPECT_EQ(writeJson(sample().toJson()),
            QByteArray("{\n"
                       "  \"firstExpansionDate\" : \"2026-01-21T09:30:00Z\",\n"
                       "  \"totalCharactersSaved\" : 9007199254740993,\n"
                       "  \"totalExpansions\" : 9223372036854775807,\n"
                       "  \"totalTimeSavedSeconds\" : 28.82882882882883\n"
                       "}"));
  const auto read = StatsSummary::fromJson(sample().toJson());
  ASSERT_TRUE(read);
  EXPECT_EQ(read.value(), sample());
}

TEST(StatsSummary, LeavesTheDateOutBeforeTheFirstExpansion) {
  EXPECT_EQ(writeJson(StatsSummary().toJson()), QByteArray("{\n"
                                                           "  \"totalCharactersSaved\" : 0,\n"
                                                           "  \"totalExpansions\" : 0,\n"
                                                           "  \"totalTimeSavedSeconds\" : 0\n"
                                                           "}"));
  const auto read = StatsSummary::fromJson(StatsSummary().toJson());
  ASSERT_TRUE(read);
  EXPECT_EQ(read.value(), StatsSummary());
}

TEST(StatsSummary, NeedsEveryKeyButTheDate) {
  const QJsonObject complete = sample().toJson();
  for (const QString& key :
       {u"totalExpansions"_s, u"totalCharactersSaved"_s, u"totalTimeSavedSeconds"_s}) {
    expectDecoding<StatsSummary>(complete, {key, QJsonValue::Undefined, false});
    expectDecoding<StatsSummary>(complete, {key, QJsonValue::Null, false});
    expectDecoding<StatsSummary>(complete, {key, u"5"_s, false});
  }
  expectDecoding<StatsSummary>(complete, {u"totalExpansions"_s, 0.5, false});
  expectDecoding<StatsSummary>(complete, {u"totalTimeSavedSeconds"_s, 0.5, true});
  expectDecoding<StatsSummary>(complete, {u"firstExpansionDate"_s, QJsonValue::Undefined, true});
  expectDecoding<StatsSummary>(complete, {u"firstExpansionDate"_s, QJsonValue::Null, true});
  expectDecoding<StatsSummary>(complete, {u"firstExpansionDate"_s, u"2026-01-21"_s, false});
  expectDecoding<StatsSummary>(complete, {u"firstExpansionDate"_s, 5, false});
  expectDecoding<StatsSummary>(complete, {u"unknown"_s, 5, true});
}

}  // namespace
}  // namespace zarvy
