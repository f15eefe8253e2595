#include "ui/style/WholeText.h"

#include <QHelpEvent>
#include <QToolTip>

#include "ui/style/OneLine.h"

namespace zarvy {

void showWholeText(const QHelpEvent& event, QWidget& widget, const QString& text, bool isCut) {
  QToolTip::showText(event.globalPos(), isCut ? plainToolTip(text) : QString(), &widget);
}

}  // namespace zarvy
