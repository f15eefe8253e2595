#include "ui/controls/Keycap.h"

#include <QEvent>
#include <QFontMetrics>
#include <QPainter>

#include "ui/style/Fonts.h"
#include "ui/style/Tones.h"
#include "ui/symbols/SymbolPicture.h"

namespace zarvy {
namespace {

constexpr int keyPadding = 5;
constexpr double keyRadius = 4;
constexpr int symbolExtent = 12;
constexpr double groundOpacity = 0.10;

}  // namespace

Keycap::Keycap(const QString& name, std::optional<Symbol> symbol, QWidget* parent)
    : QWidget(parent), m_name(name), m_symbol(symbol) {
  setAccessibleName(name);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize Keycap::sizeHint() const {
  const QFontMetrics metrics(keyFont());
  const int height = qMax(metrics.height(), symbolExtent) + 4;
  const int width = m_symbol ? symbolExtent : metrics.horizontalAdvance(m_name);
  return {qMax(width + 2 * keyPadding, height), height};
}

void Keycap::changeEvent(QEvent* event) {
  if (event->type() == QEvent::FontChange) updateGeometry();
  QWidget::changeEvent(event);
}

void Keycap::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  const QColor ground = blended(activeColor(palette(), QPalette::Window),
                                activeColor(palette(), QPalette::WindowText), groundOpacity);
  painter.setBrush(ground);
  painter.drawRoundedRect(rect(), keyRadius, keyRadius);
  const QColor color = secondaryColor(palette(), ground);
  if (m_symbol) {
    QRect area(0, 0, symbolExtent, symbolExtent);
    area.moveCenter(rect().center());
    drawSymbol(painter, area, *m_symbol, color);
  } else {
    painter.setPen(color);
    painter.setFont(keyFont());
    painter.drawText(rect(), Qt::AlignCenter, m_name);
  }
}

QFont Keycap::keyFont() const {
  return styledFont(font(), lettering::caption);
}

}  // namespace zarvy
