#include <gtest/gtest.h>

#include "ui/screenshots/DesktopTheme.h"
#include "ui/style/Fonts.h"
#include "ui/style/Ink.h"
#include "ui/style/Tones.h"

namespace zarvy {
namespace {

QPalette paletteOf(const QColor& window, const QColor& text) {
  QPalette palette(window);
  palette.setColor(QPalette::Window, window);
  palette.setColor(QPalette::Base, window);
  palette.setColor(QPalette::WindowText, text);
  palette.setColor(QPalette::Text, text);
  palette.setColor(QPalette::Highlight, QColor(0x30, 0x8C, 0xC6));
  return palette;
}

TEST(Tones, CanBeReadInALightAndInADarkPalette) {
  for (const QPalette& palette :
       {paletteOf(Qt::white, Qt::black), paletteOf({30, 30, 32}, Qt::white),
        paletteOf(Qt::black, Qt::white), desktopPalette(QStringLiteral("light")),
        desktopPalette(QStringLiteral("dark"))}) {
    for (const auto role : {QPalette::Window, QPalette::Base}) {
      const QColor ground = palette.color(role);
      EXPECT_GE(contrastBetween(inkOn(meaning::required, palette, ground), ground), 4.5);
      EXPECT_GE(contrastBetween(inkOn(meaning::success, palette, ground), ground), 4.5);
      EXPECT_GE(contrastBetween(accentColor(palette, ground), ground), 4.5);
      EXPECT_GE(contrastBetween(secondaryColor(palette, ground), ground), 4.5);
      EXPECT_GE(contrastBetween(tertiaryColor(palette, ground), ground), 4.5);
    }
  }
}

TEST(Tones, AreThoseOfTheWindowThatHasTheKeyboard) {
  const QPalette plain = desktopPalette(QStringLiteral("light"));
  QPalette fading = plain;
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::Highlight}) {
    fading.setColor(QPalette::Inactive, role, Qt::magenta);
  }
  fading.setCurrentColorGroup(QPalette::Inactive);
  const QColor ground = Qt::white;
  EXPECT_EQ(inkOn(meaning::required, fading, ground), inkOn(meaning::required, plain, ground));
  EXPECT_EQ(accentColor(fading, ground), accentColor(plain, ground));
  EXPECT_EQ(secondaryColor(fading, ground), secondaryColor(plain, ground));
  EXPECT_EQ(tertiaryColor(fading, ground), tertiaryColor(plain, ground));
  EXPECT_EQ(separatorColor(fading), separatorColor(plain));
}

TEST(Tones, LeaveAColorThatCanBeReadAsItIs) {
  const QColor blue(0x10, 0x30, 0xA0);
  EXPECT_EQ(legible(blue, Qt::white, Qt::black), blue);
  EXPECT_NE(legible(blue, Qt::black, Qt::white), blue);
}

TEST(Tones, MeasureContrastAsTheStandardDoes) {
  EXPECT_NEAR(contrastBetween(Qt::white, Qt::black), 21, 0.001);
  EXPECT_NEAR(contrastBetween(Qt::white, Qt::white), 1, 0.001);
  EXPECT_NEAR(contrastBetween(QColor(0x77, 0x77, 0x77), Qt::white), 4.48, 0.01);
}

}  // namespace
}  // namespace zarvy
