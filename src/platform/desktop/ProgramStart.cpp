#include "platform/desktop/ProgramStart.h"

#include <utility>

#include "platform/desktop/X11Desktop.h"
#include "platform/freedesktop/accessibility/DBusProbe.h"
#include "platform/x11/X11Session.h"
#include "platform/x11/typing/TypingRecord.h"

namespace zarvy {

QByteArray toolkitPlugins() {
  const QByteArray chosen = qgetenv("QT_QPA_PLATFORM");
  const bool wantsX = chosen.isEmpty() || chosen.startsWith("xcb");
  if (wantsX && !x11::canReachDisplay()) return "offscreen";
  return (chosen.isEmpty() ? "xcb" : chosen) + ";offscreen";
}

void releaseKeysLeftBy(pid_t died) {
  x11::releaseKeysOfDeadProcess(died);
}

void keepToolkitFromServicesThatHang() {
  keepToolkitFromBusThatHangs();
}

std::unique_ptr<Desktop> makeDesktop(Scheduler& scheduler, LineOutput& output,
                                     const UserDefaults& defaults, std::function<void()> onLost) {
  return std::make_unique<X11Desktop>(scheduler, output, defaults, std::move(onLost));
}

}  // namespace zarvy
