#include "ui/controls/OptionPicker.h"

#include <QListView>
#include <QWheelEvent>

namespace zarvy {
namespace {

constexpr int leastCharacters = 8;

}  // namespace

OptionPicker::OptionPicker(const QStringList& options, const QString& value, QWidget* parent)
    : QComboBox(parent) {
  // Thousands of options are not measured one by one.
  auto* const list = new QListView(this);
  list->setUniformItemSizes(true);
  list->setTextElideMode(Qt::ElideRight);
  setView(list);
  list->installEventFilter(this);
  setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  setMinimumContentsLength(leastCharacters);
  setFocusPolicy(Qt::StrongFocus);
  addItems(options);
  setCurrentIndex(static_cast<int>(options.indexOf(value)));
  connect(this, &QComboBox::currentIndexChanged, this,
          [this](int index) { Q_EMIT picked(itemText(index)); });
}

// What closes the open list is not meant for the form, whose shortcuts would take the key too.
bool OptionPicker::eventFilter(QObject* watched, QEvent* event) {
  if (watched == view() && event->type() == QEvent::ShortcutOverride) event->accept();
  return QComboBox::eventFilter(watched, event);
}

// A user who scrolls the form does not mean to choose something else.
void OptionPicker::wheelEvent(QWheelEvent* event) {
  if (hasFocus()) {
    QComboBox::wheelEvent(event);
  } else {
    event->ignore();
  }
}

}  // namespace zarvy
