// What the person's hands hold or have locked while the program types.

#include "e2e/behaviour/BehaviourTest.h"

namespace zarvy::e2e {

using namespace Qt::Literals::StringLiterals;
using std::chrono::milliseconds;

namespace {

const QString mixedText =
    u"Mixed Case and SHOUTING, 0123456789, {[(\"quoted\")]} ~ é Ω ДЖ жд ñ Ñ; eeee EEEE the end"_s;

const std::vector<TestSnippet>& library() {
  static const std::vector<TestSnippet> snippets = {
      {u";ee"_s, mixedText}, {u";;1"_s, mixedText}, {u";zzz"_s, u"no such letter there"_s}};
  return snippets;
}

class HeldKeys : public BehaviourTest, public testing::WithParamInterface<Body> {};

TEST_P(HeldKeys, doNotChangeTheTextWhenCapsLockIsOn) {
  start(TargetKind::qt6, library());
  person().tap(XKB_KEY_Caps_Lock, {.body = GetParam()});
  person().type(u";ee"_s, {.body = GetParam()});
  expectText(mixedText);
  person().type(u" ;;1"_s, {.body = GetParam()});
  expectText(mixedText + u" "_s + mixedText);
  EXPECT_NE(keyboardState(stage().connection()).lockedModifiers & XCB_MOD_MASK_LOCK, 0U);
  person().tap(XKB_KEY_Caps_Lock, {.body = GetParam()});
  EXPECT_EQ(keyboardState(stage().connection()).lockedModifiers, 0U);
  expectExpansions(2);
  expectNothingHeld();
}

TEST_P(HeldKeys, doNotChangeTheTextWhenNumLockIsOn) {
  start(TargetKind::qt6, library());
  person().tap(XKB_KEY_Num_Lock, {.body = GetParam()});
  const auto locked = keyboardState(stage().connection()).lockedModifiers;
  ASSERT_NE(locked, 0U);
  person().type(u";ee"_s, {.body = GetParam()});
  expectText(mixedText);
  EXPECT_EQ(keyboardState(stage().connection()).lockedModifiers, locked);
  expectNothingHeld();
}

TEST_P(HeldKeys, mayBeTheLastKeyOfTheTriggerThoughTheTextHasThatLetter) {
  start(TargetKind::qt6, library());
  setAutorepeat(stage().connection(), 60000, 60000);
  person().type(u";ee"_s, {.body = GetParam(), .keepLastKeyDown = true});
  expectText(mixedText);
  person().releaseAll();
  person().type(u"e"_s, {.body = GetParam()});
  expectText(mixedText + u"e"_s);
  expectExpansions(1);
  expectNothingHeld();
}

TEST_P(HeldKeys, areWaitedForWhenControlGoesDownWithTheLastKeyAndUpAgainSoon) {
  start(TargetKind::qt6, library());
  person().type(u";ee"_s, {.body = GetParam(), .heldFromThen = XKB_KEY_Control_L});
  expectExpansions(1);
  person().releaseAll();
  expectText(mixedText);
  person().type(u"e"_s, {.body = GetParam()});
  expectText(mixedText + u"e"_s);
  expectNothingHeld();
}

TEST_P(HeldKeys, areReleasedForTheTextAndDownAgainAfterwardsWhenControlStaysDown) {
  start(TargetKind::qt6, library());
  person().type(u";ee"_s, {.body = GetParam(), .heldFromThen = XKB_KEY_Control_L});
  expectText(mixedText);
  person().releaseAll();
  expectNothingHeld();
  person().type(u"e"_s, {.body = GetParam()});
  expectText(mixedText + u"e"_s);
  expectExpansions(1);
}

TEST_P(HeldKeys, areReleasedForTheTextWhenAltStaysDown) {
  start(TargetKind::qt6, library());
  person().type(u";ee"_s, {.body = GetParam(), .heldFromThen = XKB_KEY_Alt_L});
  expectText(mixedText);
  person().releaseAll();
  expectNothingHeld();
  expectExpansions(1);
}

TEST_P(HeldKeys, leaveNoModifierDownWhenShiftIsReleasedInTheMiddleOfTheText) {
  std::vector<TestSnippet> snippets = {{u";eE"_s, mixedText}};
  start(TargetKind::xterm, snippets);
  QString text;
  for (const int late : {0, 5, 10, 20, 40, 80}) {
    person().type(u";eE"_s, {.body = GetParam(), .lateRelease = milliseconds(late)});
    text += mixedText;
    expectText(text);
    expectNothingHeld();
  }
  expectExpansions(6);
}

INSTANTIATE_TEST_SUITE_P(Of, HeldKeys, testing::Values(Body::xtest, Body::serverKeyboard),
                         [](const auto& instance) {
                           return instance.param == Body::xtest ? "TheXtestKeyboard"
                                                                : "TheServersOwnKeyboard";
                         });

class RepeatedKeys : public BehaviourTest {};

TEST_F(RepeatedKeys, completeATriggerOnceAndAreDeletedByCount) {
  start(TargetKind::qt6, library());
  // The pause after each repeat is longer than an expansion takes by far, so that the key can be
  // let go before the next.
  setAutorepeat(stage().connection(), 300, 3000);
  person().type(u";z"_s, {.body = Body::serverKeyboard, .keepLastKeyDown = true});
  ASSERT_TRUE(target().waitForState({u";zz"_s, 3}, std::chrono::seconds(20)));
  expectExpansions(1);
  person().releaseAll();
  expectText(u"no such letter there"_s);
  expectNothingHeld();
}

}  // namespace
}  // namespace zarvy::e2e
