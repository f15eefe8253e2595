#include <limits>

#include <QJsonArray>

#include <gtest/gtest.h>

#include "base/UtcZone.h"
#include "base/json/JsonObjectReader.h"
#include "base/json/JsonText.h"
#include "support/QtPrinters.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

QJsonValue parsed(const QByteArray& text) {
  const auto value = parseJson(text);
  EXPECT_TRUE(value) << text.toStdString();
  return value ? value.value() : QJsonValue();
}

QString errorOf(const JsonObjectReader& reader) {
  const auto result = reader.result(0);
  return result ? QString() : result.error().description();
}

TEST(JsonObjectReader, ReadsIntegersOf64BitsExactly) {
  struct Row {
    QByteArray number;
    std::optional<qint64> value;
  };
  const Row table[] = {
      {"0", 0},
      {"-3", -3},
      {"9007199254740993", 9007199254740993},
      {"9223372036854775807", std::numeric_limits<qint64>::max()},
      {"-9223372036854775808", std::numeric_limits<qint64>::min()},
      {"1.0", 1},
      {"1e3", 1000},
      {"0.5", std::nullopt},
      {"9223372036854775808", std::nullopt},
      {"1e300", std::nullopt},
  };
  for (const Row& row : table) {
    JsonObjectReader reader(parsed("{\"n\":" + row.number + "}"));
    const qint64 value = reader.integer(u"n");
    EXPECT_EQ(errorOf(reader).isEmpty(), row.value.has_value()) << row.number.toStdString();
    if (row.value) {
      EXPECT_EQ(value, *row.value);
    } else {
      EXPECT_EQ(errorOf(reader), u"key \"n\" is not a whole number of 64 bits"_s);
    }
  }
}

TEST(JsonObjectReader, ReadsUnsignedNumbersWithinTheirRange) {
  struct Row {
    QByteArray number;
    std::optional<quint64> of64Bits;
    std::optional<quint16> of16Bits;
  };
  const Row table[] = {
      {"0", 0, 0},
      {"65535", 65535, 65535},
      {"65536", 65536, std::nullopt},
      {"9007199254740993", 9007199254740993U, std::nullopt},
      {"9223372036854775807", 9223372036854775807U, std::nullopt},
      {"9223372036854775808", 9223372036854775808U, std::nullopt},
      {"9223372036854775809", 9223372036854775809U, std::nullopt},
      {"18446744073709551615", 18446744073709551615U, std::nullopt},
      {"9223372036854775808.0", 9223372036854775808U, std::nullopt},
      {"1e19", 10000000000000000000U, std::nullopt},
      {"-9223372036854775809", std::nullopt, std::nullopt},
      {"\"9223372036854775809\"", std::nullopt, std::nullopt},
      {"18446744073709551616", std::nullopt, std::nullopt},
      {"-1", std::nullopt, std::nullopt},
      {"-0.5", std::nullopt, std::nullopt},
      {"1.5", std::nullopt, std::nullopt},
      {"\"1\"", std::nullopt, std::nullopt},
      {"true", std::nullopt, std::nullopt},
      {"null", 7, 7},
  };
  for (const Row& row : table) {
    const QJsonValue object = parsed("{\"n\":" + row.number + "}");
    JsonObjectReader wide(object);
    const quint64 wideValue = wide.unsigned64(u"n", 7);
    ASSERT_EQ(errorOf(wide).isEmpty(), row.of64Bits.has_value()) << row.number.toStdString();
    EXPECT_EQ(wideValue, row.of64Bits.value_or(7));
    JsonObjectReader narrow(object);
    const quint16 narrowValue = narrow.unsigned16(u"n", 7);
    ASSERT_EQ(errorOf(narrow).isEmpty(), row.of16Bits.has_value()) << row.number.toStdString();
    EXPECT_EQ(narrowValue, row.of16Bits.value_or(7));
  }
}

TEST(JsonObjectReader, ReadsBackTheUnsignedNumbersThatWereWritten) {
  for (const quint64 number : {quint64{0}, quint64{9007199254740993}, quint64{0x7FFFFFFFFFFFFFFF},
                               quint64{0x8000000000000000}, quint64{0x8000000000000001},
                               quint64{0xFFFFFFFFFFFFF800}, quint64{0xFFFFFFFFFFFFFFFF}}) {
    const QJsonObject object{{u"n"_s, jsonNumber(number)}};
    JsonObjectReader reader(parsed(writeJson(object)));
    EXPECT_EQ(reader.unsigned64(u"n", 0), number);
    EXPECT_EQ(errorOf(reader), QString());
  }
}

// It is a number to every other question too.
TEST(JsonObjectReader, TakesALargeNumberForANumber) {
  const QJsonValue object = parsed("{\"n\":18446744073709551615}");
  JsonObjectReader number(object);
  EXPECT_EQ(number.number(u"n"), 0x1p64);
  EXPECT_EQ(errorOf(number), QString());
  JsonObjectReader integer(object);
  EXPECT_EQ(integer.integer(u"n"), 0);
  EXPECT_EQ(errorOf(integer), u"key \"n\" is not a whole number of 64 bits"_s);
  JsonObjectReader string(object);
  EXPECT_EQ(string.string(u"n"), QString());
  EXPECT_EQ(errorOf(string), u"key \"n\" is a number and not a string"_s);
}

TEST(JsonObjectReader, KeepsTheFirstFailure) {
  JsonObjectReader reader(parsed("{\"a\":1,\"b\":null}"));
  EXPECT_EQ(reader.string(u"a"), QString());
  EXPECT_EQ(reader.string(u"missing"), QString());
  EXPECT_EQ(errorOf(reader), u"key \"a\" is a number and not a string"_s);
}

TEST(JsonObjectReader, NamesWhatIsMissingOrNull) {
  JsonObjectReader missing(parsed("{}"));
  EXPECT_FALSE(missing.boolean(u"a"));
  EXPECT_EQ(errorOf(missing), u"key \"a\" is missing"_s);
  JsonObjectReader null(parsed("{\"a\":null}"));
  EXPECT_FALSE(null.boolean(u"a"));
  EXPECT_EQ(errorOf(null), u"key \"a\" is null and not a boolean"_s);
}

TEST(JsonObjectReader, RefusesWhatIsNotAnObject) {
  EXPECT_EQ(errorOf(JsonObjectReader(QJsonArray())), u"is not an object"_s);
  EXPECT_EQ(errorOf(JsonObjectReader(QJsonValue())), u"is not an object"_s);
}

TEST(JsonError, IsToldFromTheOutsideIn) {
  const JsonError error{u"key \"a\""_s, u"is missing"_s};
  EXPECT_EQ(error.inside(u"element 3"_s).description(), u"element 3, key \"a\" is missing"_s);
  EXPECT_EQ((JsonError{{}, u"is not an object"_s}).inside(u"element 3"_s).description(),
            u"element 3 is not an object"_s);
}

TEST(JsonObjectReader, ReadsNumbersWithAFraction) {
  struct Row {
    QByteArray number;
    std::optional<double> value;
  };
  const Row table[] = {{"0", 0.0},
                       {"-2.5", -2.5},
                       {"28.82882882882883", 96 / 3.33},
                       {"7", 7.0},
                       {"1e300", 1e300},
                       {"\"1\"", std::nullopt},
                       {"null", std::nullopt},
                       {"[1]", std::nullopt}};
  for (const Row& row : table) {
    JsonObjectReader reader(parsed("{\"n\":" + row.number + "}"));
    const double value = reader.number(u"n");
    ASSERT_EQ(errorOf(reader).isEmpty(), row.value.has_value()) << row.number.toStdString();
    if (row.value) {
      EXPECT_EQ(value, *row.value);
    }
  }
}

TEST(JsonObjectReader, ReadsListsOfUuids) {
  struct Row {
    QByteArray list;
    std::optional<QList<QUuid>> value;
  };
  const QUuid uuid = QUuid::fromString(u"{0a1b2c3d-4e5f-6789-abcd-ef0123456789}");
  const QByteArray text = "\"0A1B2C3D-4E5F-6789-ABCD-EF0123456789\"";
  const Row table[] = {{"[]", QList<QUuid>()},
                       {"[" + text + "]", QList<QUuid>{uuid}},
                       {"[" + text + "," + text + "]", QList<QUuid>{uuid, uuid}},
                       {"[" + text + ",1]", std::nullopt},
                       {"[" + text + ",null]", std::nullopt},
                       {"[\"0A1B\"]", std::nullopt},
                       {text, std::nullopt},
                       {"null", std::nullopt}};
  for (const Row& row : table) {
    JsonObjectReader reader(parsed("{\"u\":" + row.list + "}"));
    const QList<QUuid> value = reader.uuids(u"u");
    ASSERT_EQ(errorOf(reader).isEmpty(), row.value.has_value()) << row.list.toStdString();
    if (row.value) {
      EXPECT_EQ(value, *row.value);
    }
  }
}

TEST(JsonObjectReader, ReadsMembersByADecoderOfTheirOwn) {
  const auto decode = [](const QJsonValue& value) -> JsonResult<QString> {
    JsonObjectReader inner(value);
    return inner.result(inner.string(u"text"));
  };
  struct Row {
    QByteArray member;
    QString text;
    QString error;
  };
  for (const Row& row :
       {Row{R"("m":{"text":"t"})", u"t"_s, {}},
        Row{R"("other":{"text":"t"})", {}, u"key \"m\" is missing"_s},
        Row{R"("m":{})", {}, u"key \"m\", key \"text\" is missing"_s},
        Row{R"("m":{"text":3})", {}, u"key \"m\", key \"text\" is a number and not a string"_s},
        Row{R"("m":null)", {}, u"key \"m\" is not an object"_s}}) {
    JsonObjectReader reader(parsed('{' + row.member + '}'));
    EXPECT_EQ(reader.decoded(u"m", decode), row.text) << row.member.toStdString();
    EXPECT_EQ(errorOf(reader), row.error);
  }
}

TEST(JsonObjectReader, ReadsInstantsThatMayBeMissing) {
  const QDateTime instant(QDate(2026, 1, 21), QTime(9, 30), utcZone);
  struct Row {
    QByteArray object;
    bool isRead;
    std::optional<QDateTime> value;
  };
  const Row table[] = {{"{}", true, std::nullopt},
                       {"{\"d\":null}", true, std::nullopt},
                       {"{\"d\":\"2026-01-21T09:30:00Z\"}", true, instant},
                       {"{\"d\":\"2026-01-21T09:30:00.5Z\"}", false, std::nullopt},
                       {"{\"d\":\"\"}", false, std::nullopt},
                       {"{\"d\":5}", false, std::nullopt}};
  for (const Row& row : table) {
    JsonObjectReader reader(parsed(row.object));
    const auto value = reader.optionalInstant(u"d");
    EXPECT_EQ(errorOf(reader).isEmpty(), row.isRead) << row.object.toStdString();
    EXPECT_EQ(value, row.value) << row.object.toStdString();
  }
}

}  // namespace
}  // namespace zarvy
