#pragma once

#include <QWidget>

#include "ui/Scenes.h"

namespace zarvy {

// Stands where a screen is still to be made, and says what it will hold.
class ComingWindow final : public QWidget {
  Q_OBJECT

 public:
  // `state` outlives this object.
  ComingWindow(Scene scene, AppState& state);
};

}  // namespace zarvy
