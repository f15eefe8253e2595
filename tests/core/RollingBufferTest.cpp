#include <gtest/gtest.h>

#include "base/text/Wipe.h"
#include "core/RollingBuffer.h"
#include "support/OwnMemory.h"
#include "support/QtPrinters.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

TEST(RollingBuffer, KeepsTheLastCharacters) {
  RollingBuffer buffer(3);
  EXPECT_EQ(buffer.append(u"a"), u"a"_s);
  EXPECT_EQ(buffer.append(u"b"), u"ab"_s);
  EXPECT_EQ(buffer.append(u"c"), u"abc"_s);
  EXPECT_EQ(buffer.append(u"d"), u"bcd"_s);
  EXPECT_EQ(buffer.text(), u"bcd"_s);
}

TEST(RollingBuffer, CountsWhatAPersonTakesForOneCharacter) {
  const QString family = u"\U0001F468\u200D\U0001F469\u200D\U0001F467"_s;
  const QString flag = u"\U0001F1E9\U0001F1EA"_s;
  RollingBuffer buffer(2);
  static_cast<void>(buffer.append(family));
  static_cast<void>(buffer.append(flag));
  EXPECT_EQ(buffer.text(), family + flag);
  EXPECT_EQ(buffer.append(u"e"), flag + u"e"_s);
  EXPECT_EQ(buffer.append(u"\u0301"), flag + u"e\u0301"_s);
  EXPECT_EQ(buffer.append(u"x"), u"e\u0301x"_s);
}

TEST(RollingBuffer, LosesTheLastCharacterAsAWhole) {
  RollingBuffer buffer(9);
  for (const QString& part : {u"a"_s, u"\U0001F1E9\U0001F1EA"_s, u"e"_s, u"\u0301"_s}) {
    static_cast<void>(buffer.append(part));
  }
  buffer.removeLast();
  EXPECT_EQ(buffer.text(), u"a\U0001F1E9\U0001F1EA"_s);
  buffer.removeLast();
  EXPECT_EQ(buffer.text(), u"a"_s);
  buffer.removeLast();
  EXPECT_EQ(buffer.text(), QString());
  buffer.removeLast();
  EXPECT_EQ(buffer.text(), QString());
}

TEST(RollingBuffer, SharesNothingWithTheCopiesThatItGives) {
  RollingBuffer buffer(9);
  QString appended = buffer.append(u"a");
  const QString asked = buffer.text();
  wipe(appended);
  EXPECT_EQ(appended, QString(QChar(0)));
  EXPECT_EQ(asked, u"a"_s);
  EXPECT_EQ(buffer.text(), u"a"_s);
}

TEST(RollingBuffer, IsEmptyOnceCleared) {
  RollingBuffer buffer(9);
  static_cast<void>(buffer.append(u"a"));
  buffer.clear();
  EXPECT_EQ(buffer.text(), QString());
  EXPECT_EQ(buffer.append(u"b"), u"b"_s);
}

TEST(RollingBuffer, LeavesNothingInMemoryOfWhatWasCleared) {
  constexpr std::size_t length = 24;
  // Without the first one, in whose place the end of the emptied text is marked.
  const auto allButTheFirst = [](std::size_t index) { return secretUnit(index + 1); };
  const OwnMemory memory;
  RollingBuffer buffer(50);
  for (std::size_t index = 0; index < length; ++index) {
    const char16_t unit = secretUnit(index);
    QString copy = buffer.append(QStringView(&unit, 1));
    wipe(copy);
  }
  ASSERT_TRUE(memory.holds(length - 1, allButTheFirst)) << "the search finds nothing at all";
  buffer.clear();
  EXPECT_FALSE(memory.holds(length - 1, allButTheFirst));
}

}  // namespace
}  // namespace zarvy
