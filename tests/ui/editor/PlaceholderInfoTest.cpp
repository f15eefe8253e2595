#include <ostream>

#include <gtest/gtest.h>

#include "base/text/Regex.h"
#include "core/placeholders/RandomText.h"
#include "support/QtPrinters.h"
#include "ui/editor/PlaceholderInfo.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

void PrintTo(const PlaceholderInfo& info, std::ostream* out) {
  *out << testing::PrintToString(info.fullMatch) << " at " << info.range.start << " of type "
       << static_cast<int>(info.type) << ", " << testing::PrintToString(info.name) << ", "
       << testing::PrintToString(info.defaultValue) << (info.isRequired ? ", required, " : ", ")
       << testing::PrintToString(info.options);
}

namespace {

using Type = PlaceholderType;

struct Row {
  QString placeholder;
  Type type;
  QString name;
  QString defaultValue = {};
  bool isRequired = false;
  QStringList options = {};
};

const Row rows[] = {
    {u"{{field:Name}}"_s, Type::field, u"Name"_s},
    {u"{{field:Name:Ada}}"_s, Type::field, u"Name"_s, u"Ada"_s},
    {u"{{field:Name:}}"_s, Type::field, u"Name"_s},
    {u"{{field:Name:required}}"_s, Type::field, u"Name"_s, u""_s, true},
    {u"{{field:Name:Ada:required}}"_s, Type::field, u"Name"_s, u"Ada"_s, true},
    {u"{{field:Name::required}}"_s, Type::field, u"Name"_s, u""_s, true},
    {u"{{field:Name:required:required}}"_s, Type::field, u"Name"_s, u""_s, true},
    {u"{{field:two\nlines: a b }}"_s, Type::field, u"two\nlines"_s, u" a b "_s},
    {u"{{field:{{a}}"_s, Type::field, u"{{a"_s},
    {u"{{textarea:Notes}}"_s, Type::textarea, u"Notes"_s},
    {u"{{textarea:Notes:x:required}}"_s, Type::textarea, u"Notes"_s, u"x"_s, true},
    {u"{{dropdown:Day:Mon}}"_s, Type::dropdown, u"Day"_s, u""_s, false, {u"Mon"_s}},
    {u"{{dropdown:Day: Mon ,\tTue,,  :required}}"_s,
     Type::dropdown,
     u"Day"_s,
     u""_s,
     true,
     {u"Mon"_s, u"Tue"_s, u""_s, u""_s}},
    {u"{{dropdown:Day:a:b}}"_s, Type::dropdown, u"Day"_s, u""_s, false, {u"a:b"_s}},
    {u"{{dropdown:Day:required}}"_s, Type::dropdown, u"Day"_s, u""_s, false, {u"required"_s}},
};

TEST(FindPlaceholder, ReadsWhatWasWritten) {
  for (const Row& row : rows) {
    const QString text = u"ab "_s + row.placeholder + u" cd"_s;
    const PlaceholderInfo expected{row.placeholder,  {3, row.placeholder.size()},
                                   row.type,         row.name,
                                   row.defaultValue, row.isRequired,
                                   row.options};
    EXPECT_EQ(findPlaceholder(text, 3), expected);
    EXPECT_EQ(findPlaceholder(text, 2 + row.placeholder.size()), expected);
    EXPECT_EQ(findPlaceholder(text, 2), std::nullopt);
    EXPECT_EQ(findPlaceholder(text, 3 + row.placeholder.size()), std::nullopt);
  }
}

TEST(FindPlaceholder, FindsNothingElse) {
  for (const QString& text :
       {u"{{date:short}}"_s, u"{{field:}}"_s, u"{{field}}"_s, u"{{field:a:b:c}}"_s,
        u"{{field:a:b:requiredx}}"_s, u"{{dropdown:Day}}"_s, u"{{dropdown:Day:}}"_s,
        u"{{dropdown::a}}"_s, u"{{?:a}}b{{/?}}"_s, u"{{#Name}}"_s, u"{field:a}"_s}) {
    for (qsizetype index = 0; index <= text.size(); ++index) {
      EXPECT_EQ(findPlaceholder(text, index), std::nullopt) << text.toStdString() << index;
    }
  }
}

TEST(FindPlaceholder, FindsNothingOutsideTheText) {
  EXPECT_EQ(findPlaceholder(u""_s, 0), std::nullopt);
  EXPECT_EQ(findPlaceholder(u"{{field:a}}"_s, -1), std::nullopt);
  EXPECT_EQ(findPlaceholder(u"{{field:a}}"_s, 12), std::nullopt);
}

// An index counts UTF-16 units, and may go as far as the text has characters.
TEST(FindPlaceholder, ReachesAsFarAsTheTextHasCharacters) {
  const QString text = u"\U0001F600\U0001F600{{field:a}}"_s;  // 15 units, 13 characters
  EXPECT_EQ(findPlaceholder(text, 3), std::nullopt);
  EXPECT_EQ(findPlaceholder(text, 4)->range, (TextRange{4, 11}));
  EXPECT_TRUE(findPlaceholder(text, 13));
  EXPECT_FALSE(findPlaceholder(text, 14));
}

TEST(FindPlaceholder, FindsTheOneOfSeveral) {
  const QString text = u"{{field:a}}{{textarea:b}}{{dropdown:c:d}}{{field:a}}"_s;
  EXPECT_EQ(findPlaceholder(text, 10)->name, u"a"_s);
  EXPECT_EQ(findPlaceholder(text, 11)->name, u"b"_s);
  EXPECT_EQ(findPlaceholder(text, 25)->name, u"c"_s);
  EXPECT_EQ(findPlaceholder(text, 41)->range, (TextRange{41, 11}));
}

// As the expressions say that define the language.
std::optional<TextRange> matchAt(const QString& text, qsizetype index) {
  for (const QString& pattern : {uR"(\{\{field:([^:}]+)(?::([^:}]*))?(?::(required))?\}\})"_s,
                                 uR"(\{\{textarea:([^:}]+)(?::([^:}]*))?(?::(required))?\}\})"_s,
                                 uR"(\{\{dropdown:([^:]+):([^}]+)\}\})"_s}) {
    const auto regex = std::get<std::shared_ptr<const Regex>>(Regex::compile(pattern));
    for (const RegexMatch& match : regex->allMatches(text)) {
      if (match.range().start <= index && index < match.range().end()) return match.range();
    }
  }
  return std::nullopt;
}

TEST(FindPlaceholder, AgreesWithTheExpressions) {
  RandomText random({u"{{field:"_s, u"{{textarea:"_s, u"{{dropdown:"_s, u":"_s, u":required"_s,
                     u"}"_s, u"}}"_s, u"{"_s, u"a"_s, u", "_s, u"\n"_s},
                    20261123);
  int found = 0;
  for (int round = 0; round < 2000; ++round) {
    const QString text = random.next(12);
    for (qsizetype index = 0; index < text.size(); ++index) {
      const auto info = findPlaceholder(text, index);
      const auto expected = matchAt(text, index);
      ASSERT_EQ(info ? std::optional(info->range) : std::nullopt, expected) << text.toStdString();
      found += info ? 1 : 0;
    }
  }
  EXPECT_GT(found, 1000);
}

}  // namespace
}  // namespace zarvy
