#pragma once

#include <QWidget>

#include "ui/symbols/Symbol.h"

class QVBoxLayout;

namespace zarvy {

class WrappedLabel;

// Stands in the place of a list that has nothing to show, and says why: a symbol, a headline and a
// text in the middle of the room there is.
class EmptyState final : public QWidget {
  Q_OBJECT

 public:
  // `symbolExtent` in logical pixels.
  EmptyState(Symbol symbol, int symbolExtent, QWidget* parent);

  // Shown as they stand; no room is kept for one that is empty.
  void setTexts(const QString& headline, const QString& text);

  // Below the texts, for what to do about it. Takes `control` over.
  void add(QWidget& control);

 private:
  QVBoxLayout* m_column;
  WrappedLabel* m_headline;
  WrappedLabel* m_text;
};

}  // namespace zarvy
