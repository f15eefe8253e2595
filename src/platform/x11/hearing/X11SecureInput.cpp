#include "platform/x11/hearing/X11SecureInput.h"

#include "platform/x11/connection/Connection.h"
#include "platform/x11/hearing/GrabWatch.h"
#include "platform/x11/windows/WindowOwner.h"

namespace zarvy::x11 {

namespace {

// Grabs of window managers were seen to last 13 to 20 ms.
constexpr std::chrono::milliseconds aMoment{150};

}  // namespace

bool X11SecureInput::isSecureEventInputEnabled() const {
  if (m_grabs.isGrabbed()) m_grabs.lookAgain();
  return m_grabs.grabbedFor() >= aMoment && !isOwnGrab();
}

bool X11SecureInput::isOwnGrab() const {
  const std::optional<uint32_t> holder = m_grabs.holder();
  return holder ? m_isOwnClient(*holder) : m_isForThisProgram();
}

std::optional<qint32> X11SecureInput::ownerProcessIdentifier() const {
  const std::optional<uint32_t> holder = m_grabs.holder();
  if (!holder) return std::nullopt;
  return processOfClient(m_connection.xcb(), *holder);
}

}  // namespace zarvy::x11
