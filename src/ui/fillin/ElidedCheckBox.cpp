#include "ui/fillin/ElidedCheckBox.h"

#include <QEvent>
#include <QStyle>
#include <QStyleOptionButton>

#include "ui/style/OneLine.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

ElidedCheckBox::ElidedCheckBox(const QString& title, QWidget* parent)
    : QCheckBox(parent), m_title(oneLine(title)) {
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  setAccessibleName(title);
  setToolTip(plainToolTip(title));
  fit();
}

QSize ElidedCheckBox::minimumSizeHint() const {
  return {besidesText(), QCheckBox::minimumSizeHint().height()};
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

// An ampersand in the title is not a mark of a shortcut.
void ElidedCheckBox::fit() {
  QString shown = fontMetrics().elidedText(m_title, Qt::ElideRight, width() - besidesText());
  shown.replace(u"&"_s, u"&&"_s);
  if (shown != text()) setText(shown);
}

}  // namespace zarvy
