#include <atomic>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "base/Clock.h"
#include "core/TextExpansionEngine.h"
#include "fakes/FakePlaceholders.h"
#include "fakes/RecordingLineOutput.h"
#include "support/QtPrinters.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

// A library in which every trigger carries the edition's number, so that a mix of two shows.
QList<Snippet> edition(int number, const QUuid& regexID) {
  const QString mark = QString::number(number);
  QList<Snippet> snippets(3);
  snippets[0].trigger = u";lit"_s;
  snippets[0].replacement = mark;
  snippets[1].id = regexID;
  snippets[1].trigger = u"(?<part>[a-z]+)#"_s + mark;
  snippets[1].replacement = mark;
  snippets[1].isRegexTrigger = true;
  snippets[2].trigger = u"(?<other>x)?end"_s;
  snippets[2].replacement = mark;
  snippets[2].isRegexTrigger = true;
  return snippets;
}

TEST(TextExpansionEngineThreads, MatchesWhileTheLibraryIsEdited) {
  constexpr int editions = 400;
  RecordingLineOutput output;
  FakePlaceholders placeholders;
  const ThreadTimeClock clock;
  TextExpansionEngine engine(output, clock, placeholders.services());
  const QUuid regexID = QUuid::createUuid();
  engine.setSnippets(edition(0, regexID));
  std::atomic<bool> isEnding{false};
  std::atomic<int> mixed{0};

  std::vector<std::thread> matchers;
  for (int thread = 0; thread < 3; ++thread) {
    matchers.emplace_back([&] {
      do {
        const auto literal = engine.findMatch(u"abc;lit"_s);
        if (!literal || literal->matchedString != u";lit"_s) ++mixed;
        for (const int number : {0, editions / 2, editions}) {
          const auto match = engine.findMatch(u"word#"_s + QString::number(number));
          if (match && match->snippet.replacement.toInt() != number) ++mixed;
          if (match && match->captures.value(u"part"_s) != u"word"_s) ++mixed;
        }
        const auto both = engine.findMatch(u"xend"_s);
        if (!both || both->captures.value(u"other"_s) != u"x"_s) ++mixed;
        static_cast<void>(engine.globalVariables());
      } while (!isEnding);
    });
  }
  for (int number = 1; number <= editions; ++number) {
    // Every other one as a change of what is there.
    if (number % 2 == 0) {
      engine.setSnippets(edition(number, regexID));
    } else {
      engine.changeSnippets(edition(number, regexID), {ListChange::Kind::updated, 0, 3});
    }
    QList<Snippet> longer = edition(number, regexID);
    longer.append(longer.front());
    longer.back().trigger = u";longer"_s;
    engine.changeSnippets(longer, {ListChange::Kind::added, 3, 1});
    engine.changeSnippets(longer.first(3), {ListChange::Kind::removed, 3, 1});
    engine.setGlobalVariables({{QUuid(), QString::number(number), {}, {}, {}}});
  }
  isEnding = true;
  for (std::thread& matcher : matchers) matcher.join();

  EXPECT_EQ(mixed, 0);
  const auto last = engine.findMatch(u"word#"_s + QString::number(editions));
  ASSERT_TRUE(last) << "no expression of an earlier edition stayed behind";
  EXPECT_EQ(last->snippet.replacement, QString::number(editions));
}

}  // namespace
}  // namespace zarvy
