#include "ui/controls/GroupedForm.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "ui/controls/WrappedLabel.h"
#include "ui/style/ToneKeeper.h"

namespace zarvy {
namespace {

constexpr int betweenRows = 10;
constexpr int aboveCaption = 2;
constexpr int besideControl = 12;
constexpr int aroundSections = 16;
constexpr int betweenSections = 14;

}  // namespace

FormSection::FormSection(const QString& title, QWidget* parent)
    : QGroupBox(title, parent), m_column(new QVBoxLayout(this)) {
  m_column->setSpacing(betweenRows);
}

void FormSection::addRow(QWidget& row) {
  m_column->addWidget(&row);
}

void FormSection::addRow(const QString& label, QWidget& control, const QString& caption) {
  control.setAccessibleName(label);
  auto* const texts = new QVBoxLayout;
  texts->setSpacing(aboveCaption);
  const TextStyle& style = caption.isEmpty() ? lettering::body : lettering::emphasized;
  auto* const name = inTone(new QLabel(label, this), {TextColor::primary, style});
  name->setBuddy(&control);
  texts->addWidget(name);
  if (!caption.isEmpty()) {
    control.setAccessibleDescription(caption);
    texts->addWidget(
        inTone(new WrappedLabel(caption, this), {TextColor::secondary, lettering::caption}));
  }
  auto* const line = new QHBoxLayout;
  line->setSpacing(besideControl);
  line->addLayout(texts, 1);
  line->addWidget(&control);
  m_column->addLayout(line);
}

GroupedForm::GroupedForm(QWidget* parent) : QWidget(parent), m_column(new QVBoxLayout(this)) {
  m_column->setContentsMargins(aroundSections, aroundSections, aroundSections, aroundSections);
  m_column->setSpacing(betweenSections);
  m_column->addStretch(1);
}

FormSection& GroupedForm::addSection(const QString& title) {
  auto* const section = new FormSection(title, this);
  m_column->insertWidget(m_column->count() - 1, section);
  return *section;
}

}  // namespace zarvy
