#include "ui/controls/Sheet.h"

#include <QAbstractButton>
#include <QDialogButtonBox>
#include <QEvent>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/controls/TintedButton.h"
#include "ui/style/ControlOutline.h"
#include "ui/style/ToneKeeper.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

constexpr int sheetPadding = 16;
constexpr int sheetSpacing = 12;

bool isInput(const QWidget& widget, const QWidget& sheet) {
  return (widget.focusPolicy() & Qt::TabFocus) && widget.isVisibleTo(&sheet) &&
         widget.isEnabled() && qobject_cast<const QAbstractButton*>(&widget) == nullptr;
}

}  // namespace

Sheet::Sheet(const Words& words, int width, QWidget& window)
    : QDialog(&window), m_width(width), m_body(new QVBoxLayout) {
  setAttribute(Qt::WA_DeleteOnClose);
  setWindowTitle(words.title);
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(sheetPadding, sheetPadding, sheetPadding, sheetPadding);
  column->setSpacing(sheetSpacing);
  column->addWidget(
      inTone(new QLabel(words.title, this), {TextColor::primary, lettering::headline}));
  m_body->setSpacing(sheetSpacing);
  column->addLayout(m_body, 1);
  auto* const buttons = new QDialogButtonBox(this);
  outlined(buttons->addButton(u"Cancel"_s, QDialogButtonBox::RejectRole));
  m_accept = outlined(new TintedButton(TintedButton::Tint::prominent, words.accept, buttons));
  buttons->addButton(m_accept, QDialogButtonBox::AcceptRole);
  m_accept->setDefault(true);
  column->addWidget(buttons);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

void Sheet::setComplete(bool isComplete) {
  m_accept->setEnabled(isComplete);
}

QSize Sheet::sizeHint() const {
  const int height = layout()->hasHeightForWidth() ? layout()->totalHeightForWidth(m_width)
                                                   : layout()->totalSizeHint().height();
  return {m_width, height};
}

bool Sheet::event(QEvent* event) {
  const bool isHandled = QDialog::event(event);
  if (event->type() == QEvent::LayoutRequest) setFixedSize(sizeHint());
  return isHandled;
}

void Sheet::showEvent(QShowEvent* event) {
  setFixedSize(sizeHint());
  focusFirstInput();
  QDialog::showEvent(event);
}

void Sheet::focusFirstInput() {
  QWidget* next = nextInFocusChain();
  while (next != this && !isInput(*next, *this)) next = next->nextInFocusChain();
  if (next != this) next->setFocus(Qt::TabFocusReason);
}

}  // namespace zarvy
