#pragma once

#include <QSplitter>

namespace zarvy {

// A part of a split view. The divider leaves it its least size, a window that is too small for all
// of its parts does not.
class Pane final : public QWidget {
  Q_OBJECT

 public:
  // `least` in logical pixels; 0 in a direction leaves that to what is in the pane.
  Pane(const QSize& least, QWidget* parent) : QWidget(parent), m_least(least) {}

  [[nodiscard]] QSize minimumSizeHint() const override;

 private:
  const QSize m_least;
};

// Panes side by side, or one above the other, with a line between them that can be dragged, or
// moved with the arrow keys once Tab has reached it.
class PaneSplitter final : public QSplitter {
  Q_OBJECT

 public:
  // `handleName` is what a screen reader calls the line.
  PaneSplitter(Qt::Orientation orientation, QString handleName, QWidget* parent);

 protected:
  [[nodiscard]] QSplitterHandle* createHandle() override;

 private:
  const QString m_handleName;
};

}  // namespace zarvy
