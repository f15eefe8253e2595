#include <QApplication>
#include <QPainter>
#include <QPixmap>

#include <gtest/gtest.h>

#include "support/QtPrinters.h"
#include "ui/screenshots/DesktopTheme.h"
#include "ui/symbols/OwnIconTheme.h"
#include "ui/symbols/SymbolIcon.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

class SymbolIcons : public testing::Test {
 protected:
  ~SymbolIcons() override { QApplication::setPalette(m_before); }

  // Of the middle of a disc.
  [[nodiscard]] static QColor colorOf(const QIcon& icon, QIcon::Mode mode = QIcon::Normal) {
    return icon.pixmap(QSize(16, 16), 1, mode).toImage().pixelColor(8, 8);
  }

  const QPalette m_before = QApplication::palette();
  OwnIconTheme m_theme;
};

TEST_F(SymbolIcons, FollowThePalette) {
  const QIcon icon = symbolIcon(Symbol::circleFill);
  for (const QString& theme : {u"light"_s, u"dark"_s}) {
    const QPalette palette = desktopPalette(theme);
    QApplication::setPalette(palette);
    EXPECT_EQ(colorOf(icon), palette.color(QPalette::WindowText));
    EXPECT_EQ(colorOf(icon, QIcon::Selected), palette.color(QPalette::HighlightedText));
    EXPECT_LT(colorOf(icon, QIcon::Disabled).alpha(), 200) << "faint, as text is there";
  }
}

TEST_F(SymbolIcons, TakeAColor) {
  const QPalette palette = desktopPalette(u"light"_s);
  QApplication::setPalette(palette);
  const QIcon icon = symbolIcon(Symbol::circleFill, SystemColor::indigo);
  EXPECT_EQ(colorOf(icon), systemColor(SystemColor::indigo, palette));
}

TEST_F(SymbolIcons, AreAsLargeAsTheyAreWantedAtAnyScale) {
  const QIcon icon = symbolIcon(Symbol::trash);
  for (const double ratio : {1.0, 1.5, 2.0}) {
    const QPixmap picture = icon.pixmap(QSize(16, 16), ratio);
    EXPECT_EQ(picture.size(), QSize(16, 16) * ratio);
    EXPECT_DOUBLE_EQ(picture.devicePixelRatio(), ratio);
  }
}

TEST_F(SymbolIcons, ArePaintedToo) {
  QImage image(16, 16, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::white);
  QPainter painter(&image);
  symbolIcon(Symbol::circleFill, SystemColor::indigo).paint(&painter, image.rect());
  painter.end();
  EXPECT_NE(image.pixelColor(8, 8), QColor(Qt::white));
}

// Under which a panel that draws a menu finds them.
TEST_F(SymbolIcons, HaveTheNameThatTheThemeHasThemUnder) {
  EXPECT_EQ(symbolIcon(Symbol::lockFill).name(), QString());
  m_theme.add(u"object-locked"_s, [](QPainter& painter) { painter.fillRect(0, 0, 8, 8, Qt::red); });
  EXPECT_EQ(symbolIcon(Symbol::lockFill).name(), u"object-locked"_s);
  EXPECT_EQ(symbolIcon(Symbol::number).name(), QString());
}

TEST_F(SymbolIcons, CanBeCopied) {
  QIcon icon = symbolIcon(Symbol::circleFill, SystemColor::indigo);
  const QIcon copy = icon;
  icon.addPixmap(QPixmap(16, 16));  // which makes it a picture of its own
  EXPECT_EQ(colorOf(copy), colorOf(symbolIcon(Symbol::circleFill, SystemColor::indigo)));
}

}  // namespace
}  // namespace zarvy
