#include "ui/controls/ElidedCheckBox.h"

#include <QHelpEvent>
#include <QStyle>
#include <QStyleOptionButton>

#include "ui/style/OneLine.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

ElidedCheckBox::ElidedCheckBox(const QString& title, QWidget* parent)
    : QCheckBox(parent), m_title(title), m_shown(oneLine(title)) {
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  setAccessibleName(title);
  fit();
}

QSize ElidedCheckBox::minimumSizeHint() const {
  return {besidesText(), QCheckBox::minimumSizeHint().height()};
}

bool ElidedCheckBox::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QCheckBox::event(event);
  showWholeText(*static_cast<QHelpEvent*>(event), *this, m_title, fitting() != m_title);
  return true;
}

void ElidedCheckBox::resizeEvent(QResizeEvent* event) {
  QCheckBox::resizeEvent(event);
  fit();
}

void ElidedCheckBox::changeEvent(QEvent* event) {
  QCheckBox::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) fit();
}

int ElidedCheckBox::besidesText() const {
  QStyleOptionButton option;
  initStyleOption(&option);
  return style()->pixelMetric(QStyle::PM_IndicatorWidth, &option, this) +
         2 * style()->pixelMetric(QStyle::PM_CheckBoxLabelSpacing, &option, this);
}

QString ElidedCheckBox::fitting() const {
  return fontMetrics().elidedText(m_shown, Qt::ElideRight, width() - besidesText());
}

// An ampersand in the title is not a mark of a shortcut.
void ElidedCheckBox::fit() {
  QString shown = fitting();
  shown.replace(u"&"_s, u"&&"_s);
  if (shown != text()) setText(shown);
}

}  // namespace zarvy
