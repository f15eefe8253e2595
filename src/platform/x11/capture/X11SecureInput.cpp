#include "platform/x11/capture/X11SecureInput.h"

#include "platform/x11/capture/GrabWatch.h"
#include "platform/x11/connection/Connection.h"
#include "platform/x11/windows/MenusOnScreen.h"
#include "platform/x11/windows/WindowOwner.h"

namespace zarvy::x11 {

namespace {

// Grabs of window managers were seen to last 13 to 20 ms.
constexpr std::chrono::milliseconds aMoment{150};

}  // namespace

bool X11SecureInput::isSecureEventInputEnabled() const {
  if (m_grabs.isGrabbed()) m_grabs.lookAgain();
  return m_grabs.grabbedFor() >= aMoment && !isOwnGrab() && !isMenusGrab();
}

bool X11SecureInput::isOwnGrab() const {
  const auto holder = m_grabs.holder();
  return holder ? m_isOwnClient(holder->client) : m_isForThisProgram();
}

// What is typed into a menu is heard no more than a secret is, but the user need not be told that a
// menu is open. Where it is not known which client holds the keyboard, it may be a secret.
bool X11SecureInput::isMenusGrab() const {
  const auto holder = m_grabs.holder();
  if (!holder) return false;
  return hasMenuOpen(m_connection, holder->client) ||
         (isPopupOfWindow(m_connection, holder->window) && m_probe.isPointerGrabbedByAnother());
}

std::optional<qint32> X11SecureInput::ownerProcessIdentifier() const {
  const auto holder = m_grabs.holder();
  if (!holder) return std::nullopt;
  return processOfClient(m_connection.xcb(), holder->client);
}

}  // namespace zarvy::x11
