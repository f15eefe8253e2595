#pragma once

#include <functional>

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
};

}  // namespace zarvy
