#include <QImage>
#include <QPainter>
#include <QPixmap>

#include <gtest/gtest.h>

#include "support/QtPrinters.h"
#include "ui/symbols/OwnIconTheme.h"
#include "ui/symbols/SymbolPicture.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

constexpr int extent = 28;

class SymbolPictures : public testing::Test {
 protected:
  OwnIconTheme m_theme;
};

QImage drawn(Symbol symbol, const QColor& color, double ratio = 1) {
  QImage image(QSize(extent, extent) * ratio, QImage::Format_ARGB32_Premultiplied);
  image.setDevicePixelRatio(ratio);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  drawSymbol(painter, {0, 0, extent, extent}, symbol, color);
  return image;
}

// The opaque pixels of this colour, and all that are opaque.
std::pair<int, int> countOf(const QImage& image, const QColor& color) {
  int same = 0;
  int opaque = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      const QColor pixel = image.pixelColor(x, y);
      if (pixel.alpha() < 255) continue;
      ++opaque;
      same += pixel == color ? 1 : 0;
    }
  }
  return {same, opaque};
}

TEST_F(SymbolPictures, AreThereForEachSymbolWithoutAnIconTheme) {
  const QColor color(10, 120, 230);
  for (const SymbolRow& row : allSymbols()) {
    for (const double ratio : {1.0, 1.5, 2.0}) {
      const auto [same, opaque] = countOf(drawn(row.symbol, color, ratio), color);
      EXPECT_GT(same, 10) << row.name.toString().toStdString() << " at " << ratio;
      EXPECT_EQ(same, opaque) << row.name.toString().toStdString();
    }
  }
}

// The mark in the circle.
TEST_F(SymbolPictures, LetTheGroundThroughWhereTheyAreWhite) {
  const QImage image = drawn(Symbol::checkmarkCircleFill, Qt::green);
  EXPECT_EQ(image.pixelColor(extent / 2, 4), QColor(Qt::green));
  int clear = 0;
  for (int y = 8; y < 20; ++y) {
    for (int x = 8; x < 20; ++x) clear += image.pixelColor(x, y).alpha() < 64 ? 1 : 0;
  }
  EXPECT_GT(clear, 10);
}

TEST_F(SymbolPictures, AreThoseOfTheIconTheme) {
  m_theme.add(u"edit-find"_s, [](QPainter& painter) { painter.fillRect(4, 4, 8, 8, Qt::black); });
  const auto [same, opaque] = countOf(drawn(Symbol::magnifyingglass, Qt::green), Qt::green);
  EXPECT_EQ(opaque, 64);
  EXPECT_EQ(same, 64) << "as legible as text";
}

TEST_F(SymbolPictures, AreOfOneColourHoweverFaintTheirEdges) {
  m_theme.add(u"edit-find"_s, [](QPainter& painter) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(QColor(0x23, 0x26, 0x29));
    painter.setPen(Qt::NoPen);
    painter.drawEllipse(QPointF(14, 14), 9.3, 9.3);
  });
  const auto [same, opaque] = countOf(drawn(Symbol::magnifyingglass, Qt::green), Qt::green);
  EXPECT_GT(opaque, 150);
  EXPECT_EQ(same, opaque);
}

TEST_F(SymbolPictures, KeepTheirColoursWhereTheyHaveSeveral) {
  m_theme.add(u"edit-find"_s, [](QPainter& painter) {
    painter.fillRect(4, 4, 8, 8, Qt::red);
    painter.fillRect(12, 4, 8, 8, Qt::blue);
  });
  const QImage image = drawn(Symbol::magnifyingglass, Qt::green);
  EXPECT_EQ(countOf(image, Qt::red).first, 64);
  EXPECT_EQ(countOf(image, Qt::blue).first, 64);
}

TEST_F(SymbolPictures, PreferTheFormMeantForUseBesideText) {
  m_theme.add(u"go-up"_s, [](QPainter& painter) { painter.fillRect(0, 0, 2, 2, Qt::black); });
  m_theme.add(u"go-up-symbolic"_s,
              [](QPainter& painter) { painter.fillRect(0, 0, 5, 5, Qt::black); });
  EXPECT_EQ(countOf(drawn(Symbol::arrowUp, Qt::green), Qt::green).first, 25);
}

// A picture that was kept is the very same one.
TEST_F(SymbolPictures, AreKeptByAllThatTheyDependOn) {
  const auto key = [](Symbol symbol, const QColor& color, const QSize& size, double ratio) {
    return symbolPicture(symbol, color, size, ratio).cacheKey();
  };
  const qint64 first = key(Symbol::trash, Qt::red, {16, 16}, 1);
  EXPECT_EQ(key(Symbol::trash, Qt::red, {16, 16}, 1), first);
  EXPECT_NE(key(Symbol::plus, Qt::red, {16, 16}, 1), first);
  EXPECT_NE(key(Symbol::trash, Qt::blue, {16, 16}, 1), first);
  EXPECT_NE(key(Symbol::trash, QColor(255, 0, 0, 128), {16, 16}, 1), first);
  EXPECT_NE(key(Symbol::trash, Qt::red, {18, 18}, 1), first);
  EXPECT_NE(key(Symbol::trash, Qt::red, {16, 16}, 2), first);
  m_theme.add(u"edit-delete"_s, [](QPainter& painter) { painter.fillRect(0, 0, 4, 4, Qt::black); });
  EXPECT_NE(key(Symbol::trash, Qt::red, {16, 16}, 1), first) << "the theme has changed";
}

TEST_F(SymbolPictures, AreTheProgramsOwnWhereTheThemeHasOnlyAName) {
  m_theme.addBroken(u"edit-find"_s);
  EXPECT_GT(countOf(drawn(Symbol::magnifyingglass, Qt::green), Qt::green).first, 10);
}

}  // namespace
}  // namespace zarvy
