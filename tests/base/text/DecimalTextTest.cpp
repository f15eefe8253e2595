#include <limits>

#include <gtest/gtest.h>

#include "base/text/DecimalText.h"
#include "support/QtPrinters.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

TEST(DecimalText, ReadsWhatFitsInto64Bits) {
  EXPECT_EQ(readInteger(u"0"), 0);
  EXPECT_EQ(readInteger(u"+7"), 7);
  EXPECT_EQ(readInteger(u"-7"), -7);
  EXPECT_EQ(readInteger(u"-0"), 0);
  EXPECT_EQ(readInteger(u"000000000000000000000000012"), 12);
  EXPECT_EQ(readInteger(u"9223372036854775807"), std::numeric_limits<qint64>::max());
  EXPECT_EQ(readInteger(u"-9223372036854775808"), std::numeric_limits<qint64>::min());
  EXPECT_EQ(readInteger(u"9223372036854775808"), std::nullopt);
  EXPECT_EQ(readInteger(u"-9223372036854775809"), std::nullopt);
  EXPECT_EQ(readInteger(u"99999999999999999999"), std::nullopt);
}

TEST(DecimalText, ReadsTheDigitsOfEveryScript) {
  EXPECT_EQ(readInteger(u"\u0661\u0662"), 12);
  EXPECT_EQ(readInteger(u"-\U0001D7D7\u0967"), -91);
  EXPECT_EQ(leadingDigits(u"1\U0001D7D7x2"), 3);
}

TEST(DecimalText, RefusesEverythingElse) {
  for (const QStringView text :
       {u"", u"+", u"-", u"--1", u"+-1", u"1-", u" 1", u"1 ", u"1a", u"\u00B2", u"\u2167"}) {
    EXPECT_EQ(readInteger(text), std::nullopt) << testing::PrintToString(text.toString());
  }
  EXPECT_EQ(leadingDigits(u"x1"), 0);
  EXPECT_EQ(leadingDigits({}), 0);
}

}  // namespace
}  // namespace zarvy
