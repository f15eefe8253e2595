#include "platform/x11/windows/WindowProperties.h"

#include <algorithm>
#include <array>
#include <span>
#include <unistd.h>

#include <QByteArray>
#include <QList>

#include "platform/posix/ProcessFamily.h"
#include "platform/x11/connection/Connection.h"
#include "platform/x11/connection/XcbReply.h"
#include "platform/x11/windows/WindowOwner.h"

namespace zarvy::x11 {

namespace {

constexpr xcb_window_t noWindow = XCB_WINDOW_NONE;
constexpr uint32_t longestProperty = 4096;  // in units of four bytes

XcbPtr<xcb_get_property_reply_t> getProperty(xcb_connection_t* xcb, xcb_window_t window,
                                             xcb_atom_t property, xcb_atom_t type) {
  return XcbPtr<xcb_get_property_reply_t>(xcb_get_property_reply(
      xcb, xcb_get_property(xcb, 0, window, property, type, 0, longestProperty), nullptr));
}

// Some applications give the name with its domain, some without.
bool isThisMachine(QByteArray name) {
  std::array<char, 256> own{};
  if (gethostname(own.data(), own.size() - 1) != 0) return false;
  const auto host = [](const QByteArray& full) { return full.split('.').first().toLower(); };
  while (name.endsWith('\0')) name.chop(1);
  return name == "localhost" || host(name) == host(QByteArray(own.data()));
}

// Chooses between the process number that a window tells and the process that opened the window's
// connection, which the server knows. The told one is believed where it is that process or its
// descendant, and where that process has ended: the program went into the background after it had
// connected. Otherwise the number was counted inside a sandbox.
qint64 believable(qint64 told, std::optional<pid_t> client) {
  if (!client || !isRunning(*client)) return told;
  return descendsFrom(static_cast<pid_t>(told), *client) ? told : *client;
}

std::span<const uint32_t> words(const XcbPtr<xcb_get_property_reply_t>& reply) {
  if (!reply || reply->format != 32) return {};
  return {static_cast<const uint32_t*>(xcb_get_property_value(reply.get())), reply->value_len};
}

}  // namespace

xcb_window_t WindowProperties::windowProperty(xcb_window_t window, xcb_atom_t property) const {
  const auto reply = getProperty(m_connection.xcb(), window, property, XCB_ATOM_WINDOW);
  const auto values = words(reply);
  return values.empty() ? noWindow : values.front();
}

xcb_window_t WindowProperties::activeWindow() const {
  const xcb_window_t active = windowProperty(rootInFront(), m_connection.atoms().netActiveWindow);
  return active != XCB_WINDOW_NONE ? active : focusedTopLevel();
}

// Each screen has a window manager of its own, and with that an active window.
xcb_window_t WindowProperties::rootInFront() const {
  if (m_connection.roots().size() < 2) return m_connection.root();
  xcb_connection_t* xcb = m_connection.xcb();
  const XcbPtr<xcb_get_input_focus_reply_t> focus(
      xcb_get_input_focus_reply(xcb, xcb_get_input_focus(xcb), nullptr));
  if (focus && focus->focus > XCB_INPUT_FOCUS_POINTER_ROOT) return rootOf(focus->focus);
  const XcbPtr<xcb_query_pointer_reply_t> pointer(
      xcb_query_pointer_reply(xcb, xcb_query_pointer(xcb, m_connection.root()), nullptr));
  return pointer ? pointer->root : m_connection.root();
}

bool WindowProperties::isInUse(xcb_window_t window) const {
  xcb_connection_t* xcb = m_connection.xcb();
  const XcbPtr<xcb_get_window_attributes_reply_t> attributes(
      xcb_get_window_attributes_reply(xcb, xcb_get_window_attributes(xcb, window), nullptr));
  if (!attributes) return false;
  return attributes->map_state == XCB_MAP_STATE_VIEWABLE || isManaged(window);
}

bool WindowProperties::isManaged(xcb_window_t window) const {
  const auto& roots = m_connection.roots();
  return std::any_of(roots.begin(), roots.end(), [&](xcb_window_t root) {
    const auto reply =
        getProperty(m_connection.xcb(), root, m_connection.atoms().netClientList, XCB_ATOM_WINDOW);
    const auto windows = words(reply);
    return std::find(windows.begin(), windows.end(), window) != windows.end();
  });
}

// One that has ended leaves its word behind, but not the window that vouches for it.
bool WindowProperties::activatesOnRequest(xcb_window_t root) const {
  const Atoms& atoms = m_connection.atoms();
  const xcb_window_t voucher = windowProperty(root, atoms.netSupportingWmCheck);
  if (voucher == noWindow || windowProperty(voucher, atoms.netSupportingWmCheck) != voucher) {
    return false;
  }
  const auto reply = getProperty(m_connection.xcb(), root, atoms.netSupported, XCB_ATOM_ATOM);
  const auto supported = words(reply);
  return std::find(supported.begin(), supported.end(), atoms.netActiveWindow) != supported.end();
}

xcb_window_t WindowProperties::rootOf(xcb_window_t window) const {
  if (m_connection.roots().size() < 2) return m_connection.root();
  xcb_connection_t* xcb = m_connection.xcb();
  const XcbPtr<xcb_query_tree_reply_t> tree(
      xcb_query_tree_reply(xcb, xcb_query_tree(xcb, window), nullptr));
  return tree ? tree->root : m_connection.root();
}

std::optional<QRect> WindowProperties::areaOf(xcb_window_t window) const {
  xcb_connection_t* xcb = m_connection.xcb();
  const XcbPtr<xcb_get_geometry_reply_t> geometry(
      xcb_get_geometry_reply(xcb, xcb_get_geometry(xcb, window), nullptr));
  if (!geometry) return std::nullopt;
  const XcbPtr<xcb_translate_coordinates_reply_t> origin(xcb_translate_coordinates_reply(
      xcb, xcb_translate_coordinates(xcb, window, geometry->root, 0, 0), nullptr));
  if (!origin) return std::nullopt;
  return QRect(origin->dst_x, origin->dst_y, geometry->width, geometry->height);
}

// Without a window manager the focus may follow the pointer.
xcb_window_t WindowProperties::focusedTopLevel() const {
  xcb_connection_t* xcb = m_connection.xcb();
  const XcbPtr<xcb_get_input_focus_reply_t> focus(
      xcb_get_input_focus_reply(xcb, xcb_get_input_focus(xcb), nullptr));
  return focus ? topLevelOf(focus->focus) : noWindow;
}

// Toolkits give the focus to a window inside the one that carries the properties.
xcb_window_t WindowProperties::topLevelOf(xcb_window_t focus) const {
  xcb_connection_t* xcb = m_connection.xcb();
  const auto& roots = m_connection.roots();
  const auto isRoot = [&](xcb_window_t window) {
    return std::find(roots.begin(), roots.end(), window) != roots.end();
  };
  // With the focus on a root window, too, keys go to whatever is under the pointer.
  const bool isAtPointer = focus == XCB_INPUT_FOCUS_POINTER_ROOT || isRoot(focus);
  xcb_window_t window = isAtPointer ? windowUnderPointer() : focus;
  xcb_window_t topLevel = noWindow;
  while (window != noWindow && !isRoot(window)) {
    if (hasClass(window)) return window;
    topLevel = window;
    const XcbPtr<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(xcb, xcb_query_tree(xcb, window), nullptr));
    window = tree ? tree->parent : noWindow;
  }
  return topLevel;
}

// The innermost one: a window manager puts those of applications into frames of its own.
xcb_window_t WindowProperties::windowUnderPointer() const {
  xcb_connection_t* xcb = m_connection.xcb();
  xcb_window_t found = noWindow;
  for (xcb_window_t window = rootInFront(); window != noWindow;) {
    const XcbPtr<xcb_query_pointer_reply_t> pointer(
        xcb_query_pointer_reply(xcb, xcb_query_pointer(xcb, window), nullptr));
    window = pointer ? pointer->child : noWindow;
    if (window != noWindow) found = window;
  }
  return found;
}

bool WindowProperties::hasClass(xcb_window_t window) const {
  const auto reply = getProperty(m_connection.xcb(), window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING);
  return reply && reply->value_len > 0;
}

qint64 WindowProperties::processIdentifier(xcb_window_t window) const {
  const auto reply =
      getProperty(m_connection.xcb(), window, m_connection.atoms().netWmPid, XCB_ATOM_CARDINAL);
  const auto values = words(reply);
  return values.empty() ? 0 : static_cast<qint64>(values.front());
}

qint64 WindowProperties::localProcess(xcb_window_t window) const {
  const auto reply = getProperty(m_connection.xcb(), window, XCB_ATOM_WM_CLIENT_MACHINE,
                                 XCB_GET_PROPERTY_TYPE_ANY);
  if (reply && reply->format == 8 && reply->value_len > 0) {
    const QByteArray machine(static_cast<const char*>(xcb_get_property_value(reply.get())),
                             static_cast<qsizetype>(reply->value_len));
    if (!isThisMachine(machine)) return 0;
  }
  return believable(processIdentifier(window), processOfClient(m_connection.xcb(), window));
}

// Each server has its name in a list on the root window, and is the owner of the selection of that
// name.
std::vector<qint64> WindowProperties::inputMethodProcesses() const {
  xcb_connection_t* xcb = m_connection.xcb();
  std::vector<qint64> processes;
  const auto reply =
      getProperty(xcb, m_connection.root(), m_connection.atoms().ximServers, XCB_ATOM_ATOM);
  for (const xcb_atom_t server : words(reply)) {
    const XcbPtr<xcb_get_selection_owner_reply_t> owner(
        xcb_get_selection_owner_reply(xcb, xcb_get_selection_owner(xcb, server), nullptr));
    if (!owner || owner->owner == noWindow) continue;
    if (const auto process = processOfClient(xcb, owner->owner)) processes.push_back(*process);
  }
  return processes;
}

// WM_CLASS holds two texts, each ended by a NUL: the instance's name and the class.
std::optional<QString> WindowProperties::windowClass(xcb_window_t window) const {
  const auto reply = getProperty(m_connection.xcb(), window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING);
  if (!reply || reply->value_len == 0) return std::nullopt;
  const QByteArray value(static_cast<const char*>(xcb_get_property_value(reply.get())),
                         static_cast<qsizetype>(reply->value_len));
  const QList<QByteArray> texts = value.split('\0');
  const QByteArray& name = texts.size() > 1 && !texts[1].isEmpty() ? texts[1] : texts[0];
  if (name.isEmpty()) return std::nullopt;
  return QString::fromLatin1(name);
}

bool WindowProperties::answersPing(xcb_window_t window) const {
  const auto reply =
      getProperty(m_connection.xcb(), window, m_connection.atoms().wmProtocols, XCB_ATOM_ATOM);
  const auto protocols = words(reply);
  return std::find(protocols.begin(), protocols.end(), m_connection.atoms().netWmPing) !=
         protocols.end();
}

// A compositor owns the selection that is named after the screen, here that of the environment.
bool WindowProperties::hasCompositor() const {
  const auto& roots = m_connection.roots();
  const auto screen = std::find(roots.begin(), roots.end(), m_connection.root()) - roots.begin();
  const std::string name = "_NET_WM_CM_S" + std::to_string(screen);
  xcb_connection_t* const xcb = m_connection.xcb();
  const XcbPtr<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(
      xcb, xcb_intern_atom(xcb, 1, static_cast<uint16_t>(name.size()), name.data()), nullptr));
  if (!atom || atom->atom == XCB_ATOM_NONE) return false;
  const XcbPtr<xcb_get_selection_owner_reply_t> owner(
      xcb_get_selection_owner_reply(xcb, xcb_get_selection_owner(xcb, atom->atom), nullptr));
  return owner && owner->owner != XCB_WINDOW_NONE;
}

xcb_window_t WindowProperties::windowOfProcess(qint64 processId) const {
  const xcb_window_t active = activeWindow();
  if (active != XCB_WINDOW_NONE && processIdentifier(active) == processId) return active;
  for (const xcb_window_t root : m_connection.roots()) {
    const auto reply =
        getProperty(m_connection.xcb(), root, m_connection.atoms().netClientList, XCB_ATOM_WINDOW);
    for (const xcb_window_t window : words(reply)) {
      if (processIdentifier(window) == processId) return window;
    }
  }
  return XCB_WINDOW_NONE;
}

}  // namespace zarvy::x11
