#pragma once

#include <QSplitter>

namespace zarvy {

// Panes one above the other, with a line between them that can be dragged, or moved with the arrow
// keys once Tab has reached it.
class PaneSplitter final : public QSplitter {
  Q_OBJECT

 public:
  explicit PaneSplitter(QWidget* parent);

 protected:
  [[nodiscard]] QSplitterHandle* createHandle() override;
};

}  // namespace zarvy
