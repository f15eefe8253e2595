#include "ui/controls/SearchField.h"

#include "ui/style/ControlOutline.h"
#include "ui/symbols/SymbolIcon.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

SearchField::SearchField(const QString& prompt, QWidget* parent) : QLineEdit(parent) {
  setPlaceholderText(prompt);
  setAccessibleName(prompt.endsWith(u"..."_s) ? prompt.chopped(3) : prompt);
  setClearButtonEnabled(true);
  addAction(symbolIcon(Symbol::magnifyingglass, TextColor::secondary), LeadingPosition);
  outlined(this);
}

}  // namespace zarvy
