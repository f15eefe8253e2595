#include <random>

#include <gtest/gtest.h>

#include "base/UtcZone.h"
#include "base/json/JsonScalars.h"
#include "support/QtPrinters.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

TEST(JsonScalars, WriteUuidsInUpperCaseAndReadEither) {
  const QUuid uuid = QUuid::fromString(u"{0a1b2c3d-4e5f-6789-abcd-ef0123456789}");
  EXPECT_EQ(jsonText(uuid), u"0A1B2C3D-4E5F-6789-ABCD-EF0123456789"_s);
  EXPECT_EQ(uuidFromJsonText(u"0A1B2C3D-4E5F-6789-ABCD-EF0123456789"), uuid);
  EXPECT_EQ(uuidFromJsonText(u"0a1b2c3d-4e5f-6789-abcd-ef0123456789"), uuid);
  EXPECT_EQ(uuidFromJsonText(u"0a1B2c3D-4e5f-6789-AbCd-ef0123456789"), uuid);
  EXPECT_EQ(uuidFromJsonText(u"00000000-0000-0000-0000-000000000000"), QUuid());
}

TEST(JsonScalars, ReadNoOtherFormOfUuid) {
  for (const QString& text :
       {u""_s, u"{0a1b2c3d-4e5f-6789-abcd-ef0123456789}"_s, u"0a1b2c3d4e5f6789abcdef0123456789"_s,
        u"0a1b2c3d-4e5f-6789-abcd-ef012345678"_s, u"0a1b2c3d-4e5f-6789-abcd-ef01234567890"_s,
        u"0g1b2c3d-4e5f-6789-abcd-ef0123456789"_s, u"0a1b2c3d_4e5f-6789-abcd-ef0123456789"_s,
        u" a1b2c3d-4e5f-6789-abcd-ef0123456789"_s, u"xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx"_s,
        u"\uFF11a1b2c3d-4e5f-6789-abcd-ef0123456789"_s}) {
    EXPECT_EQ(uuidFromJsonText(text), std::nullopt) << text.toStdString();
  }
}

TEST(JsonScalars, WriteInstantsInUtcWithWholeSeconds) {
  struct Row {
    QDateTime instant;
    QString text;
  };
  const QDateTime base(QDate(2026, 1, 21), QTime(9, 30), utcZone);
  const Row table[] = {
      {base, u"2026-01-21T09:30:00Z"_s},
      {base.addMSecs(999), u"2026-01-21T09:30:00Z"_s},
      {QDateTime(QDate(2026, 1, 21), QTime(11, 30), QTimeZone(7200)), u"2026-01-21T09:30:00Z"_s},
      {QDateTime::fromMSecsSinceEpoch(-1, utcZone), u"1969-12-31T23:59:59Z"_s},
      {QDateTime(), u"1970-01-01T00:00:00Z"_s},
      {QDateTime(QDate(10000, 1, 1), QTime(0, 0), utcZone), u"9999-12-31T23:59:59Z"_s},
      {QDateTime(QDate(-5, 1, 1), QTime(0, 0), utcZone), u"0001-01-01T00:00:00Z"_s},
  };
  for (const Row& row : table) {
    EXPECT_EQ(jsonText(row.instant), row.text);
    EXPECT_NE(instantFromJsonText(row.text), std::nullopt);
  }
}

TEST(JsonScalars, WriteInstantsAsQtDoesAndReadThemBack) {
  std::mt19937_64 random(20260121);
  std::uniform_int_distribution<qint64> milliseconds(-62'135'596'800'000, 253'402'300'799'999);
  for (int round = 0; round < 20'000; ++round) {
    const auto instant = QDateTime::fromMSecsSinceEpoch(milliseconds(random), utcZone);
    const QString text = jsonText(instant);
    ASSERT_EQ(text, instant.toString(u"yyyy-MM-dd'T'HH:mm:ss'Z'"));
    ASSERT_EQ(instantFromJsonText(text), instant.addMSecs(-instant.time().msec()));
  }
}

TEST(JsonScalars, ReadInstantsAsUtc) {
  const auto instant = instantFromJsonText(u"2026-01-21T09:30:00Z");
  ASSERT_TRUE(instant);
  EXPECT_EQ(*instant, QDateTime(QDate(2026, 1, 21), QTime(9, 30), utcZone));
  EXPECT_EQ(instant->timeSpec(), Qt::UTC);
}

TEST(JsonScalars, ReadNoOtherFormOfInstant) {
  for (const QString& text : {u""_s,
                              u"2026-01-21"_s,
                              u"2026-01-21T09:30:00"_s,
                              u"2026-01-21T09:30:00.5Z"_s,
                              u"2026-01-21T09:30:00.000Z"_s,
                              u"2026-01-21T09:30Z"_s,
                              u"2026-01-21T09:30:00+00:00"_s,
                              u"2026-01-21T09:30:00z"_s,
                              u"2026-01-21t09:30:00Z"_s,
                              u"2026-01-21 09:30:00Z"_s,
                              u"2026-02-30T09:30:00Z"_s,
                              u"2026-13-01T09:30:00Z"_s,
                              u"2026-01-21T24:00:00Z"_s,
                              u"2026-01-21T09:60:00Z"_s,
                              u"2026-01-21T09:30:60Z"_s,
                              u"0000-01-01T00:00:00Z"_s,
                              u"+026-01-21T09:30:00Z"_s,
                              u" 2026-01-21T09:30:00Z"_s,
                              u"2026-01-21T09:30:00Z "_s,
                              u"20260121T093000Z"_s}) {
    EXPECT_EQ(instantFromJsonText(text), std::nullopt) << text.toStdString();
  }
}

}  // namespace
}  // namespace zarvy
