#include "platform/desktop/DesktopFactory.h"

#include <utility>

#include "platform/desktop/X11Desktop.h"

namespace zarvy {

std::unique_ptr<Desktop> makeDesktop(Scheduler& scheduler, LineOutput& output,
                                     const UserDefaults& defaults, std::function<void()> onLost) {
  return std::make_unique<X11Desktop>(scheduler, output, defaults, std::move(onLost));
}

}  // namespace zarvy
