#include "app/presence/DesktopPresence.h"

#include <algorithm>

#include <QPointer>

#include "app/library/Library.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

namespace {

// A closing window is still counted among the open ones for a moment.
constexpr std::chrono::milliseconds closingTime{100};

// What a desktop calls the window in which it shows an icon of its tray.
constexpr QStringView trayItemTitle = u"Item-0";

}  // namespace

DesktopPresence::DesktopPresence(const Library& library, const PresenceServices& services)
    : m_library(library), m_services(services) {}

void DesktopPresence::applyHideDockIcon() {
  using Kind = ActivationPolicy::Kind;
  const bool isHidden = m_library.settings().hideDockIcon;
  m_services.policy.setActivationPolicy(isHidden ? Kind::accessory : Kind::regular);
}

void DesktopPresence::becomeRegularIfHidden() {
  if (!m_library.settings().hideDockIcon) return;
  m_services.policy.setActivationPolicy(ActivationPolicy::Kind::regular);
}

void DesktopPresence::restoreAccessoryPolicyIfNoWindows() {
  if (!m_library.settings().hideDockIcon) return;
  m_services.scheduler.postAfter(closingTime, [weak = QPointer(this)] {
    if (weak) weak->restoreAccessoryPolicy();
  });
}

void DesktopPresence::restoreAccessoryPolicy() {
  if (hasRealWindow()) return;
  m_services.policy.setActivationPolicy(ActivationPolicy::Kind::accessory);
}

bool DesktopPresence::hasRealWindow() const {
  const QList<OpenWindows::Window> windows = m_services.windows.windows();
  return std::any_of(windows.begin(), windows.end(), [](const OpenWindows::Window& window) {
    return window.isVisible && !window.title.isEmpty() && window.title != trayItemTitle;
  });
}

void DesktopPresence::applyLaunchAtLogin() {
  LoginItem& item = m_services.loginItem;
  const bool isWanted = m_library.settings().launchAtLogin;
  const std::optional<QString> error = isWanted ? item.enable() : item.disable();
  if (!error) return;
  m_services.output.print((isWanted ? u"Failed to enable launch at login: "_s
                                    : u"Failed to disable launch at login: "_s) +
                          *error);
}

}  // namespace zarvy
