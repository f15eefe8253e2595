#pragma once

#include <functional>

namespace zarvy {

// Is told of the closing of a window, by whatever way it closes. The window does not keep it alive:
// whoever opened the window does, and hears of nothing more once it has dropped it.
struct WindowDelegate {
  std::function<void()> onClose;

  // Called by the window. The callback may drop this object.
  void windowWillClose() const {
    const auto callback = onClose;
    if (callback) callback();
  }
};

}  // namespace zarvy
