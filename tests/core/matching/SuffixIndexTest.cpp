#include <algorithm>
#include <random>

#include <gtest/gtest.h>

#include "core/TextExpansionEngine.h"
#include "core/matching/NaiveMatcher.h"
#include "core/matching/SuffixIndex.h"
#include "core/matching/TriggerLibrary.h"
#include "fakes/FakePlaceholders.h"
#include "fakes/ManualSteadyClock.h"
#include "fakes/RecordingLineOutput.h"
#include "support/QtPrinters.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

QList<Snippet> literals(const QStringList& triggers) {
  QList<Snippet> snippets;
  for (const QString& trigger : triggers) {
    Snippet snippet;
    snippet.id = QUuid::createUuid();
    snippet.trigger = trigger;
    snippets.append(snippet);
  }
  return snippets;
}

SuffixIndex indexOf(const QList<Snippet>& snippets) {
  SuffixIndex index;
  for (qsizetype position = 0; position < snippets.size(); ++position) {
    index.add(snippets.at(position).trigger, static_cast<Rank>(position));
  }
  return index;
}

struct Row {
  QStringList triggers;
  QString text;
  std::optional<qsizetype> position;
};

const QString family = u"\U0001F468\u200D\U0001F469\u200D\U0001F467"_s;
const QString german = u"\U0001F1E9\U0001F1EA"_s;
const QString french = u"\U0001F1EB\U0001F1F7"_s;
const QString lone(QChar(0xD83D));

const Row table[] = {
    {{}, u"abc"_s, std::nullopt},
    {{u"ab"_s}, u""_s, std::nullopt},
    {{u"ab"_s}, u"b"_s, std::nullopt},
    {{u"ab"_s}, u"ab"_s, 0},
    {{u"ab"_s}, u"xyzab"_s, 0},
    {{u"ab"_s}, u"abx"_s, std::nullopt},
    {{u""_s, u"b"_s, u"\u00E9"_s, family}, u"ab"_s, std::nullopt},
    {{u"ab"_s, u"xab"_s}, u"xab"_s, 0},
    {{u"xab"_s, u"ab"_s}, u"xab"_s, 0},
    {{u"xab"_s, u"ab"_s}, u"yab"_s, 1},
    {{u"zzab"_s, u"yab"_s, u"xyab"_s, u"ab"_s}, u"xyab"_s, 1},
    {{u"ab"_s, u"ab"_s}, u"ab"_s, 0},
    {{u"xx"_s, u"ab"_s, u"AB"_s}, u"AB"_s, 2},
    {{u";sig"_s}, u";SIG"_s, std::nullopt},
    {{u"caf\u00E9"_s}, u"cafe\u0301"_s, 0},
    {{u"cafe\u0301"_s}, u"caf\u00E9"_s, 0},
    {{u"cafe"_s}, u"cafe\u0301"_s, std::nullopt},
    {{u"cafe\u0301"_s}, u"cafe"_s, std::nullopt},
    {{u"a\u0301"_s + u"b"_s}, u"xa\u0301b"_s, 0},
    {{u"\u0301b"_s}, u"a\u0301b"_s, std::nullopt},  // its first character is the mark alone
    {{u"\u0301b"_s}, u"\u0301b"_s, 0},
    {{u"a\u0323\u0302x"_s}, u"\u1EADx"_s, 0},
    {{u"\u212Bx"_s}, u"\u00C5x"_s, 0},
    {{u"\u1100\u1161x"_s}, u"\uAC00x"_s, 0},
    {{u"\u1161x"_s}, u"\u1100\u1161x"_s, std::nullopt},
    {{u"x"_s + family}, u"x"_s + family, 0},
    {{u"\U0001F469\u200D\U0001F467!"_s}, family + u"!"_s, std::nullopt},
    {{german + french}, german + french, 0},
    {{u"\U0001F1EA\U0001F1EB\U0001F1F7"_s}, german + french, std::nullopt},
    {{u"\n!"_s}, u"\r\n!"_s, std::nullopt},
    {{u"\r\n!"_s}, u"\r\n!"_s, 0},
    {{u"\n!"_s}, u"\n!"_s, 0},
    {{lone + u"a"_s}, u"x"_s + lone + u"a"_s, 0},
    {{QString(QChar(0xDE00)) + u"a"_s}, u"\U0001F600a"_s, std::nullopt},
    {{u"a\u0600"_s}, u"a\u0600"_s, 0},
    {{u"a\u0600"_s}, u"a\u0600b"_s, std::nullopt},
    {{QString(100, u'a')}, QString(99, u'a'), std::nullopt},
    {{QString(100, u'a')}, QString(100, u'a'), 0},
};

TEST(SuffixIndex, FindsTheFirstTriggerThatEndsTheText) {
  for (const Row& row : table) {
    SCOPED_TRACE(row.text.toStdString());
    EXPECT_EQ(indexOf(literals(row.triggers)).find(row.text), row.position);
    const auto naive = NaiveMatcher(literals(row.triggers)).findMatch(row.text);
    EXPECT_EQ(naive ? std::optional(naive->position) : std::nullopt, row.position)
        << "the reference is wrong";
  }
}

TEST(SuffixIndex, FindsWhatIsLeftWhenTriggersGo) {
  SuffixIndex index = indexOf(literals({u"xab"_s, u"ab"_s, u"ab"_s, u"yab"_s}));
  index.remove(u"ab", 1);
  EXPECT_EQ(index.find(u"ab"), 2);
  index.remove(u"xab", 0);
  EXPECT_EQ(index.find(u"xab"), 2);
  index.remove(u"ab", 2);
  EXPECT_EQ(index.find(u"xab"), std::nullopt);
  EXPECT_EQ(index.find(u"yab"), 3);
  index.add(u"xab", 0);
  EXPECT_EQ(index.find(u"xab"), 0);
  index.remove(u"yab", 3);
  index.remove(u"xab", 0);
  EXPECT_EQ(index.find(u"yab"), std::nullopt);
}

TEST(SuffixIndex, GivesBackWhatItsTriggersTook) {
  const QList<Snippet> snippets =
      literals({u"ab"_s, u"xab"_s, u"yab"_s, u"xyab"_s, u"abc"_s, u"ab"_s});
  SuffixIndex index = indexOf(snippets);
  EXPECT_GE(index.nodeCount(), 6U);
  for (qsizetype position = 0; position < snippets.size(); ++position) {
    index.remove(snippets.at(position).trigger, static_cast<Rank>(position));
  }
  EXPECT_EQ(index.nodeCount(), 1U) << "the root alone";
}

TEST(SuffixIndex, KeepsTheRankThatASnippetHad) {
  SuffixIndex index;
  index.add(u"ab", 7);
  index.add(u"xab", 5);
  index.add(u"ab", 3);
  EXPECT_EQ(index.find(u"xab"), 3);
  index.remove(u"ab", 3);
  EXPECT_EQ(index.find(u"xab"), 5);
  EXPECT_EQ(index.find(u"ab"), 7);
}

TEST(SuffixIndex, HoldsTriggersOfAnyLength) {
  const QString text(200000, u'a');
  const SuffixIndex index = indexOf(literals({u"b"_s + text, text}));
  EXPECT_EQ(index.find(text), 1);
  EXPECT_EQ(index.find(u"b"_s + text), 0);
  EXPECT_EQ(index.find(text.chopped(1)), std::nullopt);
}

// Random libraries over an alphabet that is small enough for triggers to collide.
class RandomTexts {
 public:
  explicit RandomTexts(unsigned seed) : m_random(seed) {}

  int upTo(int most) { return std::uniform_int_distribution<int>(0, most)(m_random); }

  QString text(int longest) {
    QString result;
    for (int rest = upTo(longest); rest > 0; --rest) result += part();
    return result;
  }

  QList<Snippet> library() {
    static const QStringList patterns{
        u"a+b"_s,    u"(?<x>[ab])!"_s, u"x*"_s,     u"a|b"_s,    u"(a"_s,
        u"\u0301"_s, u".\u0301"_s,     u"(?i)AB"_s, u"\\p{M}"_s, u"[\U0001F468\U0001F469]"_s};
    QList<Snippet> snippets;
    for (int rest = upTo(12); rest > 0; --rest) {
      Snippet snippet;
      snippet.id = QUuid::createUuid();
      snippet.isRegexTrigger = upTo(7) == 0;
      snippet.trigger = snippet.isRegexTrigger
                            ? patterns.at(upTo(static_cast<int>(patterns.size()) - 1))
                            : text(upTo(5) == 0 ? 1 : 4);
      if (!snippets.isEmpty() && upTo(9) == 0) snippet.trigger = snippets.front().trigger;
      snippets.append(snippet);
    }
    return snippets;
  }

  // Something typed: often a trigger of the library, spelled in one of the equivalent ways.
  QString buffer(const QList<Snippet>& snippets) {
    QString result = text(6);
    if (!snippets.isEmpty() && upTo(1) == 0) {
      QString trigger = snippets.at(upTo(static_cast<int>(snippets.size()) - 1)).trigger;
      const int form = upTo(2);
      if (form == 1) trigger = trigger.normalized(QString::NormalizationForm_D);
      if (form == 2) trigger = trigger.normalized(QString::NormalizationForm_C);
      result += trigger;
      if (upTo(9) == 0) result += part();
    }
    return result;
  }

 private:
  QString part() {
    static const QStringList parts{u"a"_s,
                                   u"a"_s,
                                   u"b"_s,
                                   u"b"_s,
                                   u"A"_s,
                                   u"B"_s,
                                   u";"_s,
                                   u"!"_s,
                                   u" "_s,
                                   u"\u00E1"_s,
                                   u"a\u0301"_s,
                                   u"\u0301"_s,
                                   u"\u0323"_s,
                                   u"\u1EA5"_s,
                                   u"\u212B"_s,
                                   u"\U0001F468"_s,
                                   u"\U0001F469"_s,
                                   u"\u200D"_s,
                                   u"\uFE0F"_s,
                                   u"\U0001F3FD"_s,
                                   u"\U0001F468\u200D\U0001F469"_s,
                                   u"\U0001F1E9"_s,
                                   u"\U0001F1EA"_s,
                                   u"\u1100"_s,
                                   u"\u1161"_s,
                                   u"\u11A8"_s,
                                   u"\uAC00"_s,
                                   u"\uAC01"_s,
                                   u"\r"_s,
                                   u"\n"_s,
                                   u"\r\n"_s,
                                   u"\u0600"_s,
                                   u"\u0915"_s,
                                   u"\u094D"_s,
                                   u"\u0937"_s,
                                   u"\u65E5"_s,
                                   u"\u0436"_s,
                                   QString(QChar(0xD83D)),
                                   QString(QChar(0xDC68)),
                                   QString(QChar(0))};
    return parts.at(upTo(static_cast<int>(parts.size()) - 1));
  }

  std::mt19937 m_random;
};

TEST(SuffixIndex, AgreesWithTwoPlainPassesOnRandomLibraries) {
  RandomTexts random(20260121);
  int cases = 0;
  int matches = 0;
  for (int round = 0; round < 6000; ++round) {
    const QList<Snippet> snippets = random.library();
    RecordingLineOutput output;
    FakePlaceholders placeholders;
    const ManualSteadyClock clock;
    TextExpansionEngine engine(output, clock, placeholders.services());
    engine.setSnippets(snippets);
    NaiveMatcher naive(snippets);
    for (int buffers = 0; buffers < 20; ++buffers, ++cases) {
      const QString buffer = random.buffer(snippets);
      const auto expected = naive.findMatch(buffer);
      const auto actual = engine.findMatch(buffer);
      ASSERT_EQ(actual.has_value(), expected.has_value()) << testing::PrintToString(buffer);
      if (!expected) continue;
      ++matches;
      ASSERT_EQ(actual->snippet, snippets.at(expected->position)) << testing::PrintToString(buffer);
      ASSERT_EQ(actual->matchedString, expected->matchedString);
    }
  }
  EXPECT_GE(cases, 100000);
  EXPECT_GE(matches, cases / 5) << "too few of the cases match to prove anything";
  EXPECT_LE(matches, cases * 4 / 5) << "too few of the cases fail to match to prove anything";
}

// A library after one random operation, and what the operation was.
ListChange changed(QList<Snippet>& snippets, RandomTexts& random) {
  const QList<Snippet> others = random.library();
  const int last = static_cast<int>(snippets.size()) - 1;
  if (last < 0 || random.upTo(2) == 0) {
    const ListChange change{ListChange::Kind::added, snippets.size(), others.size()};
    snippets += others;
    return change;
  }
  const qsizetype first = random.upTo(last);
  const qsizetype count = 1 + random.upTo(std::min(3, last - static_cast<int>(first)));
  if (random.upTo(1) == 0) {
    snippets.remove(first, count);
    return {ListChange::Kind::removed, first, count};
  }
  const qsizetype updated = std::min(count, others.size());
  for (qsizetype n = 0; n < updated; ++n) snippets[first + n] = others.at(n);
  return {ListChange::Kind::updated, first, updated};
}

TEST(TriggerLibrary, IsAfterEachChangeWhatItWouldBeIfItWereMadeOfTheList) {
  RandomTexts random(20261122);
  int matches = 0;
  int kinds[3] = {};
  for (int round = 0; round < 500; ++round) {
    // Now and then of more snippets than a list keeps side by side.
    QList<Snippet> snippets;
    for (int number = 0; round % 100 == 0 && number < 1200; ++number) {
      snippets += literals({u";many"_s + QString::number(number)});
    }
    TriggerLibrary followed(snippets);
    for (int step = 0; step < 20; ++step) {
      const ListChange change = changed(snippets, random);
      ++kinds[static_cast<int>(change.kind)];
      followed.follow(snippets, change);
      const TriggerLibrary made(snippets);
      ASSERT_EQ(followed.snippets().toList(), snippets);
      ASSERT_EQ(followed.regexes(), made.regexes());
      for (int buffers = 0; buffers < 5; ++buffers) {
        const QString buffer = random.buffer(snippets);
        const auto match = followed.literalThatEnds(buffer);
        ASSERT_EQ(match, made.literalThatEnds(buffer)) << testing::PrintToString(buffer);
        ASSERT_EQ(followed.replacementOf(buffer), made.replacementOf(buffer));
        matches += match ? 1 : 0;
      }
    }
  }
  EXPECT_GE(matches, 5000) << "too few matches to prove anything";
  EXPECT_GE(*std::min_element(kinds, kinds + 3), 2000);
}

}  // namespace
}  // namespace zarvy
