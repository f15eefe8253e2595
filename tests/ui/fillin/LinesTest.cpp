// Lines at scales that are no whole number, where a pixel of the window is none of the screen.

#include <cstdlib>
#include <memory>
#include <utility>

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

#include "support/QtPrinters.h"
#include "ui/controls/Divider.h"
#include "ui/controls/RoundedBox.h"
#include "ui/fillin/FieldList.h"
#include "ui/style/Lines.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

constexpr QColor ground(255, 255, 255);
constexpr QColor inside(255, 255, 0);

// But for what rounding leaves.
bool isAlike(const QColor& a, const QColor& b) {
  return std::abs(a.red() - b.red()) + std::abs(a.green() - b.green()) +
             std::abs(a.blue() - b.blue()) <=
         6;
}

// Paints `widget`, which has a size, without what is in it. The heights of the lines that a column
// in its middle comes by, in pixels of the screen; `inside` is its background.
QList<int> linesOf(QWidget& widget, double scale, int y) {
  QPalette palette;
  palette.setColor(QPalette::WindowText, Qt::black);
  palette.setColor(QPalette::Window, inside);
  palette.setColor(QPalette::Base, inside);
  widget.setPalette(palette);
  QImage image((QSizeF(widget.size() + QSize(0, 10)) * scale).toSize(),
               QImage::Format_ARGB32_Premultiplied);
  image.setDevicePixelRatio(scale);
  image.fill(ground);
  widget.render(&image, {0, y}, {}, {});
  QList<int> heights;
  bool isLine = false;
  for (int row = 0; row < image.height(); ++row) {
    const QColor color = image.pixelColor(image.width() / 2, row);
    const bool wasLine = std::exchange(isLine, !isAlike(color, ground) && !isAlike(color, inside));
    if (!isLine) continue;
    if (!wasLine) heights.append(0);
    ++heights.back();
  }
  return heights;
}

constexpr struct {
  double scale;
  int height;
} scales[] = {{1, 1}, {1.25, 1}, {1.5, 1}, {1.75, 1}, {2, 2}, {2.5, 2}};

TEST(Lines, AreOfWholePixelsAroundABox) {
  for (const auto& [scale, height] : scales) {
    for (const int y : {0, 1, 2, 3}) {
      auto content = std::make_unique<QWidget>();
      RoundedBox box(*content, {QPalette::Base, 1}, nullptr);
      static_cast<void>(content.release());  // the box owns it
      box.resize(100, 41);
      EXPECT_EQ(linesOf(box, scale, y), (QList<int>{height, height})) << scale << " " << y;
    }
  }
}

TEST(Lines, AreOfWholePixelsAroundAndBetweenTheRows) {
  FillInField field;
  for (const auto& [scale, height] : scales) {
    for (const int y : {0, 1, 2, 3}) {
      FieldList list({field, field}, nullptr);
      list.resize(300, list.sizeHint().height());
      EXPECT_EQ(linesOf(list, scale, y), (QList<int>{height, height, height})) << scale << " " << y;
    }
  }
}

TEST(Lines, AreOfWholePixelsBetweenAreas) {
  for (const auto& [scale, height] : scales) {
    for (const int y : {0, 1, 2, 3}) {
      Divider divider(nullptr);
      divider.resize(100, 1);
      EXPECT_EQ(linesOf(divider, scale, y), QList<int>{height}) << scale << " " << y;
    }
  }
}

}  // namespace
}  // namespace zarvy
