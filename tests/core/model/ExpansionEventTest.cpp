#include <gtest/gtest.h>

#include "base/UtcZone.h"
#include "core/model/ExpansionEvent.h"
#include "core/model/RecordJson.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

ExpansionEvent sample() {
  return {.id = QUuid::fromString(u"{0a1b2c3d-4e5f-6789-abcd-ef0123456789}"),
          .snippetID = QUuid::fromString(u"{1a1b2c3d-4e5f-6789-abcd-ef0123456789}"),
          .snippetTrigger = u";ty"_s,
          .snippetTitle = u"Thanks / both"_s,
          .triggerLength = 3,
          .expansionLength = 9007199254740993,
          .timestamp = QDateTime(QDate(2026, 1, 21), QTime(9, 30), utcZone),
          .hourOfDay = 10,
          .dayOfWeek = 4};
}

TEST(ExpansionEvent, IsWrittenWithEveryFieldAndReadBack) {
  EXPECT_EQ(writeJson(sample().toJson()),
            QByteArray("{\n"
                       "  \"dayOfWeek\" : 4,\n"
                       "  \"expansionLength\" : 9007199254740993,\n"
                       "  \"hourOfDay\" : 10,\n"
                       "  \"id\" : \"0A1B2C3D-4E5F-6789-ABCD-EF0123456789\",\n"
                       "  \"snippetID\" : \"1A1B2C3D-4E5F-6789-ABCD-EF0123456789\",\n"
                       "  \"snippetTitle\" : \"Thanks \\/ both\",\n"
                       "  \"snippetTrigger\" : \";ty\",\n"
                       "  \"timestamp\" : \"2026-01-21T09:30:00Z\",\n"
                       "  \"triggerLength\" : 3\n"
                       "}"));
  const auto read = ExpansionEvent::fromJson(sample().toJson());
  ASSERT_TRUE(read);
  EXPECT_EQ(read.value(), sample());
}

TEST(ExpansionEvent, NeedsEveryKeyWithItsType) {
  const QJsonObject complete = sample().toJson();
  for (const QString& key : complete.keys()) {
    expectDecoding<ExpansionEvent>(complete, {key, QJsonValue::Undefined, false});
    expectDecoding<ExpansionEvent>(complete, {key, QJsonValue::Null, false});
    expectDecoding<ExpansionEvent>(complete, {key, true, false});
  }
  expectDecoding<ExpansionEvent>(complete, {u"timestamp"_s, u"2026-01-21T09:30:00.5Z"_s, false});
  expectDecoding<ExpansionEvent>(complete, {u"hourOfDay"_s, 10.5, false});
  expectDecoding<ExpansionEvent>(complete, {u"snippetID"_s, u"1A1B"_s, false});
  expectDecoding<ExpansionEvent>(complete, {u"unknown"_s, 5, true});
}

}  // namespace
}  // namespace zarvy
