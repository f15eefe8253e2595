#include "platform/x11/windows/X11Workspace.h"

#include <unistd.h>
#include <utility>

#include <QFile>
#include <QFileInfo>

#include "platform/x11/connection/Connection.h"
#include "platform/x11/connection/XEvents.h"

namespace zarvy::x11 {

using namespace Qt::Literals::StringLiterals;

namespace {

// Asks as a pager does, on the user's behalf; window managers hold back what applications ask of
// themselves.
constexpr uint32_t sourcePager = 2;

QString processFolder(qint64 processIdentifier) {
  return u"/proc/%1"_s.arg(processIdentifier);
}

// The name by which people know the program: its window class, which toolkits derive from it, or
// the name of its process.
std::optional<QString> nameOf(qint64 processIdentifier, const std::optional<QString>& windowClass) {
  if (windowClass) return windowClass;
  QFile file(processFolder(processIdentifier) + u"/comm"_s);
  if (processIdentifier <= 0 || !file.open(QIODevice::ReadOnly)) return std::nullopt;
  const QString name = QString::fromUtf8(file.readAll()).trimmed();
  return name.isEmpty() ? std::nullopt : std::optional(name);
}

}  // namespace

X11Workspace::X11Workspace(Connection& connection, QString ownBundleIdentifier)
    : m_connection(connection),
      m_windows(connection),
      m_ownBundleIdentifier(std::move(ownBundleIdentifier)) {}

std::optional<RunningApplication> X11Workspace::frontmostApplication() const {
  const xcb_window_t window = m_windows.activeWindow();
  if (window == XCB_WINDOW_NONE) return std::nullopt;
  return applicationOf(window);
}

std::optional<QRect> X11Workspace::frontmostWindowArea() const {
  const xcb_window_t window = m_windows.activeWindow();
  if (window == XCB_WINDOW_NONE) return std::nullopt;
  return m_windows.areaOf(window);
}

std::optional<RunningApplication> X11Workspace::runningApplication(qint64 processIdentifier) const {
  const xcb_window_t window = m_windows.windowOfProcess(processIdentifier);
  if (window != XCB_WINDOW_NONE) return applicationOf(window);
  return applicationWithoutWindow(processIdentifier);
}

// Screen lockers, and prompts that keep the window manager out.
std::optional<RunningApplication> X11Workspace::applicationWithoutWindow(
    qint64 processIdentifier) const {
  if (processIdentifier <= 0 || !QFileInfo::exists(processFolder(processIdentifier))) {
    return std::nullopt;
  }
  RunningApplication application;
  application.processIdentifier = processIdentifier;
  if (processIdentifier == getpid()) application.bundleIdentifier = m_ownBundleIdentifier;
  application.localizedName = nameOf(processIdentifier, std::nullopt);
  return application;
}

RunningApplication X11Workspace::applicationOf(xcb_window_t window) const {
  RunningApplication application;
  application.processIdentifier = m_windows.processIdentifier(window);
  application.nativeWindow = window;
  const std::optional<QString> windowClass = m_windows.windowClass(window);
  // The number alone does not tell: a sandbox or another host counts its processes for itself.
  const bool isOwn = application.processIdentifier == getpid() &&
                     windowClass.value_or(m_ownBundleIdentifier)
                             .compare(m_ownBundleIdentifier, Qt::CaseInsensitive) == 0;
  application.bundleIdentifier = isOwn ? std::optional(m_ownBundleIdentifier) : windowClass;
  application.localizedName = nameOf(application.processIdentifier, windowClass);
  return application;
}

// Numbers of windows are given out again, and a sandbox counts its processes for itself: neither
// tells alone.
bool X11Workspace::isOf(const RunningApplication& application, xcb_window_t window) const {
  if (window == XCB_WINDOW_NONE) return false;
  const RunningApplication now = applicationOf(window);
  return now.processIdentifier == application.processIdentifier &&
         now.bundleIdentifier == application.bundleIdentifier;
}

// Another window of the same process counts too: the user may have turned to it, and an activation
// would take them away again.
bool X11Workspace::isActive(const RunningApplication& application) const {
  const xcb_window_t active = m_windows.activeWindow();
  if (!isOf(application, active)) return false;
  return active == application.nativeWindow || application.processIdentifier != 0;
}

// An application whose window is gone is still there with another one.
xcb_window_t X11Workspace::livingWindow(const RunningApplication& application) const {
  const auto window = static_cast<xcb_window_t>(application.nativeWindow);
  if (m_windows.isInUse(window) && isOf(application, window)) return window;
  if (application.processIdentifier == 0) return XCB_WINDOW_NONE;
  const xcb_window_t other = m_windows.windowOfProcess(application.processIdentifier);
  return isOf(application, other) ? other : xcb_window_t{XCB_WINDOW_NONE};
}

bool X11Workspace::activate(const RunningApplication& application) {
  const xcb_window_t window = livingWindow(application);
  if (window == XCB_WINDOW_NONE) return false;
  const xcb_window_t root = m_windows.rootOf(window);
  if (m_windows.activatesOnRequest(root)) {
    requestActivation(root, window);
  } else {
    focus(window);
  }
  m_connection.flush();
  return true;
}

void X11Workspace::requestActivation(xcb_window_t root, xcb_window_t window) {
  sendToWindowManager(m_connection, root,
                      {.window = window,
                       .type = m_connection.atoms().netActiveWindow,
                       .data = {sourcePager, XCB_CURRENT_TIME}});
}

// As a window manager would.
void X11Workspace::focus(xcb_window_t window) {
  const uint32_t above = XCB_STACK_MODE_ABOVE;
  xcb_configure_window(m_connection.xcb(), window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
  xcb_set_input_focus(m_connection.xcb(), XCB_INPUT_FOCUS_PARENT, window, XCB_CURRENT_TIME);
}

std::optional<QString> X11Workspace::ownBundleIdentifier() const {
  return m_ownBundleIdentifier;
}

}  // namespace zarvy::x11
