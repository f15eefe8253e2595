#include "ui/symbols/SymbolPicture.h"

#include <cmath>
#include <cstdlib>

#include <QColor>
#include <QIcon>
#include <QImage>
#include <QPainter>
#include <QPixmap>
#include <QPixmapCache>
#include <QRect>

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

// Null where the theme lacks it. Its symbolic form is the one meant for use beside text.
QIcon themeIcon(const QString& name) {
  if (name.isEmpty()) return {};
  return QIcon::fromTheme(name + u"-symbolic"_s, QIcon::fromTheme(name));
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

QImage pixelsOf(const QIcon& icon, const QSize& size, double ratio) {
  return icon.pixmap(size, ratio).toImage().convertToFormat(QImage::Format_ARGB32);
}

QImage ofTheme(const QIcon& icon, const QColor& color, const QSize& size, double ratio) {
  QImage image = pixelsOf(icon, size, ratio);
  if (image.isNull() || !isOfOneColor(image)) return image;
  QPainter painter(&image);
  painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
  painter.fillRect(image.rect(), color);
  return image;
}

// Black in the program's own pictures stands for the colour, white for the ground.
QImage ofProgram(QStringView name, const QColor& color, const QSize& size, double ratio) {
  QImage image = pixelsOf(QIcon(u":/symbols/%1.svg"_s.arg(name)), size, ratio);
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      const QRgb pixel = image.pixel(x, y);
      QColor shown = color;
      shown.setAlphaF(color.alphaF() * static_cast<float>(qAlpha(pixel)) / 255 *
                      static_cast<float>(255 - qGray(pixel)) / 255);
      image.setPixel(x, y, shown.rgba());
    }
  }
  return image;
}

QString keyOf(Symbol symbol, const QColor& color, const QSize& size, double ratio) {
  return u"zarvy-symbol %1 %2 %3x%4@%5 %6"_s.arg(static_cast<int>(symbol))
      .arg(color.name(QColor::HexArgb))
      .arg(size.width())
      .arg(size.height())
      .arg(ratio)
      .arg(QIcon::themeName());
}

}  // namespace

QPixmap symbolPicture(Symbol symbol, const QColor& color, const QSize& size, double ratio) {
  const QString key = keyOf(symbol, color, size, ratio);
  QPixmap picture;
  if (QPixmapCache::find(key, &picture)) return picture;
  const SymbolRow& row = rowOf(symbol);
  const QIcon icon = themeIcon(row.themeName.toString());
  QImage image = icon.isNull() ? QImage() : ofTheme(icon, color, size, ratio);
  if (image.isNull()) image = ofProgram(row.name, color, size, ratio);
  picture = QPixmap::fromImage(image);
  QPixmapCache::insert(key, picture);
  return picture;
}

void drawSymbol(QPainter& painter, const QRect& area, Symbol symbol, const QColor& color) {
  const double ratio = painter.device()->devicePixelRatio();
  const QPixmap picture = symbolPicture(symbol, color, area.size(), ratio);
  const QSizeF size = picture.deviceIndependentSize();
  const QPointF corner = QRectF(area).center() - QPointF(size.width() / 2, size.height() / 2);
  const auto onGrid = [ratio](double place) { return std::round(place * ratio) / ratio; };
  painter.drawPixmap(QPointF(onGrid(corner.x()), onGrid(corner.y())), picture);
}

}  // namespace zarvy
