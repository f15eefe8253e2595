// The texts and the bookkeeping of the matrix, without any display.

#include <set>

#include <QList>
#include <QRegularExpression>

#include <gtest/gtest.h>

#include "e2e/scenarios/Scenario.h"
#include "e2e/scenarios/ScenarioTexts.h"
#include "e2e/scenarios/TextDifference.h"

namespace zarvy::e2e {

using namespace Qt::Literals::StringLiterals;

namespace {

TEST(ScenarioTexts, holdThreeHundredDifferentCharactersOfTwelveScripts) {
  const QString text = textOfTwelveScripts();
  const auto characters = text.toUcs4();
  EXPECT_GE(std::set<uint>(characters.begin(), characters.end()).size(), 300U);
  std::set<QChar::Script> scripts;
  for (const uint character : characters) scripts.insert(QChar::script(character));
  scripts.erase(QChar::Script_Common);
  scripts.erase(QChar::Script_Inherited);
  EXPECT_GE(scripts.size(), 12U);
}

TEST(ScenarioTexts, areTwoThousandCharactersLong) {
  EXPECT_EQ(longPlainText().size(), 2000);
  EXPECT_EQ(longForeignText().size(), 2000);
  EXPECT_EQ(longForeignText().toUcs4().size(), 2000);
}

TEST(ScenarioSnippets, haveTriggersNoneOfWhichEndsAnother) {
  const auto library = matrixLibrary();
  for (const TestSnippet& one : library) {
    for (const TestSnippet& other : library) {
      if (&one == &other) continue;
      for (qsizetype length = 2; length <= other.trigger.size(); ++length) {
        EXPECT_FALSE(other.trigger.left(length).endsWith(one.trigger))
            << one.trigger.toStdString() << " fires within " << other.trigger.toStdString();
      }
    }
  }
}

TEST(ScenarioTurns, areExpectedToLeaveTheReplacementAndTheCaretInItsPlace) {
  EXPECT_EQ(expectedAfter({u"ab"_s, 2}, {.leftArrows = 1, .typed = u"x"_s}),
            (EditorState{u"axb"_s, 2}));
  EXPECT_EQ(expectedAfter({u"ab"_s, 1}, {.typed = u"-"_s, .snippet = "cursor"}),
            (EditorState{u"a-<b></b> — fettb"_s, 5}));
}

TEST(TheEditDistance, countsEachCharacterPutInTakenOutOrExchangedOnce) {
  EXPECT_EQ(editDistance(u"kitten"_s, u"sitting"_s), 3);
  EXPECT_EQ(editDistance(u""_s, u"abc"_s), 3);
  EXPECT_EQ(editDistance(u"abc"_s, u""_s), 3);
  EXPECT_EQ(editDistance(u"a😀b"_s, u"ab"_s), 1);
  EXPECT_EQ(editDistance(longPlainText(), longPlainText()), 0);
  EXPECT_EQ(editDistance(QString(500, u'a'), QString(500, u'b')), 500);
  EXPECT_EQ(editDistance(longPlainText(), u"x"_s + longPlainText().left(1990)), 11);
}

TEST(TheFirstDifference, namesTheCodePointsThere) {
  EXPECT_EQ(firstDifference(u"abc"_s, u"abc"_s), "");
  EXPECT_EQ(firstDifference(u"abc"_s, u"abx"_s),
            "character 2 after \"ab\": expected U+0063, found U+0078 (3 characters expected, 3 "
            "found)");
  EXPECT_EQ(firstDifference(u"ab"_s, u"a"_s),
            "character 1 after \"a\": expected U+0062, found the end (2 characters expected, 1 "
            "found)");
}

}  // namespace
}  // namespace zarvy::e2e
