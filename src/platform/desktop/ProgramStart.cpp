#include "platform/desktop/ProgramStart.h"

#include "platform/freedesktop/accessibility/ToolkitBridge.h"
#include "platform/x11/connection/DisplayProbe.h"
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

}  // namespace zarvy
