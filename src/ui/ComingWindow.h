#pragma once

#include <QWidget>

namespace zarvy {

class AppState;

// Stands where a window is still to be made, and says what it will hold.
class ComingWindow final : public QWidget {
  Q_OBJECT

 public:
  // `sceneId` is the id of the scene. `state` outlives this object.
  ComingWindow(const QString& sceneId, AppState& state);

 protected:
  bool event(QEvent* event) override;
};

}  // namespace zarvy
