#include "ui/controls/TriggerBadge.h"

#include <algorithm>
#include <cmath>

#include <QFontMetrics>
#include <QHelpEvent>
#include <QPainter>

#include "core/model/Snippet.h"
#include "ui/style/Fonts.h"
#include "ui/style/OneLine.h"
#include "ui/style/Tones.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

constexpr int badgePaddingX = 10;
constexpr int badgePaddingY = 5;
constexpr int prefixGap = 4;  // behind the prefix
constexpr int greatestWidth = 220;
constexpr int leastTextWidth = 24;
constexpr double fillOpacity = 0.12;
constexpr double strokeOpacity = 0.35;
constexpr double badgeStrokeWidth = 0.5;

// With room for what rounding takes away.
int widthOf(const QString& text, const QFont& font) {
  return static_cast<int>(std::ceil(QFontMetricsF(font).horizontalAdvance(text))) + 1;
}

}  // namespace

TriggerBadge::TriggerBadge(const Snippet& snippet, SystemColor color, QWidget* parent)
    : QWidget(parent),
      m_prefix(snippet.isRegexTrigger ? u".*"_s : QString()),
      m_trigger(snippet.trigger),
      m_shown(oneLine(snippet.trigger)),
      m_color(color) {
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
  setAccessibleName(u"Trigger "_s + snippet.trigger);
}

QFont TriggerBadge::textFont(QFont::Weight weight) const {
  return styledFont(font(), {lettering::badge.scale, weight, true});
}

int TriggerBadge::prefixWidth() const {
  if (m_prefix.isEmpty()) return 0;
  return widthOf(m_prefix, textFont(QFont::Bold)) + prefixGap;
}

QSize TriggerBadge::sizeHint() const {
  const QFont triggerFont = textFont(QFont::Medium);
  const int width = prefixWidth() + widthOf(m_shown, triggerFont) + 2 * badgePaddingX;
  return {std::min(width, greatestWidth), QFontMetrics(triggerFont).height() + 2 * badgePaddingY};
}

QSize TriggerBadge::minimumSizeHint() const {
  const QSize wanted = sizeHint();
  const int width = prefixWidth() + leastTextWidth + 2 * badgePaddingX;
  return {std::min(width, wanted.width()), wanted.height()};
}

QRect TriggerBadge::textArea() const {
  return rect().adjusted(badgePaddingX + prefixWidth(), 0, -badgePaddingX, 0);
}

QString TriggerBadge::fitting() const {
  const QFontMetrics metrics(textFont(QFont::Medium));
  return metrics.elidedText(m_shown, Qt::ElideRight, textArea().width());
}

bool TriggerBadge::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QWidget::event(event);
  showWholeText(*static_cast<QHelpEvent*>(event), *this, m_trigger, fitting() != m_trigger);
  return true;
}

void TriggerBadge::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QColor color = systemColor(m_color, palette());
  painter.setBrush(withOpacity(color, fillOpacity));
  painter.setPen(QPen(withOpacity(color, strokeOpacity), badgeStrokeWidth));
  const QRectF capsule = QRectF(rect()).adjusted(badgeStrokeWidth, badgeStrokeWidth,
                                                 -badgeStrokeWidth, -badgeStrokeWidth);
  painter.drawRoundedRect(capsule, capsule.height() / 2, capsule.height() / 2);

  const QRect area = textArea();
  painter.setFont(textFont(QFont::Bold));
  const QColor ground = blended(activeColor(palette(), QPalette::Window), color, fillOpacity);
  painter.setPen(secondaryColor(palette(), ground));
  painter.drawText(area.adjusted(-prefixWidth(), 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter,
                   m_prefix);
  painter.setFont(textFont(QFont::Medium));
  painter.setPen(palette().color(QPalette::WindowText));
  painter.drawText(area, Qt::AlignLeft | Qt::AlignVCenter, fitting());
}

}  // namespace zarvy
