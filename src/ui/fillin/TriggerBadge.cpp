#include "ui/fillin/TriggerBadge.h"

#include <algorithm>
#include <cmath>

#include <QFontDatabase>
#include <QFontMetrics>
#include <QPainter>

#include "core/model/Snippet.h"
#include "ui/style/OneLine.h"
#include "ui/style/Tones.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

constexpr int horizontalPadding = 10;
constexpr int verticalPadding = 5;
constexpr int gap = 4;  // behind the prefix
constexpr int greatestWidth = 220;
constexpr int leastTextWidth = 24;
constexpr double fillOpacity = 0.12;
constexpr double strokeOpacity = 0.35;
constexpr double strokeWidth = 0.5;

// With room for what rounding takes away.
int widthOf(const QString& text, const QFont& font) {
  return static_cast<int>(std::ceil(QFontMetricsF(font).horizontalAdvance(text))) + 1;
}

}  // namespace

TriggerBadge::TriggerBadge(const Snippet& snippet, const QColor& color, QWidget* parent)
    : QWidget(parent),
      m_prefix(snippet.isRegexTrigger ? u".*"_s : QString()),
      m_trigger(oneLine(snippet.trigger)),
      m_color(color) {
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
  setAccessibleName(u"Trigger "_s + snippet.trigger);
  setToolTip(plainToolTip(snippet.trigger));
}

QFont TriggerBadge::textFont(QFont::Weight weight) const {
  QFont result = scaledFont(font(), captionScale);
  result.setFamilies({QFontDatabase::systemFont(QFontDatabase::FixedFont).family()});
  result.setStyleHint(QFont::Monospace);
  result.setWeight(weight);
  return result;
}

int TriggerBadge::prefixWidth() const {
  if (m_prefix.isEmpty()) return 0;
  return widthOf(m_prefix, textFont(QFont::Bold)) + gap;
}

QSize TriggerBadge::sizeHint() const {
  const QFont triggerFont = textFont(QFont::Medium);
  const int width = prefixWidth() + widthOf(m_trigger, triggerFont) + 2 * horizontalPadding;
  return {std::min(width, greatestWidth), QFontMetrics(triggerFont).height() + 2 * verticalPadding};
}

QSize TriggerBadge::minimumSizeHint() const {
  const QSize wanted = sizeHint();
  const int width = prefixWidth() + leastTextWidth + 2 * horizontalPadding;
  return {std::min(width, wanted.width()), wanted.height()};
}

void TriggerBadge::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setBrush(withOpacity(m_color, fillOpacity));
  painter.setPen(QPen(withOpacity(m_color, strokeOpacity), strokeWidth));
  const QRectF capsule =
      QRectF(rect()).adjusted(strokeWidth, strokeWidth, -strokeWidth, -strokeWidth);
  painter.drawRoundedRect(capsule, capsule.height() / 2, capsule.height() / 2);

  QRect inside = rect().adjusted(horizontalPadding, 0, -horizontalPadding, 0);
  painter.setFont(textFont(QFont::Bold));
  painter.setPen(secondaryColor(palette()));
  painter.drawText(inside, Qt::AlignLeft | Qt::AlignVCenter, m_prefix);
  inside.setLeft(inside.left() + prefixWidth());
  painter.setFont(textFont(QFont::Medium));
  painter.setPen(palette().color(QPalette::WindowText));
  const QString shown = painter.fontMetrics().elidedText(m_trigger, Qt::ElideRight, inside.width());
  painter.drawText(inside, Qt::AlignLeft | Qt::AlignVCenter, shown);
}

}  // namespace zarvy
