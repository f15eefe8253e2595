// Keyboards that are not set up as most are, on a real X server.

#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <xcb/xtest.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include "e2e/harness/Xkb.h"
#include "platform/KeyEventPoster.h"
#include "platform/VirtualKey.h"
#include "platform/x11/KeyboardDesk.h"
#include "platform/x11/connection/Connection.h"
#include "platform/x11/keyboard/KeymapSnapshot.h"

namespace zarvy::x11 {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

const QString mixed = u"Lazy Quiz; ÄÖÜ @€ «жук» \"~^`\" ☃ 日本!"_s;
constexpr e2e::TypingStyle byHardware{.body = e2e::Body::serverKeyboard, .interval = 2ms};

// What the person's keyboard is mapped to, and what the keyboard for faked keys is.
std::vector<std::string> mappingsOfBothKeyboards(KeyboardDesk& desk) {
  std::vector<std::string> mappings;
  for (const auto body : {e2e::Body::serverKeyboard, e2e::Body::xtest}) {
    desk.person().tap(XKB_KEY_Escape, {.body = body, .interval = 2ms});
    const e2e::MappingDump mapping = desk.mapping();
    mappings.push_back(mapping.symbols + mapping.keyboard);
  }
  return mappings;
}

// The layout of the person's keyboard, while that of every other keyboard is American.
class KeyboardOfItsOwnLayout : public testing::TestWithParam<std::string> {};

TEST_P(KeyboardOfItsOwnLayout, IsHeardByItAndTypedForByTheOther) {
  KeyboardDesk desk({.layouts = "us"});
  desk.changePersonsLayout(GetParam());
  const QString typed = GetParam() == "ru" ? u"жук"_s : u"zya"_s;
  QString expected;
  for (int round = 0; round < 2; ++round) {
    // A key of the person's makes the person's layout the one in force.
    desk.letAdaptersCatchUp(e2e::Body::serverKeyboard);
    desk.person().type(typed, byHardware);
    desk.letAdaptersCatchUp(e2e::Body::serverKeyboard);
    expected += typed;
    EXPECT_EQ(desk.witness().text().toStdString(), expected.toStdString());
    // First what most layouts have, each elsewhere, so that no scratch key comes into it.
    const QString text = round == 0 ? u"Lazy Quiz"_s : mixed;
    desk.type(text);
    expected += text;
    EXPECT_EQ(desk.witness().text().toStdString(), expected.toStdString());
  }
  EXPECT_EQ(desk.heardText(static_cast<std::size_t>(2 * typed.size())).left(typed.size()), typed);
}

TEST_P(KeyboardOfItsOwnLayout, KeepsItAndLeavesTheOthersTheirs) {
  KeyboardDesk desk({.layouts = "us"});
  desk.changePersonsLayout(GetParam());
  const std::vector<std::string> before = mappingsOfBothKeyboards(desk);
  ASSERT_NE(before.front(), before.back());
  desk.type(mixed);
  EXPECT_EQ(desk.witness().text(), mixed);
  desk.letAdaptersCatchUp(e2e::Body::serverKeyboard);
  desk.type(mixed);
  EXPECT_EQ(desk.witness().text(), mixed + mixed);
  desk.closeSession();
  EXPECT_TRUE(mappingsOfBothKeyboards(desk) == before);
}

INSTANTIATE_TEST_SUITE_P(Of, KeyboardOfItsOwnLayout, testing::Values("de", "fr", "ru"),
                         [](const auto& row) { return row.param; });

TEST(KeyboardsOfTheirOwn, KeepTheKeysThatOnlyTheOthersHaveSpare) {
  KeyboardDesk desk({.layouts = "us"});
  desk.changePersonsLayout("br");  // writes a slash where others have a scratch key
  const std::vector<std::string> before = mappingsOfBothKeyboards(desk);
  desk.type(mixed);
  EXPECT_EQ(desk.witness().text(), mixed);
  desk.letAdaptersCatchUp(e2e::Body::serverKeyboard);
  desk.person().type(u"/a"_s, byHardware);
  EXPECT_EQ(desk.witness().text(), mixed + u"/a"_s);
  desk.closeSession();
  EXPECT_TRUE(mappingsOfBothKeyboards(desk) == before);
}

// A user of a keyboard without them takes them away from an application that lags behind.
TEST(KeyboardsOfTheirOwn, GetTheScratchKeysTooWhereTheyHaveLostThem) {
  KeyboardDesk desk({.layouts = "us"});
  desk.type(mixed);
  EXPECT_EQ(desk.witness().text(), mixed);
  desk.changePersonsLayout("de");
  const std::vector<std::string> without = mappingsOfBothKeyboards(desk);
  desk.letAdaptersCatchUp(e2e::Body::serverKeyboard);
  desk.type(mixed);
  EXPECT_EQ(desk.witness().text(), mixed + mixed);
  EXPECT_NE(mappingsOfBothKeyboards(desk).front(), without.front());
  desk.closeSession();
  EXPECT_EQ(mappingsOfBothKeyboards(desk).front(), without.front());
}

// xkbcomp writes a key without symbols only where it has something else.
const std::string symbolsOfEscape = "    key  <ESC> {";

TEST(ScratchKeysOfOddKeymaps, AreNotThoseThatDoSomethingWithoutWritingAnything) {
  KeyboardDesk desk({.layouts = "us"});
  desk.closeSession();
  desk.changeKeymap(
      {{symbolsOfEscape,
        "    key <I120> { [ NoSymbol ], actions[Group1]= [ LockGroup(group=1) ] };\n" +
            symbolsOfEscape}});
  const e2e::MappingDump before = desk.mapping();
  ASSERT_NE(before.keyboard.find("actions"), std::string::npos);
  desk.openSession();
  desk.type(mixed);
  EXPECT_EQ(desk.witness().text(), mixed);
  desk.closeSession();
  EXPECT_TRUE(desk.mapping().keyboard == before.keyboard);
}

TEST(ScratchKeysOfOddKeymaps, AreNotThoseThatHaveBeenGivenAMeaningMeanwhile) {
  KeyboardDesk desk({.layouts = "us"});
  desk.type(u"ж"_s);
  EXPECT_EQ(desk.witness().text(), u"ж"_s);
  constexpr xcb_keycode_t macroKey = 120;
  constexpr xcb_keysym_t function = XKB_KEY_F13;
  xcb_connection_t* xcb = desk.connection().get();
  xcb_change_keyboard_mapping(xcb, 1, macroKey, 1, &function);
  desk.letAdaptersCatchUp();
  const QString text = u"ÄÖÜäöüабвгдежзийклмнопрст"_s;
  desk.type(text);
  EXPECT_EQ(desk.witness().text(), u"ж"_s + text);
  desk.closeSession();
  const auto mapping = e2e::owned(
      xcb_get_keyboard_mapping_reply(xcb, xcb_get_keyboard_mapping(xcb, macroKey, 1), nullptr));
  ASSERT_TRUE(mapping);
  EXPECT_EQ(*xcb_get_keyboard_mapping_keysyms(mapping.get()), function);
}

// Ways to lock what text depends on, and options under which Caps Lock does more or less than
// usual.
struct LockRow {
  std::string name;
  std::string options;
  std::uint8_t lockedModifiers = 0;
};

class LockedModifiers : public testing::TestWithParam<LockRow> {};

TEST_P(LockedModifiers, DoNotChangeTheTextAndAreLockedAgainAfterwards) {
  for (const std::string layouts : {"us", "de"}) {
    KeyboardDesk desk({.layouts = layouts, .options = GetParam().options});
    const std::uint8_t locked = GetParam().lockedModifiers;
    xcb_xkb_latch_lock_state(desk.connection().get(), XCB_XKB_ID_USE_CORE_KBD, locked, locked, 0, 0,
                             0, 0, 0);
    desk.connection().synchronise();
    ASSERT_EQ(desk.keyboard().lockedModifiers, locked);
    desk.type(mixed);
    EXPECT_EQ(desk.witness().text().toStdString(), mixed.toStdString()) << layouts;
    EXPECT_EQ(desk.keyboard().lockedModifiers, locked);
  }
}

INSTANTIATE_TEST_SUITE_P(
    On, LockedModifiers,
    testing::Values(
        LockRow{"Shift", "caps:shiftlock", XCB_MOD_MASK_SHIFT},
        LockRow{"LevelThree", "", XCB_MOD_MASK_5},
        LockRow{"ShiftAndCaps", "", XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_LOCK},
        LockRow{"Control", "", XCB_MOD_MASK_CONTROL}, LockRow{"Alt", "", XCB_MOD_MASK_1},
        LockRow{"CapsByTheApplication", "caps:internal", XCB_MOD_MASK_LOCK},
        LockRow{"CapsByTheApplicationUncancelled", "caps:internal_nocancel", XCB_MOD_MASK_LOCK},
        LockRow{"CapsAsShift", "caps:shift", XCB_MOD_MASK_LOCK},
        LockRow{"CapsAsShiftUncancelled", "caps:shift_nocancel", XCB_MOD_MASK_LOCK},
        LockRow{"CapsCancelledByBothShifts", "shift:both_capslock_cancel", XCB_MOD_MASK_LOCK}),
    [](const auto& row) { return row.param.name; });

// BackSpace and Caps Lock, or Return and a letter, have changed places.
const std::vector<KeyboardDesk::Replacement> backSpaceSwappedWithCapsLock = {
    {"key <BKSP> {         [       BackSpace,       BackSpace ] };",
     "key <BKSP> {         [       Caps_Lock ] };"},
    {"key <CAPS> {         [       Caps_Lock ] };", "key <CAPS> {         [       BackSpace ] };"},
    {"modifier_map Lock { <CAPS> };", "modifier_map Lock { <BKSP> };"}};

TEST(MovedFunctionKeys, AreTypedWhereTheyAre) {
  KeyboardDesk desk({.layouts = "us"});
  desk.changeKeymap(backSpaceSwappedWithCapsLock);
  desk.letAdaptersCatchUp();
  {
    const auto typing = desk.session().keyEventPoster().beginTyping(u"abc"_s);
    EXPECT_TRUE(typing->pressText(u"abc"));
    EXPECT_TRUE(typing->pressKey(virtualkey::deleteBackward));
    EXPECT_TRUE(typing->pressText(u"d"));
  }
  EXPECT_EQ(desk.witness().text(), u"abd"_s);
  EXPECT_EQ(desk.keyboard().lockedModifiers, 0U);
}

TEST(MovedFunctionKeys, AreHeardAsWhatTheyDo) {
  KeyboardDesk desk({.layouts = "us"});
  desk.changeKeymap(backSpaceSwappedWithCapsLock);
  desk.person().tap(XKB_KEY_BackSpace);
  desk.person().tap(XKB_KEY_Caps_Lock);
  desk.person().tap(XKB_KEY_Return);
  const std::vector<KeyEvent> heard = desk.heard(3);
  EXPECT_EQ(heard[0].keyCode, virtualkey::deleteBackward);
  EXPECT_NE(heard[1].keyCode, virtualkey::deleteBackward);
  EXPECT_EQ(heard[2].keyCode, virtualkey::returnKey);
}

TEST(MovedFunctionKeys, AreHeardUnderShiftToo) {
  KeyboardDesk desk({.layouts = "us"});
  desk.person().press(XKB_KEY_Shift_L);
  desk.person().tap(XKB_KEY_ISO_Left_Tab);
  desk.person().releaseAll();
  EXPECT_EQ(desk.heard(2)[1].keyCode, virtualkey::tab);
}

// What many people make of Caps Lock.
class CapsLockKeyAsControl : public testing::TestWithParam<std::string> {};

TEST_P(CapsLockKeyAsControl, IsReleasedForTheTextAndDownAgainAfterwards) {
  KeyboardDesk desk({.layouts = "us", .options = GetParam()});
  constexpr xcb_keycode_t capsLock = 66;
  xcb_connection_t* xcb = desk.connection().get();
  xcb_test_fake_input(xcb, XCB_KEY_PRESS, capsLock, XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0, 0);
  desk.connection().synchronise();
  ASSERT_EQ(desk.keyboard().heldModifiers, std::uint32_t{XCB_MOD_MASK_CONTROL});
  desk.type(mixed);
  EXPECT_EQ(desk.witness().text(), mixed);
  xcb_test_fake_input(xcb, XCB_KEY_RELEASE, capsLock, XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0, 0);
  desk.letAdaptersCatchUp();
  EXPECT_EQ(desk.keyboard().heldModifiers, 0U);
  EXPECT_EQ(desk.keyboard().lockedModifiers, 0U);
}

INSTANTIATE_TEST_SUITE_P(Options, CapsLockKeyAsControl,
                         testing::Values("ctrl:nocaps", "caps:ctrl_modifier"),
                         [](const auto& row) { return row.param.substr(row.param.find(':') + 1); });

TEST(KeymapsWithoutShift, TypeWhatTheyHaveAndTheRestByOneCharacterAKey) {
  KeyboardDesk desk({.layouts = "us"});
  desk.changeKeymap({{"key <LFSH> {         [         Shift_L ] };", ""},
                     {"key <RTSH> {         [         Shift_R ] };", ""},
                     {"modifier_map Shift { <LFSH> };", ""},
                     {"modifier_map Shift { <RTSH> };", ""}});
  desk.letAdaptersCatchUp();
  const QString text = u"small LETTERS, жук!"_s;
  desk.type(text);
  EXPECT_EQ(desk.witness().text(), text);
}

// The degree sign is above a dead key there.
TEST(KeymapOfGermany, TypesNothingByADeadKeyWithModifiers) {
  constexpr uint8_t keyOfCircumflex = 49;
  const KeyboardDesk desk({.layouts = "de"});
  QString reason;
  const auto connection = Connection::open(&reason);
  ASSERT_TRUE(connection) << reason.toStdString();
  const auto keymap =
      KeymapSnapshot::read(*connection, static_cast<uint16_t>(connection->coreKeyboard()));
  const auto strokes = keymap->strokes(0, 0, {});
  EXPECT_TRUE(strokes->contains(U'!'));
  for (const auto& [character, stroke] : *strokes) {
    EXPECT_NE(stroke.keycode, keyOfCircumflex) << static_cast<uint32_t>(character);
  }
}

}  // namespace
}  // namespace zarvy::x11
