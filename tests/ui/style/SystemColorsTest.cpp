#include <set>

#include <gtest/gtest.h>

#include "support/QtPrinters.h"
#include "ui/screenshots/DesktopTheme.h"
#include "ui/style/Ink.h"

namespace zarvy {
namespace {

QList<SystemColor> allColors() {
  QList<SystemColor> all;
  for (int index = 0; index < systemColorCount; ++index) {
    all.append(static_cast<SystemColor>(index));
  }
  return all;
}

QList<QPalette> bothPalettes() {
  return {desktopPalette(QStringLiteral("light")), desktopPalette(QStringLiteral("dark"))};
}

TEST(SystemColors, CanBeToldFromOneAnotherAndFromTheirGround) {
  constexpr double barelySeen = 1.9;  // a yellow that is darker is none
  for (const QPalette& palette : bothPalettes()) {
    std::set<QRgb> seen;
    for (const SystemColor color : allColors()) {
      const QColor shown = systemColor(color, palette);
      seen.insert(shown.rgb());
      for (const auto role : {QPalette::Window, QPalette::Base}) {
        EXPECT_GE(contrastBetween(shown, activeColor(palette, role)), barelySeen)
            << static_cast<int>(color);
      }
    }
    EXPECT_EQ(seen.size(), static_cast<std::size_t>(systemColorCount));
  }
}

TEST(SystemColors, AreThoseOfALightOrOfADarkDesktop) {
  const QList<QPalette> palettes = bothPalettes();
  const QColor onLight = systemColor(SystemColor::indigo, palettes.first());
  const QColor onDark = systemColor(SystemColor::indigo, palettes.last());
  EXPECT_GT(onDark.lightness(), onLight.lightness());
}

TEST(SystemColors, AreMovedTowardsTheTextAsFarAsTheyHaveTo) {
  for (const QPalette& palette : bothPalettes()) {
    const QColor ground = activeColor(palette, QPalette::Window);
    for (const SystemColor color : allColors()) {
      EXPECT_GE(contrastBetween(inkOn(color, palette, ground), ground), textContrast);
      EXPECT_GE(contrastBetween(inkOn(color, palette, ground, lineContrast), ground), lineContrast);
    }
  }
  const QPalette dark = bothPalettes().last();
  EXPECT_EQ(inkOn(SystemColor::mint, dark, activeColor(dark, QPalette::Window)),
            systemColor(SystemColor::mint, dark));
}

TEST(SystemColors, AreWhatTextIsWrittenInByItsLevel) {
  const QPalette palette = bothPalettes().first();
  const QColor ground = activeColor(palette, QPalette::Base);
  EXPECT_EQ(inkOn(TextColor::primary, palette, ground), activeColor(palette, QPalette::WindowText));
  EXPECT_EQ(inkOn(TextColor::secondary, palette, ground), secondaryColor(palette, ground));
  EXPECT_EQ(inkOn(TextColor::tertiary, palette, ground), tertiaryColor(palette, ground));
  EXPECT_EQ(inkOn(TextColor::accent, palette, ground), accentColor(palette, ground));
}

TEST(SystemColors, StandForTheColorsOfFolders) {
  std::set<SystemColor> tints;
  for (const FolderColor color : allFolderColors) tints.insert(tintOf(color));
  EXPECT_EQ(tints.size(), allFolderColors.size());
  EXPECT_EQ(tintOf(FolderColor::red), SystemColor::red);
  EXPECT_EQ(tintOf(FolderColor::gray), SystemColor::gray);
}

}  // namespace
}  // namespace zarvy
