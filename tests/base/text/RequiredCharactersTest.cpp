#include <memory>
#include <random>

#include <QString>
#include <QStringList>

#include <gtest/gtest.h>
#include <unicode/regex.h>
#include <unicode/unistr.h>

#include "base/text/RequiredCharacters.h"
#include "support/QtPrinters.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

struct Row {
  QString pattern;
  QString required;  // each of these characters alone must be enough to rule a text out
};

const Row table[] = {
    {u"abc$"_s, u"abc"_s},
    {u"(?<word>\\w+)!$"_s, u"!"_s},
    {u";d(?<n>\\d+)x$"_s, u";dx"_s},
    {u"[a-z]+@(?:home|work)$"_s, u"@o"_s},
    {u"a|b$"_s, u""_s},
    {u"ax|bx$"_s, u"x"_s},
    {u"(ab)?c*d{0,2}e{1,}f{2}g+h??i+?$"_s, u"efgi"_s},
    {u"(?=a)(?!b)(?<=c)(?<!d)e$"_s, u"e"_s},
    {u"\\.\\d\\*\\bx$"_s, u".*x"_s},
    {u"[abc][^d]x$"_s, u"x"_s},
    {u"[a[b]c]x[\\]]y$"_s, u"xy"_s},
    {u"[[:alpha:]]-$"_s, u"-"_s},
    {u"\u00E9\U0001F600x$"_s, u"x"_s},
    // What is not understood asks for nothing.
    {u"[]a]x$"_s, u""_s},
    {u"\\Qa|b\\Ex$"_s, u""_s},
    {u"\\x41b$"_s, u""_s},
    {u"\\p{L}b$"_s, u""_s},
    {u"(?x) a b$"_s, u""_s},
    {u"(?#note)b$"_s, u""_s},
    {u"(a)\\1$"_s, u""_s},
    {u"(?i:a)b$"_s, u""_s},
};

TEST(RequiredCharacters, AreThoseNoMatchCanDoWithout) {
  QString everything;
  for (char16_t character = 0; character < 0x80; ++character) everything.append(character);
  for (const Row& row : table) {
    SCOPED_TRACE(row.pattern.toStdString());
    const RequiredCharacters required(row.pattern);
    EXPECT_TRUE(required.arePresentIn(everything));
    for (const QChar character : everything) {
      EXPECT_EQ(required.arePresentIn(QString(everything).remove(character)),
                !row.required.contains(character))
          << static_cast<int>(character.unicode());
    }
  }
}

TEST(RequiredCharacters, MayComeInEitherCaseWhereCaseIsIgnored) {
  const RequiredCharacters required(u"(?i)Km-"_s);
  EXPECT_TRUE(required.arePresentIn(u"km-"));
  EXPECT_TRUE(required.arePresentIn(u"KM-"));
  EXPECT_FALSE(required.arePresentIn(u"km"));
  EXPECT_FALSE(required.arePresentIn(u"m-"));
  EXPECT_TRUE(required.arePresentIn(u"\u212Am-")) << "the Kelvin sign is a k";
}

TEST(RequiredCharacters, AreNotSoughtBeyondAllDepths) {
  const QString deep = QString(100000, u'(') + u"a"_s + QString(100000, u')');
  EXPECT_TRUE(RequiredCharacters(deep).arePresentIn(u""));
}

icu::UnicodeString fromQt(const QString& text) {
  return icu::UnicodeString(reinterpret_cast<const char16_t*>(text.utf16()),
                            static_cast<int32_t>(text.size()));
}

// Random patterns out of pieces that make sense together often enough to compile.
TEST(RequiredCharacters, NeverRuleOutATextThatMatches) {
  const QStringList pieces{
      u"a"_s,      u"b"_s,     u"A"_s,         u"-"_s,      u"!"_s,      u"]"_s,    u"}"_s,
      u"\u00E9"_s, u"."_s,     u"\\d"_s,       u"\\w"_s,    u"\\b"_s,    u"\\."_s,  u"\\-"_s,
      u"[ab]"_s,   u"[^a]"_s,  u"[a"_s,        u"*"_s,      u"+"_s,      u"?"_s,    u"{0,2}"_s,
      u"{1}"_s,    u"{2,}"_s,  u"|"_s,         u"("_s,      u")"_s,      u"(?:"_s,  u"(?<n>"_s,
      u"(?i)"_s,   u"(?="_s,   u"(?!"_s,       u"(?<=a)"_s, u"$"_s,      u"^"_s,    u"\\Q"_s,
      u"\\E"_s,    u"\\x61"_s, u"\\1"_s,       u"[]a]"_s,   u"[[b]a]"_s, u"(?x)"_s, u"#"_s,
      u" "_s,      u"{"_s,     u"\\k<n>"_s,    u"(?>"_s,    u"\\p{L}"_s, u"(?s)"_s, u"k"_s,
      u"\\"_s,     u"&&"_s,    u"[a-b&&[b]]"_s};
  const QStringList letters{u"a"_s, u"b"_s, u"A"_s, u"B"_s,      u"-"_s, u"!"_s, u"."_s,
                            u"1"_s, u" "_s, u"#"_s, u"\u00E9"_s, u"|"_s, u"k"_s, u"\u212A"_s,
                            u"]"_s, u"["_s, u"}"_s, u"{"_s,      u"&"_s, u"x"_s};
  std::mt19937 random(20260121);
  const auto text = [&random](const QStringList& parts, int longest) {
    QString result;
    for (int rest = std::uniform_int_distribution<int>(0, longest)(random); rest > 0; --rest) {
      result += parts.at(std::uniform_int_distribution<qsizetype>(0, parts.size() - 1)(random));
    }
    return result;
  };
  int patterns = 0;
  int matches = 0;
  int ruledOut = 0;
  for (int round = 0; round < 60000; ++round) {
    const QString pattern = text(pieces, 6) + u'$';
    UErrorCode status = U_ZERO_ERROR;
    const icu::UnicodeString content = fromQt(pattern);
    const std::unique_ptr<icu::RegexPattern> compiled(
        icu::RegexPattern::compile(content, 0, status));
    if (U_FAILURE(status)) continue;
    ++patterns;
    const RequiredCharacters required(pattern);
    for (int texts = 0; texts < 12; ++texts) {
      const QString candidate = text(letters, 6);
      if (required.arePresentIn(candidate)) continue;
      ++ruledOut;
      const icu::UnicodeString input = fromQt(candidate);
      const std::unique_ptr<icu::RegexMatcher> matcher(compiled->matcher(input, status));
      const bool isMatch = matcher->find() != 0;
      matches += isMatch ? 1 : 0;
      ASSERT_FALSE(isMatch) << testing::PrintToString(pattern) << ' '
                            << testing::PrintToString(candidate);
    }
  }
  EXPECT_EQ(matches, 0);
  EXPECT_GT(patterns, 10000);
  EXPECT_GT(ruledOut, 50000) << "too little is ruled out to prove anything";
}

}  // namespace
}  // namespace zarvy
