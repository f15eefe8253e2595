#include "ui/controls/GroupedForm.h"

#include <QVBoxLayout>

#include "ui/controls/FormSection.h"

namespace zarvy {
namespace {

constexpr int aroundSections = 16;
constexpr int betweenSections = 14;

}  // namespace

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
