#include <functional>
#include <unordered_set>

#include <gtest/gtest.h>

#include "base/UtcZone.h"
#include "core/model/GlobalVariable.h"
#include "core/model/RecordJson.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

GlobalVariable sample() {
  return {QUuid::fromString(u"{0a1b2c3d-4e5f-6789-abcd-ef0123456789}"), u"City"_s, u"Bern"_s,
          QDateTime(QDate(2026, 1, 21), QTime(9, 30), utcZone),
          QDateTime(QDate(2026, 1, 22), QTime(9, 30), utcZone)};
}

TEST(GlobalVariable, IsWrittenWithEveryFieldAndReadBack) {
  EXPECT_EQ(writeJson(sample().toJson()),
            QByteArray("{\n"
                       "  \"createdAt\" : \"2026-01-21T09:30:00Z\",\n"
                       "  \"id\" : \"0A1B2C3D-4E5F-6789-ABCD-EF0123456789\",\n"
                       "  \"modifiedAt\" : \"2026-01-22T09:30:00Z\",\n"
                       "  \"name\" : \"City\",\n"
                       "  \"value\" : \"Bern\"\n"
                       "}"));
  const auto read = GlobalVariable::fromJson(sample().toJson());
  ASSERT_TRUE(read);
  EXPECT_EQ(read.value(), sample());
}

TEST(GlobalVariable, NeedsEveryKeyWithItsType) {
  const QJsonObject complete = sample().toJson();
  for (const QString& key : {u"id"_s, u"name"_s, u"value"_s, u"createdAt"_s, u"modifiedAt"_s}) {
    expectDecoding<GlobalVariable>(complete, {key, QJsonValue::Undefined, false});
    expectDecoding<GlobalVariable>(complete, {key, QJsonValue::Null, false});
    expectDecoding<GlobalVariable>(complete, {key, 5, false});
  }
  expectDecoding<GlobalVariable>(complete, {u"createdAt"_s, u"2026-01-21T09:30:00.5Z"_s, false});
  expectDecoding<GlobalVariable>(complete, {u"unknown"_s, 5, true});
}

TEST(GlobalVariable, DiffersWithAnyField) {
  const std::function<void(GlobalVariable&)> changes[] = {
      [](GlobalVariable& variable) { variable.id = QUuid(); },
      [](GlobalVariable& variable) { variable.name += u'x'; },
      [](GlobalVariable& variable) { variable.value += u'x'; },
      [](GlobalVariable& variable) { variable.createdAt = variable.createdAt.addSecs(1); },
      [](GlobalVariable& variable) { variable.modifiedAt = variable.modifiedAt.addSecs(1); },
  };
  std::unordered_set<GlobalVariable> known{sample()};
  for (const auto& change : changes) {
    GlobalVariable changed = sample();
    change(changed);
    EXPECT_NE(changed, sample());
    EXPECT_NE(qHash(changed), qHash(sample()));
    EXPECT_TRUE(known.insert(changed).second);
  }
}

}  // namespace
}  // namespace zarvy
