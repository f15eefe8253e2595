#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platform/VirtualKey.h"
#include "platform/x11/typing/TypedText.h"

namespace zarvy::x11 {
namespace {

using namespace Qt::Literals::StringLiterals;

struct Row {
  const char* name;
  std::vector<QString> runs;
  std::u32string typed;  // a key is shown as the control character it stands for
};

std::u32string typedBy(const std::vector<QString>& runs) {
  TypedText text;
  std::u32string typed;
  const auto add = [&](const std::vector<TypedText::Piece>& pieces) {
    for (const TypedText::Piece& piece : pieces) {
      if (piece.virtualKey == virtualkey::tab) typed += U'\t';
      if (piece.virtualKey == virtualkey::returnKey) typed += U'\r';
      if (!piece.virtualKey) typed += piece.character;
    }
  };
  for (const QString& run : runs) add(text.feed(run));
  add(text.finish());
  return typed;
}

class TypedTextTable : public testing::TestWithParam<Row> {};

TEST_P(TypedTextTable, ComesOutAsExpected) {
  EXPECT_EQ(typedBy(GetParam().runs), GetParam().typed);
}

const QString highHalf(QChar(u'\xd83d'));
const QString lowHalf(QChar(u'\xde00'));

INSTANTIATE_TEST_SUITE_P(
    Rows, TypedTextTable,
    testing::Values(
        Row{"empty", {u""_s}, U""}, Row{"plain", {u"aä中"_s}, U"aä中"},
        Row{"emoji in one run", {u"😀!"_s}, U"😀!"},
        Row{"emoji cut between runs", {highHalf, lowHalf + u"x"_s}, U"😀x"},
        Row{"emoji cut around an empty run", {highHalf, u""_s, lowHalf}, U"😀"},
        Row{"lone high half in the middle", {highHalf + u"x"_s}, U"\xfffdx"},
        Row{"lone high half at the end", {u"x"_s + highHalf}, U"x\xfffd"},
        Row{"lone low half", {lowHalf}, U"\xfffd"},
        Row{"two high halves and a low one", {highHalf + highHalf + lowHalf}, U"\xfffd😀"},
        Row{"tab is a key", {u"a\tb"_s}, U"a\tb"},
        Row{"carriage return is a key", {u"\r"_s}, U"\r"},
        Row{"carriage return in the middle", {u"a\r"_s, u"b"_s}, U"a\rb"},
        Row{"two carriage returns are two keys", {u"\r\r"_s}, U"\r\r"},
        Row{"carriage return and line feed are one line break", {u"a\r\nb"_s}, U"a\rb"},
        Row{"NUL and other control characters have no key",
            {QString(QChar(0)) + u"a\u001b\u007f\u0085b"_s},
            U"ab"},
        Row{"noncharacters become replacement characters", {u"\ufffe\ufdd0x"_s}, U"\xfffd\xfffdx"},
        Row{"no-break space is a character", {u"\u00a0"_s}, U"\u00a0"}),
    [](const auto& row) {
      std::string name = row.param.name;
      for (char& letter : name) {
        if (!std::isalnum(static_cast<unsigned char>(letter))) letter = '_';
      }
      return name;
    });

TEST(TypedText, LeavesACarriageReturnToTheReturnKeyThatFollowsIt) {
  TypedText text;
  EXPECT_EQ(text.feed(u"a\r").size(), 1U);
  EXPECT_TRUE(text.finish(true).empty());
  EXPECT_EQ(text.feed(u"b").size(), 1U);
  EXPECT_TRUE(text.finish().empty());
}

TEST(CharactersToType, LeaveTheKeysOut) {
  EXPECT_EQ(charactersToType(u"a\tb\rc\n😀"_s), (std::vector<char32_t>{U'a', U'b', U'c', U'😀'}));
}

}  // namespace
}  // namespace zarvy::x11
