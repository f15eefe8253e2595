// The texts and the bookkeeping of the matrix, without any display.

#include <algorithm>
#include <random>
#include <set>

#include <QList>
#include <QRegularExpression>

#include <gtest/gtest.h>

#include "e2e/harness/KeyRhythm.h"
#include "e2e/scenarios/Interleaving.h"
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

TEST(ScenarioTexts, useTwoHundredAndFortyLettersThatFewLayoutsHave) {
  const QString text = textOfTwoHundredAndForty();
  const std::set<QChar> characters(text.begin(), text.end());
  EXPECT_EQ(text.size(), 1000);
  EXPECT_EQ(std::count_if(characters.begin(), characters.end(),
                          [](QChar character) { return character.isLetter(); }),
            240);
}

TEST(ScenarioSnippets, haveATriggerInEveryScript) {
  EXPECT_EQ(triggerIn(Script::latin, u";sQ"_s), u";sQ"_s);
  EXPECT_EQ(triggerIn(Script::cyrillic, u";sQ"_s), u";ыЙ"_s);
  EXPECT_EQ(triggerIn(Script::greek, u";w?"_s), u";ς?"_s);
  EXPECT_EQ(triggerIn(Script::hebrew, u";lo"_s), u";ךם"_s);
  EXPECT_EQ(triggerIn(Script::arabic, u";w?"_s), u"-ص؟"_s);
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

TEST(AnInterleaving, holdsAllOfBothEachInItsOrderAndNothingElse) {
  struct Row {
    QString one;
    QString other;
    QString actual;
    qsizetype distance;
  };
  const std::vector<Row> table = {
      {u""_s, u""_s, u""_s, 0},
      {u"abc"_s, u""_s, u"abc"_s, 0},
      {u""_s, u"abc"_s, u"abc"_s, 0},
      {u"abc"_s, u"xy"_s, u"axbyc"_s, 0},
      {u"abc"_s, u"abd"_s, u"ababcd"_s, 0},
      {u"abc"_s, u"abd"_s, u"ababdc"_s, 0},
      {u"abc"_s, u"abd"_s, u"abacbd"_s, 0},
      {u"aab"_s, u"aac"_s, u"aaaacb"_s, 0},
      {u"😀b"_s, u"é"_s, u"😀éb"_s, 0},
      {u"abc"_s, u"xy"_s, u"axbycc"_s, 1},   // doubled
      {u"abc"_s, u"xy"_s, u"axbc"_s, 1},     // lost
      {u"abc"_s, u"xy"_s, u"axByc"_s, 1},    // a capital
      {u"abc"_s, u"xy"_s, u"aybxc"_s, 2},    // out of order
      {u"abc"_s, u"xy"_s, u""_s, 5},         // nothing
      {u""_s, u""_s, u"xyz"_s, 3},           // from nowhere
      {u"abc"_s, u"abc"_s, u"aabbcb"_s, 1},  // a letter of one in the place of another
  };
  for (const Row& row : table) {
    const std::string what = row.actual.toStdString();
    EXPECT_EQ(interleavingDistance(row.one, row.other, row.actual), row.distance) << what;
    EXPECT_EQ(isInterleaving(row.one, row.other, row.actual), row.distance == 0) << what;
    EXPECT_EQ(firstBreach(row.one, row.other, row.actual).empty(), row.distance == 0) << what;
  }
  EXPECT_EQ(interleavingDistance(plainText(300), QString(20, u'a'), plainText(300).mid(40)), 60);
}

TEST(TheFirstBreach, tellsWhatWasToComeAndWhatCame) {
  EXPECT_EQ(firstBreach(u"abc"_s, u"xy"_s, u"axbXc"_s),
            "after 2 injected and 1 typed characters: \"c\" was to be injected and \"y\" typed, "
            "found \"Xc\" behind \"axbXc\" (5 characters expected, 5 found)");
}

// How the keyboard of a hand that makes `moves` sees it: characters are key codes, with Shift so
// many more.
std::vector<int> typedBy(const std::vector<KeyMove>& moves, xcb_keycode_t shiftKey) {
  std::vector<int> typed;
  std::set<xcb_keycode_t> down;
  for (const KeyMove& move : moves) {
    EXPECT_EQ(down.contains(move.key), !move.down) << "a key goes where it is";
    EXPECT_EQ(move.isModifier, move.key == shiftKey);
    if (move.down && !move.isModifier)
      typed.push_back(move.key + (down.contains(shiftKey) ? 1000 : 0));
    if (move.down) {
      down.insert(move.key);
    } else {
      down.erase(move.key);
    }
  }
  EXPECT_TRUE(down.empty());
  return typed;
}

TEST(TheMovesOfAFluentHand, typeTheStrokesInTheirOrderUnderTheRightShift) {
  constexpr xcb_keycode_t shiftKey = 50;
  std::mt19937 random(1);
  std::uniform_int_distribution<int> anyKey(1, 6);
  for (const int interval : {40, 80, 120}) {
    std::vector<KeyStroke> strokes;
    std::vector<int> wanted;
    for (int count = 0; count < 500; ++count) {
      const auto key = static_cast<xcb_keycode_t>(anyKey(random));
      const bool shift = anyKey(random) > 3;
      strokes.push_back({.key = key, .shift = shift});
      wanted.push_back(key + (shift ? 1000 : 0));
    }
    const auto moves = movesFor(strokes, shiftKey, {std::chrono::milliseconds(interval)}, random);
    EXPECT_EQ(typedBy(moves, shiftKey), wanted) << interval;
    const auto length = std::chrono::duration_cast<std::chrono::milliseconds>(moves.back().at);
    EXPECT_NEAR(static_cast<double>(length.count()), 500.0 * interval, 50.0 * interval);
  }
}

}  // namespace
}  // namespace zarvy::e2e
