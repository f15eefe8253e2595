#include "platform/x11/hearing/X11SecureInput.h"

#include "platform/x11/hearing/GrabWatch.h"

namespace zarvy::x11 {

namespace {

// Grabs of window managers were seen to last 13 to 20 ms.
constexpr std::chrono::milliseconds aMoment{150};

}  // namespace

bool X11SecureInput::isSecureEventInputEnabled() const {
  return m_grabs.grabbedFor() >= aMoment && !m_ownWindowHasFocus();
}

}  // namespace zarvy::x11
