#pragma once

#include <QWidget>

namespace zarvy {

// Stands where a window is still to be made, and says what it will hold.
class ComingWindow final : public QWidget {
  Q_OBJECT

 public:
  // `sceneId` is the id of the scene.
  explicit ComingWindow(const QString& sceneId);
};

}  // namespace zarvy
