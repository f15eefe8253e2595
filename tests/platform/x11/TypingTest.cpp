// What an application reads of the keys that the adapters post, on a real X server.

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platform/KeyEventPoster.h"
#include "platform/VirtualKey.h"
#include "platform/Workspace.h"
#include "platform/x11/KeyboardDesk.h"
#include "support/QtPrinters.h"

namespace zarvy::x11 {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

const QString mixed = u"Thank you, ÄÖÜ äöü ß @€ «жук» \"~^`´\" ☃ 😀 日本語 x\u0301!"_s;

// The person's hands, as the typing finds them.
enum class Hands { empty, shift, shiftLeftAndRight, altGr, capsLock, numLock, control };

std::string nameOf(Hands hands) {
  switch (hands) {
    case Hands::empty:
      return "with_nothing_held";
    case Hands::shift:
      return "with_Shift_held";
    case Hands::shiftLeftAndRight:
      return "with_both_Shifts_held";
    case Hands::altGr:
      return "with_AltGr_held";
    case Hands::capsLock:
      return "under_Caps_Lock";
    case Hands::numLock:
      return "under_Num_Lock";
    case Hands::control:
      return "with_Control_held";
  }
  return {};
}

void layHands(Hands hands, e2e::Person& person, e2e::Body body) {
  if (hands == Hands::shift || hands == Hands::shiftLeftAndRight) {
    person.press(XKB_KEY_Shift_L, body);
  }
  if (hands == Hands::shiftLeftAndRight) person.press(XKB_KEY_Shift_R, body);
  if (hands == Hands::altGr) person.press(XKB_KEY_ISO_Level3_Shift, body);
  if (hands == Hands::control) person.press(XKB_KEY_Control_L, body);
  if (hands == Hands::capsLock) person.tap(XKB_KEY_Caps_Lock, {.body = body});
  if (hands == Hands::numLock) person.tap(XKB_KEY_Num_Lock, {.body = body});
}

using Case = std::tuple<std::string, Hands, e2e::Body>;

class Typing : public testing::TestWithParam<Case> {};

TEST_P(Typing, WritesTheTextAndLeavesTheKeyboardAsItWas) {
  const auto& [layouts, hands, body] = GetParam();
  KeyboardDesk desk({.layouts = layouts});
  layHands(hands, desk.person(), body);
  desk.letAdaptersCatchUp();
  const e2e::KeyboardState before = desk.keyboard();
  desk.type(mixed);
  EXPECT_EQ(desk.witness().text(), mixed);
  if (body == e2e::Body::serverKeyboard) {
    EXPECT_EQ(desk.keyboard().heldKeys, before.heldKeys) << "what is still held is down again";
  }
  desk.person().releaseAll();
  desk.letAdaptersCatchUp();
  EXPECT_EQ(desk.keyboard().heldModifiers, 0U);
  EXPECT_EQ(desk.keyboard().heldKeys, "");
  EXPECT_EQ(desk.keyboard().lockedModifiers, before.lockedModifiers);
}

INSTANTIATE_TEST_SUITE_P(Keyboards, Typing,
                         testing::Combine(testing::Values("us", "de", "fr", "ru,us", "jp"),
                                          testing::Values(Hands::empty, Hands::shift,
                                                          Hands::capsLock),
                                          testing::Values(e2e::Body::serverKeyboard)),
                         [](const auto& row) {
                           const auto& layouts = std::get<0>(row.param);
                           return layouts.substr(0, layouts.find(',')) + "_" +
                                  nameOf(std::get<1>(row.param));
                         });

INSTANTIATE_TEST_SUITE_P(
    Hands, Typing,
    testing::Combine(testing::Values("de"),
                     testing::Values(Hands::shift, Hands::shiftLeftAndRight, Hands::altGr,
                                     Hands::numLock, Hands::control),
                     testing::Values(e2e::Body::xtest, e2e::Body::serverKeyboard)),
    [](const auto& row) {
      return nameOf(std::get<1>(row.param)) +
             (std::get<2>(row.param) == e2e::Body::xtest ? "_by_XTEST" : "_physically");
    });

TEST(TypingKeys, PressesKeysByTheirPlace) {
  KeyboardDesk desk({.layouts = "fr"});
  {
    const auto typing = desk.session().keyEventPoster().beginTyping(u"abc"_s);
    EXPECT_TRUE(typing->pressText(u"abc"));
    EXPECT_TRUE(typing->pressKey(virtualkey::deleteBackward));
    EXPECT_TRUE(typing->pressKey(virtualkey::returnKey));
    EXPECT_FALSE(typing->pressKey(9999));
  }
  EXPECT_EQ(desk.witness().text(), u"ab\r"_s);
}

// The adapters hear of the new layout some time after it is in force.
TEST(TypingKeys, FollowsALayoutThatChangesBetweenTwoRuns) {
  KeyboardDesk desk({.layouts = "us"});
  const QString run = u"zy@\\\"{ÄжΩ~-;"_s;
  QString expected = run;
  const auto typing = desk.session().keyEventPoster().beginTyping(run.repeated(7));
  EXPECT_TRUE(typing->pressText(run));
  for (const char* layouts : {"de", "fr", "ru,us", "jp", "us", "de"}) {
    static_cast<void>(desk.session().workspace().frontmostApplication());
    EXPECT_EQ(desk.witness().text(), expected);
    SCOPED_TRACE(layouts);
    desk.changeLayout({.layouts = layouts});
    EXPECT_TRUE(typing->pressText(run));
    expected += run;
  }
  static_cast<void>(desk.session().workspace().frontmostApplication());
  EXPECT_EQ(desk.witness().text(), expected);
}

TEST(TypingKeys, TypesALetterWhoseKeyThePersonStillHolds) {
  for (const auto body : {e2e::Body::xtest, e2e::Body::serverKeyboard}) {
    KeyboardDesk desk({.layouts = "us"});
    desk.person().type(u"y"_s, {.body = body, .keepLastKeyDown = true});
    desk.type(u"yes, my yeoman"_s);
    desk.person().releaseAll();
    desk.type(u"y"_s);
    EXPECT_EQ(desk.witness().text(), u"yyes, my yeomany"_s);
  }
}

TEST(TypingKeys, WritesASurrogatePairThatIsCutBetweenRuns) {
  KeyboardDesk desk({.layouts = "us"});
  desk.type(u"1234567890123456789😀x"_s);
  EXPECT_EQ(desk.witness().text(), u"1234567890123456789😀x"_s);
}

TEST(ScratchKeys, AreChangedOnceForATextAndNotAtAllForTheNext) {
  KeyboardDesk desk({.layouts = "us"});
  desk.type(u"plain"_s);
  const int before = desk.witness().mappingChanges();
  desk.type(u"жук ÄÖÜ 日本"_s);
  const int once = desk.witness().mappingChanges();
  EXPECT_GT(once, before);
  desk.type(u"日本 ÜÖÄ кужук"_s);
  EXPECT_EQ(desk.witness().mappingChanges(), once);
}

TEST(ScratchKeys, AreFilledAheadOfNeed) {
  KeyboardDesk desk({.layouts = "us"});
  desk.type(u"plain"_s);
  desk.session().keyEventPoster().prepare(u"жukÄ日"_s);
  const int changes = desk.witness().mappingChanges();
  desk.type(u"Äж日"_s);
  EXPECT_EQ(desk.witness().text(), u"plainÄж日"_s);
  EXPECT_EQ(desk.witness().mappingChanges(), changes);
}

TEST(ScratchKeys, AreFilledBehindTheKeysThatComeAheadOfTheText) {
  KeyboardDesk desk({.layouts = "us"});
  desk.type(u"plain"_s);
  const int before = desk.witness().mappingChanges();
  const auto typing = desk.session().keyEventPoster().beginTyping(u"жук"_s);
  for (int key = 0; key < 5; ++key) EXPECT_TRUE(typing->pressKey(virtualkey::deleteBackward));
  EXPECT_EQ(desk.witness().text(), QString());
  EXPECT_EQ(desk.witness().mappingChanges(), before);
  EXPECT_TRUE(typing->pressText(u"жук"));
  EXPECT_EQ(desk.witness().text(), u"жук"_s);
  EXPECT_GT(desk.witness().mappingChanges(), before);
}

TEST(ScratchKeys, AreGivenBackAtTheEnd) {
  for (const std::string layouts : {"us", "de", "ru,us"}) {
    KeyboardDesk desk({.layouts = layouts});
    const e2e::MappingDump before = desk.mapping();
    desk.type(mixed);
    EXPECT_NE(desk.mapping().symbols, before.symbols);
    desk.closeSession();
    EXPECT_EQ(desk.mapping().symbols, before.symbols);
    EXPECT_EQ(desk.mapping().keyboard, before.keyboard);
  }
}

TEST(ScratchKeys, SurviveANewLayout) {
  KeyboardDesk desk({.layouts = "us"});
  desk.type(u"äжx"_s);
  EXPECT_EQ(desk.witness().text(), u"äжx"_s);
  desk.changeLayout({.layouts = "de"});
  desk.letAdaptersCatchUp();
  desk.type(u"äжyz日"_s);
  EXPECT_EQ(desk.witness().text(), u"äжxäжyz日"_s);
  const e2e::MappingDump before = desk.mapping();
  desk.closeSession();
  EXPECT_NE(desk.mapping().symbols, before.symbols);
  desk.changeLayout({.layouts = "de"});
  const e2e::MappingDump untouched = desk.mapping();
  desk.openSession();
  desk.type(u"ж"_s);
  desk.closeSession();
  EXPECT_EQ(desk.mapping().keyboard, untouched.keyboard);
}

TEST(TypingBadInput, KeepsWhatCanBeTyped) {
  KeyboardDesk desk({.layouts = "us"});
  const QString text = u"a"_s + QChar(u'\xd83d') + u"b"_s + QChar(0) + u"c\rd"_s;
  desk.type(text);
  EXPECT_EQ(desk.witness().text(), u"a\ufffdbc\rd"_s);
}

TEST(TypingBadInput, TypesACarriageReturnAndALineFeedAsOneLineBreak) {
  KeyboardDesk desk({.layouts = "us"});
  {
    const auto typing = desk.session().keyEventPoster().beginTyping(u"a\r\nb"_s);
    EXPECT_TRUE(typing->pressText(u"a\r"));
    EXPECT_TRUE(typing->pressKey(virtualkey::returnKey));
    EXPECT_TRUE(typing->pressText(u"b"));
  }
  desk.type(u"c"_s);
  EXPECT_EQ(desk.witness().text(), u"a\rbc"_s);
}

TEST(TypingBadInput, EndsWithoutHalfACharacterWhereItIsCutShort) {
  KeyboardDesk desk({.layouts = "us"});
  {
    const auto typing = desk.session().keyEventPoster().beginTyping(u"a😀b"_s);
    EXPECT_TRUE(typing->pressText(u"a\xd83d"));
  }
  desk.type(u"c"_s);
  EXPECT_EQ(desk.witness().text(), u"ac"_s);
}

TEST(TypingEnd, StopsSessionsThatAreUnderWayAtOnce) {
  KeyboardDesk desk({.layouts = "us"});
  const auto typing = desk.session().keyEventPoster().beginTyping(u"text"_s);
  desk.session().abandonTyping();
  EXPECT_FALSE(typing->pressText(u"text"));
  EXPECT_FALSE(typing->pressKey(virtualkey::returnKey));
  EXPECT_EQ(desk.witness().text(), u""_s);
}

TEST(TypingBadInput, RefusesWhereTheDisplayHasGone) {
  KeyboardDesk desk({.layouts = "us"});
  const auto typing = desk.session().keyEventPoster().beginTyping(u"text"_s);
  desk.server().kill();
  EXPECT_TRUE(desk.connectionLost());
  EXPECT_FALSE(typing->pressText(u"text"));
  EXPECT_FALSE(typing->pressKey(virtualkey::returnKey));
}

}  // namespace
}  // namespace zarvy::x11
