#include <gtest/gtest.h>

#include "platform/x11/keyboard/PersonsKeys.h"

namespace zarvy::x11 {
namespace {

constexpr uint16_t fake = 5;
constexpr uint16_t first = 8;
constexpr uint16_t second = 9;
constexpr uint8_t shift = 50;
constexpr uint8_t letter = 38;

KeycodeSet only(uint8_t keycode) {
  KeycodeSet set;
  set.set(keycode);
  return set;
}

TEST(PersonsKeys, KnowsTheKeyboardThatWasTypedOnLast) {
  PersonsKeys keys(fake);
  EXPECT_EQ(keys.lastKeyboard(), fake);
  keys.press(first, letter);
  keys.press(second, letter);
  keys.release(first, letter);
  EXPECT_EQ(keys.lastKeyboard(), second);
}

TEST(PersonsKeys, LeavesAKeyboardThatHasBeenUnplugged) {
  PersonsKeys keys(fake);
  keys.press(first, shift);
  keys.keepKeyboards({fake, first, second});
  EXPECT_EQ(keys.lastKeyboard(), first);
  EXPECT_EQ(keys.held(), only(shift));
  keys.keepKeyboards({fake, second});
  EXPECT_EQ(keys.lastKeyboard(), fake);
  EXPECT_TRUE(keys.held().none());
}

TEST(PersonsKeys, HoldsAKeyForAsLongAsAnyKeyboardDoes) {
  PersonsKeys keys(fake);
  keys.press(first, shift);
  keys.press(second, shift);
  keys.release(first, shift);
  EXPECT_EQ(keys.held(), only(shift));
  keys.release(second, shift);
  EXPECT_TRUE(keys.held().none());
  EXPECT_EQ(keys.presses(), 2U);
  EXPECT_EQ(keys.releases()[shift], 2U);
}

TEST(PersonsKeys, WaitsForNoModifierThatHasOnlyBeenHeld) {
  PersonsKeys keys(fake);
  keys.press(first, shift);
  EXPECT_TRUE(keys.awaitUnused(only(shift), keys.presses()));
  EXPECT_TRUE(keys.awaitUnused(only(letter), 0));
}

TEST(PersonsKeys, WaitsForNothingOnceWaitsAreAbandoned) {
  PersonsKeys keys(fake);
  keys.press(first, shift);
  keys.abandonWaits();
  EXPECT_TRUE(keys.awaitUnused(only(shift), 0));
  EXPECT_FALSE(keys.awaitHeard(only(letter)));
}

TEST(PersonsKeys, KnowsWhatHasBeenHeard) {
  PersonsKeys keys(fake);
  keys.press(second, shift);
  EXPECT_TRUE(keys.awaitHeard(only(shift)));
  EXPECT_FALSE(keys.awaitHeard(only(letter)));
}

}  // namespace
}  // namespace zarvy::x11
