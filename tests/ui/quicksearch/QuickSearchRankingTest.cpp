#include <algorithm>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "base/text/CaseMapping.h"
#include "support/QtPrinters.h"
#include "ui/quicksearch/QuickSearchRanking.h"
#include "ui/quicksearch/SearchedLibrary.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

using Positions = std::vector<qsizetype>;

struct Case {
  const char* name;
  QString searchText;
  QList<Snippet> snippets;
  Positions found;
};

std::vector<Case> goldenTable() {
  const QList<Snippet> signatures = libraryOf({{u"Email signature"_s, u";es"_s},
                                               {u"Other"_s, u";sig"_s},
                                               {u"Signature"_s, u";x"_s},
                                               {u"Address"_s, u";addr"_s},
                                               {u"sig"_s, u";y"_s}});
  const QList<Snippet> equals = libraryOf(
      {{u"b one"_s, u""_s}, {u"a one"_s, u""_s}, {u"c one"_s, u""_s}, {u"one b"_s, u""_s}});
  const QList<Snippet> blanks =
      libraryOf({{u"a"_s, u";b"_s}, {u" "_s, u";c"_s}, {u"  x"_s, u"d"_s}, {u""_s, u""_s}});
  return {
      {"nothing typed: all as they are", u""_s, signatures, {0, 1, 2, 3, 4}},
      {"nothing typed into an empty library", u""_s, {}, {}},
      {"something typed into an empty library", u"a"_s, {}, {}},
      {"equal, then beginning, then the rest", u"sig"_s, signatures, {4, 2, 0, 1}},
      {"the trigger counts as the title does", u";sig"_s, signatures, {1}},
      {"a beginning of the trigger", u";s"_s, signatures, {1}},
      {"case does not matter in what is typed", u"SIG"_s, signatures, {4, 2, 0, 1}},
      {"nothing found", u"zebra"_s, signatures, {}},
      {"one word is missing", u"sig zebra"_s, signatures, {}},
      {"words in title and trigger", u"email es"_s, signatures, {0}},
      {"words in any order", u"signature email"_s, signatures, {0}},
      {"the same word twice", u"email email"_s, signatures, {0}},
      {"one word inside another", u"nature sign"_s, signatures, {0, 2}},
      {"no word across title and trigger", u"signature;"_s, signatures, {}},
      {"equals keep the library's order", u"one"_s, equals, {3, 0, 1, 2}},
      {"the whole query ranks, blanks included", u"one b"_s, equals, {3, 0}},
      {"a blank behind: no longer equal", u"sig "_s, signatures, {0, 1, 2, 4}},
      {"a blank before: no longer the beginning", u" sig"_s, signatures, {0, 1, 2, 4}},
      {"many blanks between words", u"email   es"_s, signatures, {0}},
      {"a blank alone finds all, and ranks", u" "_s, blanks, {1, 2, 0, 3}},
      {"blanks alone find all, and rank", u"  "_s, blanks, {2, 0, 1, 3}},
      {"a tab does not part words", u"email\tes"_s, signatures, {}},
      {"a no-break space does not part words", u"email\u00A0es"_s, signatures, {}},
      {"a title with a tab", u"a\tb"_s, libraryOf({{u"A\tB"_s, u""_s}}), {0}},
      {"a trigger alone equals", u"a"_s, libraryOf({{u"ab"_s, u"x"_s}, {u"y"_s, u"A"_s}}), {1, 0}},
      {"markup as it stands",
       u"<b>"_s,
       libraryOf({{u"b"_s, u""_s}, {u"<B>x</B>"_s, u""_s}, {u"&lt;b&gt;"_s, u""_s}}),
       {1}},
      {"patterns as they stand",
       u".*"_s,
       libraryOf({{u"any"_s, u"\\d+"_s}, {u"rest"_s, u"a.*"_s}}),
       {1}},
      {"letters beyond ASCII",
       u"\u00C4RGER"_s,
       libraryOf({{u"arger"_s, u""_s}, {u"\u00E4rger"_s, u""_s}}),
       {1}},
      {"a final sigma is another letter",
       u"\u039F\u0394\u039F\u03A3"_s,
       libraryOf({{u"\u03BF\u03B4\u03BF\u03C2"_s, u""_s}, {u"\u03BF\u03B4\u03BF\u03C3"_s, u""_s}}),
       {0}},
      {"a capital I with a dot becomes two",
       u"\u0130"_s,
       libraryOf({{u"i"_s, u""_s}, {u"i\u0307x"_s, u""_s}}),
       {1}},
      {"a sharp s is not a double one",
       u"SS"_s,
       libraryOf({{u"stra\u00DFe"_s, u""_s}, {u"strasse"_s, u""_s}}),
       {1}},
      {"composed and decomposed are two texts",
       u"\u00E9"_s,
       libraryOf({{u"e\u0301"_s, u""_s}, {u"\u00C9"_s, u""_s}}),
       {1}},
      {"an emoji",
       u"\U0001F4E6"_s,
       libraryOf({{u"\U0001F4E7"_s, u""_s}, {u"box \U0001F4E6"_s, u""_s}}),
       {1}},
      {"right-to-left text",
       u"\u05E2\u05D5\u05DC\u05DD"_s,
       libraryOf({{u"\u05E9\u05DC\u05D5\u05DD \u05E2\u05D5\u05DC\u05DD"_s, u""_s}}),
       {0}},
      {"a very long title",
       u"needle"_s,
       libraryOf({{u"hay"_s, u""_s}, {QString(9'994, u'h') + u"NEEDLE"_s, u""_s}}),
       {1}},
      {"a text longer than any title", QString(20'000, u'a'), signatures, {}},
  };
}

TEST(QuickSearchRanking, FindsInTheOrderOfTheTable) {
  for (const Case& expected : goldenTable()) {
    EXPECT_EQ(quickSearchResults(searchedTextsOf(expected.snippets), expected.searchText),
              expected.found)
        << expected.name;
  }
}

// The rule, word by word.
Positions naiveResults(const QList<Snippet>& snippets, const QString& searchText) {
  const QString query = lowerCased(searchText);
  std::vector<std::pair<qsizetype, int>> scored;
  for (qsizetype index = 0; index < snippets.size(); ++index) {
    const QString title = lowerCased(snippets[index].title);
    const QString trigger = lowerCased(snippets[index].trigger);
    bool qualifies = true;
    for (const QString& word : query.split(u' ')) {
      if (!word.isEmpty() && title.indexOf(word) < 0 && trigger.indexOf(word) < 0) {
        qualifies = false;
      }
    }
    if (!qualifies) continue;
    int rank = 2;
    if (title.left(query.size()) == query || trigger.left(query.size()) == query) rank = 1;
    if (title == query || trigger == query) rank = 0;
    scored.emplace_back(index, searchText.isEmpty() ? 0 : rank);
  }
  std::stable_sort(scored.begin(), scored.end(),
                   [](const auto& a, const auto& b) { return a.second < b.second; });
  Positions positions;
  for (const auto& [index, rank] : scored) positions.push_back(index);
  return positions;
}

TEST(QuickSearchRanking, AgreesWithTheRuleTakenWordByWord) {
  std::mt19937 random(20261121);
  const QStringList pieces{u"a"_s, u"B"_s, u"ab"_s,     u" "_s,      u"\u03A3"_s,
                           u";"_s, u"i"_s, u"\u0130"_s, u"\u00DF"_s, u"\U0001F600"_s};
  const auto number = [&random](int least, int most) {
    return std::uniform_int_distribution<int>(least, most)(random);
  };
  const auto text = [&](int longest) {
    QString result;
    for (int rest = number(0, longest); rest > 0; --rest) {
      result += pieces[number(0, static_cast<int>(pieces.size()) - 1)];
    }
    return result;
  };
  qsizetype found = 0;
  qsizetype ranked = 0;  // results that are not in the order of the library
  for (int round = 0; round < 5'000; ++round) {
    QList<Snippet> snippets;
    for (int rest = number(0, 12); rest > 0; --rest) {
      snippets.append(searchedSnippet(text(6), text(4)));
    }
    const QString searchText = text(4);
    const Positions results = quickSearchResults(searchedTextsOf(snippets), searchText);
    ASSERT_EQ(results, naiveResults(snippets, searchText)) << searchText.toStdString();
    found += static_cast<qsizetype>(results.size());
    ranked += std::is_sorted(results.begin(), results.end()) ? 0 : 1;
  }
  EXPECT_GT(found, 10'000) << "the rounds say something";
  EXPECT_GT(ranked, 100);
}

}  // namespace
}  // namespace zarvy
