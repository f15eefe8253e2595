#include <string>

#include <QStringList>

#include <gtest/gtest.h>

#include "app/expansion/WantedCharacters.h"
#include "fakes/ManualClock.h"

namespace zarvy {
namespace {

using namespace Qt::Literals::StringLiterals;

struct WantedCase {
  const char* name;
  QStringList replacements;
  QString expected;
};

void PrintTo(const WantedCase& wantedCase, std::ostream* stream) {
  *stream << wantedCase.name;
}

class WantedCharactersTable : public testing::TestWithParam<WantedCase> {};

TEST_P(WantedCharactersTable, ListsTheCharactersInOrder) {
  const ManualClock clock;
  QList<Snippet> snippets;
  for (const QString& replacement : GetParam().replacements) {
    snippets.append(Snippet::create(u""_s, u""_s, replacement, clock));
  }
  EXPECT_EQ(wantedCharacters(snippets).toStdString(), GetParam().expected.toStdString());
}

QString withLoneSurrogates() {
  return u"a"_s + QChar(0xD83D) + u"b"_s + QChar(0xDE00);
}

INSTANTIATE_TEST_SUITE_P(
    , WantedCharactersTable,
    testing::Values(
        WantedCase{"NoSnippet", {}, u""_s}, WantedCase{"NoText", {u""_s}, u""_s},
        WantedCase{"EachCharacterOnce", {u"abcabcaa"_s}, u"abc"_s},
        WantedCase{"TheOneInMostSnippetsFirst", {u"abc"_s, u"xc"_s, u"cb"_s}, u"cbax"_s},
        WantedCase{"ManyInOneSnippetCountOnce", {u"zzzzzza"_s, u"a"_s}, u"az"_s},
        WantedCase{
            "SurrogatePairsStayWhole", {u"a\U0001F600"_s, u"\U0001F600"_s}, u"\U0001F600a"_s},
        WantedCase{"ControlCharactersOfAsciiAreLeftOut", {u"a\n\t\r\x1b\x7f\u0000b"_s}, u"ab"_s},
        WantedCase{"OtherInvisibleCharactersAreWanted",
                   {u"\u00a0\u200d\ufe0f\u0301"_s},
                   u"\u00a0\u200d\ufe0f\u0301"_s},
        WantedCase{"HalvesOfSurrogatePairsAreLeftOut", {withLoneSurrogates()}, u"ab"_s}),
    [](const testing::TestParamInfo<WantedCase>& row) { return std::string(row.param.name); });

}  // namespace
}  // namespace zarvy
