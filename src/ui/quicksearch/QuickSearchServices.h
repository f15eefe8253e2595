#pragma once

#include <functional>

#include <QtGlobal>

namespace zarvy {

class Scheduler;
class Workspace;

// What quick search works with. All of it outlives the controller and its panel.
struct QuickSearchServices {
  Scheduler& scheduler;
  Workspace& workspace;

  // A compositor runs, so that a window may let through what is behind it. Asked each time that
  // the panel opens.
  std::function<bool()> hasCompositor = [] { return false; };

  // The panel is there for a moment: taskbars and pagers have no entry for it. Called with its
  // native window before this comes to the screen.
  std::function<void(quint64 nativeWindow)> keepOutOfTaskbar = [](quint64) {};
};

}  // namespace zarvy
