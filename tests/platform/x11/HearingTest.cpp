// What the adapters hear of a person's keys, on a real X server.

#include <array>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <xcb/xtest.h>

#include "platform/ModifierFlags.h"
#include "platform/SyntheticEvent.h"
#include "platform/VirtualKey.h"
#include "platform/x11/KeyboardDesk.h"

namespace zarvy::x11 {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

struct LayoutRow {
  std::string layouts;
  QString typed;
};

class HearingOnLayout : public testing::TestWithParam<LayoutRow> {};

TEST_P(HearingOnLayout, GivesTheCharactersThatThePersonTypes) {
  for (const auto body : {e2e::Body::xtest, e2e::Body::serverKeyboard}) {
    KeyboardDesk desk({.layouts = GetParam().layouts});
    const QString& typed = GetParam().typed;
    desk.person().type(typed, {.body = body, .interval = 2ms});
    desk.letAdaptersCatchUp();
    EXPECT_EQ(desk.heardText(static_cast<std::size_t>(typed.size())), typed);
  }
}

INSTANTIATE_TEST_SUITE_P(Layouts, HearingOnLayout,
                         testing::Values(LayoutRow{"us", u";sig Hello, World! {x}~|"_s},
                                         LayoutRow{"de", u"äöüÄß;Zy@€{[]}\\~|µ"_s},
                                         LayoutRow{"fr", u"éèàç;1234azertyAZ@#{"_s},
                                         LayoutRow{"ru,us", u"ЖукжукЁё.,"_s},
                                         LayoutRow{"jp", u";ty@[]:\"^"_s}),
                         [](const auto& row) {
                           return row.param.layouts.substr(0, row.param.layouts.find(','));
                         });

TEST(Hearing, FollowsTheLayoutGroupThatThePersonChooses) {
  KeyboardDesk desk({.layouts = "ru,us"});
  e2e::lockGroup(desk.connection(), 1);
  desk.person().type(u";ty"_s, {.interval = 2ms});
  e2e::lockGroup(desk.connection(), 0);
  desk.person().type(u"жук"_s, {.interval = 2ms});
  EXPECT_EQ(desk.heardText(6), u";tyжук"_s);
}

TEST(Hearing, FollowsANewLayout) {
  KeyboardDesk desk({.layouts = "us"});
  desk.person().type(u";z"_s, {.interval = 2ms});
  desk.changeLayout({.layouts = "de"});
  desk.person().type(u"üz"_s, {.interval = 2ms});
  EXPECT_EQ(desk.heardText(4), u";züz"_s);
}

// Which may have moved the caret.
TEST(Hearing, HasWhatWasTypedForgottenAtAClickButNotWhileScrolling) {
  KeyboardDesk desk({.layouts = "us"});
  const auto pressButton = [&](uint8_t button) {
    for (const uint8_t type : {uint8_t{XCB_BUTTON_PRESS}, uint8_t{XCB_BUTTON_RELEASE}}) {
      xcb_test_fake_input(desk.connection().get(), type, button, XCB_CURRENT_TIME, XCB_WINDOW_NONE,
                          0, 0, 0);
    }
    desk.connection().synchronise();
  };
  desk.person().type(u"a"_s, {.interval = 2ms});
  for (uint8_t wheel = 4; wheel <= 7; ++wheel) pressButton(wheel);
  desk.person().type(u"s"_s, {.interval = 2ms});
  pressButton(1);
  desk.person().type(u"d"_s, {.interval = 2ms});
  std::vector<quint16> keys;
  for (const KeyEvent& event : desk.heard(4)) keys.push_back(event.keyCode);
  EXPECT_EQ(keys, (std::vector<quint16>{0, 1, KeyboardDesk::forgetting, 2}));
}

TEST(Hearing, NamesKeysByTheirPlaceAndModifiersByTheirFlags) {
  KeyboardDesk desk({.layouts = "de"});
  desk.person().press(XKB_KEY_Control_L);
  desk.person().tap(XKB_KEY_y);  // where a US keyboard has z
  desk.person().releaseAll();
  desk.person().press(XKB_KEY_Alt_L);
  desk.person().tap(XKB_KEY_space);
  desk.person().releaseAll();
  const std::vector<KeyEvent> heard = desk.heard(4);
  EXPECT_EQ(heard[1].keyCode, 6);
  EXPECT_EQ(heard[1].modifierFlags, modifier::control);
  EXPECT_EQ(heard[1].charactersIgnoringModifiers, u"y"_s);
  EXPECT_EQ(heard[3].keyCode, virtualkey::space);
  EXPECT_EQ(heard[3].modifierFlags, modifier::option);
}

TEST(Hearing, LeavesCapsLockOutOfTheCharactersButNotOfTheFlags) {
  KeyboardDesk desk({.layouts = "us"});
  desk.person().tap(XKB_KEY_Caps_Lock);
  desk.person().tap(XKB_KEY_a);
  const std::vector<KeyEvent> heard = desk.heard(2);
  EXPECT_EQ(heard[1].charactersIgnoringModifiers, u"a"_s);
  EXPECT_EQ(heard[1].modifierFlags, modifier::capsLock);
}

TEST(Hearing, ComposesDeadKeys) {
  KeyboardDesk desk({.layouts = "de"});
  desk.person().tap(XKB_KEY_dead_acute);
  desk.person().tap(XKB_KEY_e);
  desk.person().tap(XKB_KEY_x);
  const std::vector<KeyEvent> heard = desk.heard(3);
  EXPECT_EQ(heard[0].charactersIgnoringModifiers, std::nullopt);
  EXPECT_EQ(heard[1].charactersIgnoringModifiers, u"é"_s);
  EXPECT_EQ(heard[2].charactersIgnoringModifiers, u"x"_s);
}

TEST(Hearing, ComposesComposeSequences) {
  KeyboardDesk desk({.layouts = "us", .options = "compose:menu"});
  desk.person().tap(XKB_KEY_Multi_key);
  desk.person().tap(XKB_KEY_o);
  desk.person().tap(XKB_KEY_c);
  EXPECT_EQ(desk.heardText(3), u"©"_s);
}

struct KeypadKey {
  const char* name;
  xkb_keysym_t symbol;
  quint16 withoutNumLock;
  quint16 withNumLock;
  QString digit;
};

class HearingOfKeypad : public testing::TestWithParam<KeypadKey> {};

TEST_P(HearingOfKeypad, GivesWhatTheKeyDoesWithNumLockAndWithout) {
  const KeypadKey& key = GetParam();
  KeyboardDesk desk({.layouts = "us"});
  desk.person().tap(key.symbol);
  desk.person().tap(XKB_KEY_Num_Lock);
  desk.person().tap(key.symbol);
  desk.person().press(XKB_KEY_Shift_L);
  desk.person().press(key.symbol);
  desk.person().releaseAll();
  const std::vector<KeyEvent> heard = desk.heard(5);
  for (const std::size_t withoutNumLock : {0U, 4U}) {
    EXPECT_EQ(heard.at(withoutNumLock).keyCode, key.withoutNumLock) << withoutNumLock;
    EXPECT_EQ(heard.at(withoutNumLock).charactersIgnoringModifiers, std::nullopt) << withoutNumLock;
  }
  EXPECT_EQ(heard.at(2).keyCode, key.withNumLock);
  EXPECT_EQ(heard.at(2).charactersIgnoringModifiers, key.digit);
}

INSTANTIATE_TEST_SUITE_P(
    Keys, HearingOfKeypad,
    testing::Values(KeypadKey{"left", XKB_KEY_KP_Left, virtualkey::leftArrow, 86, u"4"_s},
                    KeypadKey{"right", XKB_KEY_KP_Right, virtualkey::rightArrow, 88, u"6"_s},
                    KeypadKey{"up", XKB_KEY_KP_Up, virtualkey::upArrow, 91, u"8"_s},
                    KeypadKey{"down", XKB_KEY_KP_Down, virtualkey::downArrow, 84, u"2"_s},
                    KeypadKey{"home", XKB_KEY_KP_Home, 89, 89, u"7"_s},
                    KeypadKey{"end", XKB_KEY_KP_End, 83, 83, u"1"_s}),
    [](const auto& instance) { return instance.param.name; });

// The application takes it for the end of what was begun, and deletes nothing.
TEST(Hearing, TakesABackSpaceWithinASequenceForNoBackSpace) {
  KeyboardDesk desk({.layouts = "de", .options = "compose:menu"});
  desk.person().tap(XKB_KEY_dead_acute);
  desk.person().tap(XKB_KEY_BackSpace);
  desk.person().tap(XKB_KEY_BackSpace);
  desk.person().tap(XKB_KEY_Multi_key);
  desk.person().tap(XKB_KEY_o);
  desk.person().tap(XKB_KEY_BackSpace);
  desk.person().tap(XKB_KEY_BackSpace);
  desk.person().tap(XKB_KEY_x);
  const std::vector<KeyEvent> heard = desk.heard(8);
  for (const std::size_t within : {1U, 5U}) {
    EXPECT_NE(heard.at(within).keyCode, virtualkey::deleteBackward) << within;
    EXPECT_EQ(heard.at(within).charactersIgnoringModifiers, std::nullopt) << within;
  }
  for (const std::size_t behind : {2U, 6U}) {
    EXPECT_EQ(heard.at(behind).keyCode, virtualkey::deleteBackward) << behind;
  }
  EXPECT_EQ(heard.at(7).charactersIgnoringModifiers, u"x"_s);
}

// It opens a menu or is nothing, on this desktop.
TEST(Hearing, GivesAKeyWithAltNoCharacters) {
  KeyboardDesk desk({.layouts = "us"});
  for (const auto alt : std::array<xkb_keysym_t, 2>{XKB_KEY_Alt_L, XKB_KEY_Alt_R}) {
    desk.person().press(alt);
    desk.person().tap(XKB_KEY_g);
    desk.person().tap(XKB_KEY_Left);
    desk.person().releaseAll();
  }
  desk.person().tap(XKB_KEY_g);
  const std::vector<KeyEvent> heard = desk.heard(7);
  for (const std::size_t withAlt : {1U, 4U}) {
    EXPECT_EQ(heard.at(withAlt).keyCode, 5);
    EXPECT_EQ(heard.at(withAlt).modifierFlags, modifier::option);
    EXPECT_EQ(heard.at(withAlt).charactersIgnoringModifiers, std::nullopt);
    EXPECT_EQ(heard.at(withAlt + 1).keyCode, virtualkey::leftArrow);
  }
  EXPECT_EQ(heard.at(6).charactersIgnoringModifiers, u"g"_s);
}

// The same key is Alt on one layout and AltGr on the other; Alt is told from it by what it holds.
TEST(Hearing, GivesAKeyWithAltGrItsCharacters) {
  KeyboardDesk desk({.layouts = "de"});
  desk.person().press(XKB_KEY_ISO_Level3_Shift);
  desk.person().press(XKB_KEY_q);
  desk.person().releaseAll();
  desk.person().press(XKB_KEY_Alt_L);
  desk.person().press(XKB_KEY_ISO_Level3_Shift);
  desk.person().press(XKB_KEY_q);
  desk.person().releaseAll();
  desk.changeLayout({.layouts = "us", .options = "lv3:lalt_switch"});
  desk.person().press(XKB_KEY_ISO_Level3_Shift);
  desk.person().press(XKB_KEY_a);
  desk.person().releaseAll();
  const std::vector<KeyEvent> heard = desk.heard(7);
  EXPECT_EQ(heard.at(1).charactersIgnoringModifiers, u"@"_s);
  EXPECT_EQ(heard.at(1).modifierFlags, 0U);
  EXPECT_EQ(heard.at(4).charactersIgnoringModifiers, std::nullopt);
  EXPECT_EQ(heard.at(6).charactersIgnoringModifiers, u"a"_s);
}

// Alt takes no part in what a dead key has begun.
TEST(Hearing, LeavesADeadKeyWaitingWhileAltIsUsed) {
  KeyboardDesk desk({.layouts = "de"});
  desk.person().tap(XKB_KEY_dead_acute);
  desk.person().press(XKB_KEY_Alt_L);
  desk.person().tap(XKB_KEY_e);
  desk.person().releaseAll();
  desk.person().tap(XKB_KEY_e);
  const std::vector<KeyEvent> heard = desk.heard(4);
  EXPECT_EQ(heard.at(2).charactersIgnoringModifiers, std::nullopt);
  EXPECT_EQ(heard.at(3).charactersIgnoringModifiers, u"é"_s);
}

TEST(Hearing, HearsAutorepeat) {
  KeyboardDesk desk({.layouts = "us"});
  e2e::setAutorepeat(desk.connection(), 40, 10);
  desk.person().press(XKB_KEY_a, e2e::Body::serverKeyboard);
  EXPECT_TRUE(desk.heardText(5).startsWith(u"aaaaa"_s));
  desk.person().releaseAll();
}

TEST(Hearing, KnowsItsOwnKeysAmongThePersons) {
  KeyboardDesk desk({.layouts = "us"});
  desk.type(u"own"_s);
  desk.person().type(u"foreign"_s, {.interval = 1ms});
  desk.type(u"more"_s);
  desk.letAdaptersCatchUp();
  EXPECT_EQ(desk.heardText(14), u"foreign"_s);
}

TEST(Hearing, SaysWhenTheDisplayGoesAway) {
  KeyboardDesk desk({.layouts = "us"});
  desk.server().kill();
  EXPECT_TRUE(desk.connectionLost());
  EXPECT_FALSE(desk.session().isAlive());
}

}  // namespace
}  // namespace zarvy::x11
