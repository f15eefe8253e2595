#include "ui/controls/SegmentedPicker.h"

#include <QButtonGroup>
#include <QHBoxLayout>

#include "ui/controls/TintedButton.h"
#include "ui/style/ControlOutline.h"

namespace zarvy {

SegmentedPicker::SegmentedPicker(const QString& name, const QStringList& segments, QWidget* parent)
    : QWidget(parent), m_segments(new QButtonGroup(this)) {
  setAccessibleName(name);
  auto* const line = new QHBoxLayout(this);
  line->setContentsMargins(0, 0, 0, 0);
  line->setSpacing(0);
  for (const QString& text : segments) {
    auto* const segment = outlined(new TintedButton(TintedButton::Tint::none, text, this));
    segment->setCheckable(true);
    segment->setAutoDefault(false);
    connect(segment, &QPushButton::toggled, segment, [segment](bool isChosen) {
      segment->setTint(isChosen ? TintedButton::Tint::prominent : TintedButton::Tint::none);
    });
    m_segments->addButton(segment, static_cast<int>(m_segments->buttons().size()));
    line->addWidget(segment, 1);
  }
  setCurrentIndex(0);
  connect(m_segments, &QButtonGroup::idToggled, this, [this](int index, bool isChosen) {
    if (isChosen) Q_EMIT picked(index);
  });
}

int SegmentedPicker::currentIndex() const {
  return m_segments->checkedId();
}

void SegmentedPicker::setCurrentIndex(int index) {
  m_segments->button(index)->setChecked(true);
}

}  // namespace zarvy
