#include "ui/quicksearch/Symbol.h"

#include <cmath>
#include <cstdlib>

#include <QColor>
#include <QIcon>
#include <QImage>
#include <QPainter>
#include <QRect>

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

QString nameOf(Symbol symbol) {
  switch (symbol) {
    case Symbol::search:
      return u"edit-find"_s;
    case Symbol::nothingFound:
      return u"document-preview"_s;
    case Symbol::up:
      return u"go-up"_s;
    case Symbol::down:
      break;
  }
  return u"go-down"_s;
}

// The theme's own symbolic form is the one meant for use beside text.
QIcon iconOf(Symbol symbol) {
  const QString name = nameOf(symbol);
  const QIcon bundled(u":/quicksearch/"_s + name + u".svg"_s);
  return QIcon::fromTheme(name + u"-symbolic"_s, QIcon::fromTheme(name, bundled));
}

// Shades of gray, all of one lightness but for the smoothing at the edges.
bool isOfOneColor(const QImage& image) {
  constexpr int tolerance = 24;
  constexpr int barelyThere = 96;  // of 255: what is fainter says little of its colour
  QRgb first = 0;
  const auto differs = [](int a, int b) { return std::abs(a - b) > tolerance; };
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      const QRgb pixel = image.pixel(x, y);
      if (qAlpha(pixel) < barelyThere) continue;
      if (first == 0) first = pixel;
      if (differs(qRed(pixel), qRed(first)) || differs(qGreen(pixel), qGreen(first)) ||
          differs(qBlue(pixel), qBlue(first))) {
        return false;
      }
    }
  }
  return true;
}

QImage inColor(QImage image, const QColor& color) {
  QPainter painter(&image);
  painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
  painter.fillRect(image.rect(), color);
  return image;
}

}  // namespace

void drawSymbol(QPainter& painter, const QRect& area, Symbol symbol, const QColor& color) {
  const double ratio = painter.device()->devicePixelRatio();
  const QPixmap pixmap = iconOf(symbol).pixmap(area.size(), ratio);
  QImage image = pixmap.toImage().convertToFormat(QImage::Format_ARGB32);
  if (isOfOneColor(image)) image = inColor(image, color);
  // A theme may have smaller pictures only.
  const QSizeF size = QSizeF(image.size()) / image.devicePixelRatio();
  const QPointF corner = QRectF(area).center() - QPointF(size.width() / 2, size.height() / 2);
  const auto onGrid = [ratio](double place) { return std::round(place * ratio) / ratio; };
  painter.drawImage(QPointF(onGrid(corner.x()), onGrid(corner.y())), image);
}

}  // namespace zarvy
