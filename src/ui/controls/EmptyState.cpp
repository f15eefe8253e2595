#include "ui/controls/EmptyState.h"

#include <QVBoxLayout>

#include "ui/controls/SymbolView.h"
#include "ui/controls/WrappedLabel.h"
#include "ui/style/ToneKeeper.h"

namespace zarvy {
namespace {

constexpr int gapBetween = 8;

WrappedLabel* centeredLabel(const Tone& tone, QWidget* parent) {
  auto* const label = inTone(new WrappedLabel({}, parent), tone);
  label->setAlignment(Qt::AlignHCenter);
  return label;
}

}  // namespace

EmptyState::EmptyState(Symbol symbol, int symbolExtent, QWidget* parent)
    : QWidget(parent),
      m_column(new QVBoxLayout(this)),
      m_headline(centeredLabel({TextColor::primary, lettering::headline}, this)),
      m_text(centeredLabel({TextColor::tertiary}, this)) {
  m_column->setSpacing(gapBetween);
  m_column->addStretch(1);
  m_column->addWidget(new SymbolView(symbol, symbolExtent, this), 0, Qt::AlignHCenter);
  m_column->addWidget(m_headline);
  m_column->addWidget(m_text);
  m_column->addStretch(1);
}

void EmptyState::setTexts(const QString& headline, const QString& text) {
  m_headline->setText(headline);
  m_headline->setVisible(!headline.isEmpty());
  m_text->setText(text);
  m_text->setVisible(!text.isEmpty());
}

void EmptyState::add(QWidget& control) {
  m_column->insertWidget(m_column->count() - 1, &control, 0, Qt::AlignHCenter);
}

}  // namespace zarvy
