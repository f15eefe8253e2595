#include <algorithm>
#include <array>
#include <limits>
#include <random>

#include <QJsonArray>
#include <QJsonObject>

#include <gtest/gtest.h>

#include "base/json/JsonText.h"
#include "support/QtPrinters.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

TEST(JsonText, IsIndentedAndSortedWithABlankOnBothSidesOfTheColon) {
  const QJsonObject object{{u"b"_s, QJsonArray{1, true, QJsonValue::Null}},
                           {u"a"_s, QJsonObject{{u"z"_s, u"x"_s}, {u"Z"_s, false}}}};
  EXPECT_EQ(writeJson(object), QByteArray("{\n"
                                          "  \"a\" : {\n"
                                          "    \"Z\" : false,\n"
                                          "    \"z\" : \"x\"\n"
                                          "  },\n"
                                          "  \"b\" : [\n"
                                          "    1,\n"
                                          "    true,\n"
                                          "    null\n"
                                          "  ]\n"
                                          "}"));
}

TEST(JsonText, HasAnEmptyLineInsideEmptyContainers) {
  EXPECT_EQ(writeJson(QJsonArray()), QByteArray("[\n\n]"));
  EXPECT_EQ(writeJson(QJsonObject()), QByteArray("{\n\n}"));
  EXPECT_EQ(writeJson(QJsonObject{{u"a"_s, QJsonArray()}}), QByteArray("{\n  \"a\" : [\n\n  ]\n}"));
}

TEST(JsonText, EscapesWhatItMust) {
  struct Row {
    QString text;
    QByteArray written;
  };
  const Row table[] = {
      {u"plain"_s, "\"plain\""},
      {u""_s, "\"\""},
      {u"a/b"_s, "\"a\\/b\""},
      {u"\"\\"_s, "\"\\\"\\\\\""},
      {u"\b\f\n\r\t"_s, "\"\\b\\f\\n\\r\\t\""},
      {u"\u0001\u001F\u007F"_s, "\"\\u0001\\u001f\x7F\""},
      {QString(QChar(0)), "\"\\u0000\""},
      {u"\u00E9\u2028\U0001F600"_s, "\"\u00E9\u2028\U0001F600\""},
      {u"a"_s + QChar(0xD83D) + u"b"_s, "\"a\\ud83db\""},
      {QString(QChar(0xDE00)), "\"\\ude00\""},
      {QString(QChar(0xD83D)) + u"\U0001F600"_s, "\"\\ud83d\U0001F600\""},
      {u"\uFEFF\u00E9\uFEFF"_s, "\"\\ufeff\u00E9\\ufeff\""},
  };
  for (const Row& row : table) {
    const QByteArray text = writeJson(QJsonArray{row.text});
    EXPECT_EQ(text, "[\n  " + row.written + "\n]");
    const auto read = parseJson(text);
    ASSERT_TRUE(read);
    EXPECT_EQ(read.value().toArray().at(0).toString(), row.text);
  }
}

TEST(JsonText, SortsAndKeepsAwkwardKeys) {
  const QJsonObject object{
      {u"\u00E9"_s, 1}, {u"a/b"_s, 2}, {u""_s, 3}, {u"z"_s, 4}, {u"\uFEFFz"_s, 5}};
  const QByteArray text = writeJson(object);
  EXPECT_EQ(text, QByteArray("{\n  \"\" : 3,\n  \"a\\/b\" : 2,\n  \"z\" : 4,\n  \"\u00E9\" : 1,\n"
                             "  \"\\ufeffz\" : 5\n}"));
  const auto read = parseJson(text);
  ASSERT_TRUE(read);
  EXPECT_EQ(read.value().toObject(), object);
}

TEST(JsonText, SortsKeysByTheirUnits) {
  constexpr std::array<char16_t, 14> units{0,    u'/',   u'0',   u'A',   u'a',   u'z',   0x7F,
                                           0xE9, 0x65E5, 0xD83D, 0xDE00, 0xFF21, 0xFFFD, 0x130};
  std::mt19937 random(20260121);
  const auto pick = [&](std::size_t count) {
    return std::uniform_int_distribution<std::size_t>(0, count - 1)(random);
  };
  for (int round = 0; round < 500; ++round) {
    QJsonObject object;
    for (std::size_t count = pick(9); count > 0; --count) {
      QString key = u""_s;  // not null, through which Qt 6.8 would read
      for (std::size_t length = pick(4); length > 0; --length) key += QChar(units[pick(14)]);
      object.insert(key, 1);
    }
    QStringList keys = object.keys();
    std::sort(keys.begin(), keys.end());
    QByteArray expected;
    for (const QString& key : keys) {
      const QByteArray alone = writeJson(QJsonObject{{key, 1}});
      expected += (expected.isEmpty() ? "{" : ",") + alone.sliced(1, alone.size() - 3);
    }
    const QByteArray text = writeJson(object);
    ASSERT_EQ(text, expected.isEmpty() ? "{\n\n}" : expected + "\n}");
    ASSERT_EQ(writeJson(parseJson(text).value()), text);
  }
}

TEST(JsonText, KeepsNumbersExactly) {
  struct Row {
    QJsonValue number;
    QByteArray written;
  };
  const Row table[] = {
      {0, "0"},
      {-1, "-1"},
      {qint64{9007199254740993}, "9007199254740993"},
      {std::numeric_limits<qint64>::max(), "9223372036854775807"},
      {std::numeric_limits<qint64>::min(), "-9223372036854775808"},
      {0.1, "0.1"},
      {1.5, "1.5"},
      {2.0, "2"},
      {1.0 / 3.0, "0.3333333333333333"},
      {1e300, "1e+300"},
      {0x1p63, "9223372036854775808"},
      {std::numeric_limits<double>::infinity(), "null"},
  };
  for (const Row& row : table) {
    EXPECT_EQ(writeJson(QJsonArray{row.number}), "[\n  " + row.written + "\n]");
  }
}

TEST(JsonText, KeepsLargeNumbersWhereverTheyStand) {
  for (const QByteArray& text :
       {QByteArray("[\n  9223372036854775808,\n  18446744073709551615\n]"),
        QByteArray("{\n  \"18446744073709551615\" : 18446744073709551615\n}"),
        QByteArray("[\n  \"9223372036854775809\",\n  \"\\\"9223372036854775809\",\n"
                   "  9223372036854775809\n]")}) {
    const auto read = parseJson(text);
    ASSERT_TRUE(read);
    EXPECT_EQ(writeJson(read.value()), text);
  }
}

TEST(JsonText, IsReadInAnyLayout) {
  for (const QByteArray& text : {QByteArray("[]"), QByteArray("[\n\n]"), QByteArray(" [ ] "),
                                 QByteArray("\xEF\xBB\xBF[]")}) {
    const auto read = parseJson(text);
    ASSERT_TRUE(read) << read.error().description().toStdString();
    EXPECT_EQ(read.value(), QJsonValue(QJsonArray()));
  }
}

TEST(JsonText, KeepsAByteOrderMarkThatBeginsAString) {
  const auto read = parseJson(
      "\xEF\xBB\xBF{\"\uFEFFkey\": [\"\uFEFF\uFEFF\", \"\uFEFF\\n\", \"a\\\"\uFEFFb\", "
      "18446744073709551615]}");
  ASSERT_TRUE(read) << read.error().description().toStdString();
  const QJsonArray strings = read.value().toObject().value(u"\uFEFFkey"_s).toArray();
  ASSERT_EQ(strings.size(), 4);
  EXPECT_EQ(strings.at(0).toString(), u"\uFEFF\uFEFF"_s);
  EXPECT_EQ(strings.at(1).toString(), u"\uFEFF\n"_s);
  EXPECT_EQ(strings.at(2).toString(), u"a\"\uFEFFb"_s);
  EXPECT_FALSE(parseJson("[\"a\"\uFEFF]"));
}

TEST(JsonText, IsRefusedWithThePlaceWhereItIsWrong) {
  for (const QByteArray& text :
       {QByteArray(), QByteArray("{"), QByteArray("[1,]"), QByteArray("{\"a\" 1}"),
        QByteArray("12"), QByteArray("[\"\xFF\"]"), QByteArray("[] x"), QByteArray("\0", 1)}) {
    const auto read = parseJson(text);
    ASSERT_FALSE(read) << text.toStdString();
    EXPECT_TRUE(read.error().description().startsWith(u"byte "));
  }
}

TEST(JsonText, IsRefusedWhenNestedBeyondReason) {
  EXPECT_FALSE(parseJson(QByteArray(100000, '[')));
}

}  // namespace
}  // namespace zarvy
