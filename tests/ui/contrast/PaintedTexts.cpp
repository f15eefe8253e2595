#include "ui/contrast/PaintedTexts.h"

#include <algorithm>
#include <map>

#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>
#include <QWidget>

#include "ui/style/Tones.h"

namespace zarvy {
namespace {

double contrastOn(const QImage& ground, const QRegion& place, const QColor& color) {
  constexpr int goodPart = 10;  // one of so many pixels; a caret has fewer
  std::map<QRgb, int> counts;
  int all = 0;
  for (const QRect& area : place) {
    for (int y = area.top(); y <= area.bottom(); ++y) {
      for (int x = area.left(); x <= area.right(); ++x) ++counts[ground.pixel(x, y)];
    }
    all += area.width() * area.height();
  }
  double least = 21;
  for (const auto& [pixel, count] : counts) {
    if (count * goodPart < all) continue;
    const QColor behind = QColor::fromRgb(pixel);
    least = std::min(least, contrastBetween(blended(behind, color, color.alphaF()), behind));
  }
  return least;
}

// Draws everything on a picture, but for texts, which it writes down.
class TextSievingEngine final : public QPaintEngine {
 public:
  explicit TextSievingEngine(PaintedWindow& window) : QPaintEngine(AllFeatures), m_window(window) {}

  bool begin(QPaintDevice* /*device*/) override { return m_painter.begin(&m_window.ground); }
  bool end() override { return m_painter.end(); }
  [[nodiscard]] Type type() const override { return User; }

  void updateState(const QPaintEngineState& now) override {
    m_painter.setPen(now.pen());
    m_painter.setBrush(now.brush());
    m_painter.setBrushOrigin(now.brushOrigin());
    m_painter.setTransform(now.transform());
    m_painter.setOpacity(now.opacity());
    m_painter.setRenderHints(m_painter.renderHints(), false);
    m_painter.setRenderHints(now.renderHints());
    m_painter.setCompositionMode(now.compositionMode());
    if (now.state() & DirtyClipRegion) {
      m_painter.setClipRegion(now.clipRegion(), now.clipOperation());
    }
    if (now.state() & DirtyClipPath) {
      m_painter.setClipPath(now.clipPath(), now.clipOperation());
    }
    if (now.state() & DirtyClipEnabled) m_painter.setClipping(now.isClipEnabled());
    m_color = now.pen().color();
    m_color.setAlphaF(m_color.alphaF() * static_cast<float>(now.opacity()));
  }

  void drawPath(const QPainterPath& path) override { m_painter.drawPath(path); }
  void drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) override {
    if (mode == PolylineMode) {
      m_painter.drawPolyline(points, count);
    } else {
      m_painter.drawPolygon(points, count, mode == WindingMode ? Qt::WindingFill : Qt::OddEvenFill);
    }
  }
  void drawPixmap(const QRectF& to, const QPixmap& pixmap, const QRectF& from) override {
    m_painter.drawPixmap(to, pixmap, from);
  }
  void drawTiledPixmap(const QRectF& to, const QPixmap& pixmap, const QPointF& origin) override {
    m_painter.drawTiledPixmap(to, pixmap, origin);
  }
  void drawImage(const QRectF& to, const QImage& image, const QRectF& from,
                 Qt::ImageConversionFlags flags) override {
    m_painter.drawImage(to, image, from, flags);
  }

  void drawTextItem(const QPointF& baseline, const QTextItem& item) override {
    const QRectF area(baseline.x(), baseline.y() - item.ascent(), item.width(),
                      item.ascent() + item.descent());
    const QRect place = m_painter.transform().mapRect(area).toAlignedRect();
    QRegion seen = m_window.ground.rect().intersected(place);
    if (m_painter.hasClipping()) {
      seen &= m_painter.transform().map(m_painter.clipRegion());
    }
    if (!seen.isEmpty() && !item.text().trimmed().isEmpty()) note(item.text(), seen);
  }

 private:
  void note(const QString& text, const QRegion& place) {
    m_window.texts.push_back({text, m_color, contrastOn(m_window.ground, place, m_color)});
  }

  PaintedWindow& m_window;
  QPainter m_painter;
  QColor m_color;
};

class TextSieve final : public QPaintDevice {
 public:
  explicit TextSieve(PaintedWindow& window) : m_window(window), m_engine(window) {}

  [[nodiscard]] QPaintEngine* paintEngine() const override { return &m_engine; }

 protected:
  // As the picture has it.
  [[nodiscard]] int metric(PaintDeviceMetric metric) const override {
    switch (metric) {
      case PdmWidth:
        return m_window.ground.width();
      case PdmHeight:
        return m_window.ground.height();
      case PdmDpiX:
      case PdmPhysicalDpiX:
        return m_window.ground.logicalDpiX();
      case PdmDpiY:
      case PdmPhysicalDpiY:
        return m_window.ground.logicalDpiY();
      case PdmWidthMM:
        return m_window.ground.widthMM();
      case PdmHeightMM:
        return m_window.ground.heightMM();
      case PdmDepth:
        return m_window.ground.depth();
      case PdmNumColors:
        return m_window.ground.colorCount();
      case PdmDevicePixelRatio:
        return 1;
      default:
        return static_cast<int>(devicePixelRatioFScale());
    }
  }

 private:
  PaintedWindow& m_window;
  mutable TextSievingEngine m_engine;
};

}  // namespace

PaintedWindow paintedWindow(QWidget& window) {
  PaintedWindow painted;
  painted.ground = QImage(window.size(), QImage::Format_RGB32);
  painted.ground.fill(window.palette().color(QPalette::Window));
  TextSieve sieve(painted);
  window.render(&sieve);
  return painted;
}

}  // namespace zarvy
