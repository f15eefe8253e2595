// Where Qt takes the palette of its style, as it does without a desktop that has one.

#include <QApplication>
#include <QStyle>
#include <QWidget>

#include <gtest/gtest.h>

#include "ui/style/DesktopColors.h"
#include "ui/style/Tones.h"

namespace zarvy {
namespace {

QColor shown(QPalette::ColorRole role) {
  return QApplication::palette().color(QPalette::Active, role);
}

bool isDarkNow() {
  return shown(QPalette::Window).lightness() < shown(QPalette::WindowText).lightness();
}

class DesktopColorsOfAStyle : public testing::Test {
 protected:
  ~DesktopColorsOfAStyle() override { QApplication::setPalette(QPalette()); }
};

TEST_F(DesktopColorsOfAStyle, FollowWhatTheDesktopSays) {
  DesktopColors colors;
  QWidget window;  // sees each change
  window.show();
  EXPECT_FALSE(isDarkNow());
  const QColor light = shown(QPalette::Window);
  colors.setColorScheme(ColorScheme::dark);
  EXPECT_TRUE(isDarkNow());
  QApplication::processEvents();
  EXPECT_EQ(window.palette().color(QPalette::Window), shown(QPalette::Window));
  colors.setColorScheme(ColorScheme::unstated);
  EXPECT_EQ(shown(QPalette::Window), light);
  colors.setColorScheme(ColorScheme::dark);
  colors.setColorScheme(ColorScheme::light);
  EXPECT_EQ(shown(QPalette::Window), light);
  QApplication::processEvents();
  EXPECT_EQ(window.palette().color(QPalette::Window), light);
}

TEST_F(DesktopColorsOfAStyle, AreLegibleInBoth) {
  DesktopColors colors;
  for (const ColorScheme scheme : {ColorScheme::light, ColorScheme::dark}) {
    colors.setColorScheme(scheme);
    for (const auto ground : {QPalette::Window, QPalette::Base}) {
      EXPECT_GE(contrastBetween(shown(QPalette::PlaceholderText), shown(ground)), 4.5);
      EXPECT_GE(contrastBetween(shown(QPalette::Text), shown(ground)), 4.5);
    }
    EXPECT_GE(contrastBetween(shown(QPalette::HighlightedText), shown(QPalette::Highlight)), 4.5);
    EXPECT_GE(contrastBetween(shown(QPalette::ToolTipText), shown(QPalette::ToolTipBase)), 4.5);
  }
}

// As Qt does when the theme of the desktop changes: it forgets what the style would have now.
TEST_F(DesktopColorsOfAStyle, AreLookedAtAgainWhenTheThemeChangesAndWhenAWindowOpens) {
  const DesktopColors colors;
  const QColor own = shown(QPalette::Window);
  QPalette old = QApplication::palette();
  old.setColor(QPalette::Window, Qt::magenta);
  QWidget window;
  QApplication::setPalette(old);
  QEvent change(QEvent::ThemeChange);
  QApplication::sendEvent(&window, &change);
  EXPECT_EQ(shown(QPalette::Window), own);
  QApplication::setPalette(old);
  window.show();
  EXPECT_EQ(shown(QPalette::Window), own);
}

}  // namespace
}  // namespace zarvy
