#pragma once

#include <memory>

#include <QWidget>

#include "ui/Scenes.h"

namespace zarvy {

// The window around a scene: its title, its size in the middle of the screen, and the keys that
// close it. Deletes itself once it has been closed.
class SceneWindow final : public QWidget {
  Q_OBJECT

 public:
  // Takes `content` over. `row` outlives this object.
  SceneWindow(const SceneRow& row, std::unique_ptr<QWidget> content);

  [[nodiscard]] Scene scene() const { return m_row.scene; }

  // It has been closed, and is there only until the events under way are done with it.
  [[nodiscard]] bool isClosed() const { return m_isClosed; }

  bool eventFilter(QObject* watched, QEvent* event) override;

 protected:
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  const SceneRow& m_row;
  bool m_isClosed = false;
};

}  // namespace zarvy
