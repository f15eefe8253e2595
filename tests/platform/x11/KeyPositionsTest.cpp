#include <gtest/gtest.h>

#include "platform/VirtualKey.h"
#include "platform/x11/keyboard/KeyPositions.h"

namespace zarvy::x11 {
namespace {

TEST(KeyPositions, NameThePlacesThatTheProgramActsOn) {
  EXPECT_EQ(virtualKeyOfPosition("RTRN"), virtualkey::returnKey);
  EXPECT_EQ(virtualKeyOfPosition("TAB"), virtualkey::tab);
  EXPECT_EQ(virtualKeyOfPosition("SPCE"), virtualkey::space);
  EXPECT_EQ(virtualKeyOfPosition("BKSP"), virtualkey::deleteBackward);
  EXPECT_EQ(virtualKeyOfPosition("ESC"), virtualkey::escape);
  EXPECT_EQ(virtualKeyOfPosition("LEFT"), virtualkey::leftArrow);
  EXPECT_EQ(virtualKeyOfPosition("RGHT"), virtualkey::rightArrow);
  EXPECT_EQ(virtualKeyOfPosition("DOWN"), virtualkey::downArrow);
  EXPECT_EQ(virtualKeyOfPosition("UP"), virtualkey::upArrow);
}

TEST(KeyPositions, KeepTheKeypadsEnterAndForwardDeleteApartFromTheirNamesakes) {
  EXPECT_EQ(virtualKeyOfPosition("KPEN"), 76);
  EXPECT_EQ(virtualKeyOfPosition("DELE"), 117);
}

TEST(KeyPositions, KnowNothingOfOtherNames) {
  EXPECT_EQ(virtualKeyOfPosition("I151"), std::nullopt);
  EXPECT_EQ(virtualKeyOfPosition(""), std::nullopt);
}

TEST(KeyPositions, TellHowRareAKeyIs) {
  EXPECT_EQ(rarityOfPosition(""), KeyRarity::nowhere);
  EXPECT_EQ(rarityOfPosition("I120"), KeyRarity::exceptional);
  EXPECT_EQ(rarityOfPosition("AB11"), KeyRarity::somewhere) << "Brazil has it";
  EXPECT_EQ(rarityOfPosition("INS"), KeyRarity::somewhere);
  EXPECT_EQ(rarityOfPosition("I"), KeyRarity::somewhere);
}

}  // namespace
}  // namespace zarvy::x11
