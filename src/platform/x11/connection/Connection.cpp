#include "platform/x11/connection/Connection.h"

#include <algorithm>

#include <xcb/xinput.h>
#include <xcb/xtest.h>
#include <xkbcommon/xkbcommon-x11.h>

#include "platform/x11/connection/XcbReply.h"

namespace zarvy::x11 {

using namespace Qt::Literals::StringLiterals;

namespace {

// 2.2 is asked for because a client that negotiates less hears nothing while another holds a grab.
bool negotiateXInput(xcb_connection_t* xcb) {
  const XcbPtr<xcb_input_xi_query_version_reply_t> version(
      xcb_input_xi_query_version_reply(xcb, xcb_input_xi_query_version(xcb, 2, 2), nullptr));
  return version && (version->major_version > 2 ||
                     (version->major_version == 2 && version->minor_version >= 2));
}

bool negotiateXTest(xcb_connection_t* xcb) {
  const XcbPtr<xcb_test_get_version_reply_t> version(
      xcb_test_get_version_reply(xcb, xcb_test_get_version(xcb, 2, 2), nullptr));
  return version && version->major_version >= 2;
}

const xcb_query_extension_reply_t* presentExtension(xcb_connection_t* xcb, xcb_extension_t* id) {
  const xcb_query_extension_reply_t* extension = xcb_get_extension_data(xcb, id);
  return extension && extension->present ? extension : nullptr;
}

}  // namespace

std::unique_ptr<Connection> Connection::open(QString* reason) {
  std::unique_ptr<Connection> connection(new Connection);
  int screenNumber = 0;
  connection->m_xcb = xcb_connect(nullptr, &screenNumber);
  if (xcb_connection_has_error(connection->m_xcb)) {
    *reason = u"No X display can be reached."_s;
    return nullptr;
  }
  xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(connection->m_xcb));
  for (; screens.rem > 0; xcb_screen_next(&screens)) {
    connection->m_roots.push_back(screens.data->root);
  }
  const auto named = static_cast<std::size_t>(screenNumber);
  connection->m_root = connection->m_roots[std::min(named, connection->m_roots.size() - 1)];
  if (!connection->requireExtensions(reason)) return nullptr;
  connection->m_atoms = Atoms::intern(connection->m_xcb);
  return connection;
}

bool Connection::requireExtensions(QString* reason) {
  const xcb_query_extension_reply_t* xinput = presentExtension(m_xcb, &xcb_input_id);
  if (!xinput || !negotiateXInput(m_xcb)) {
    *reason = u"The X display lacks the XInput extension 2.2, so keys cannot be heard."_s;
    return false;
  }
  m_xinputOpcode = xinput->major_opcode;
  m_xinputEventBase = xinput->first_event;
  if (!presentExtension(m_xcb, &xcb_test_id) || !negotiateXTest(m_xcb)) {
    *reason = u"The X display lacks the XTEST extension, so keys cannot be sent."_s;
    return false;
  }
  if (!xkb_x11_setup_xkb_extension(
          m_xcb, XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
          XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, &m_xkbEventBase, nullptr)) {
    *reason = u"The X display lacks the XKB extension, so keyboard layouts cannot be read."_s;
    return false;
  }
  m_coreKeyboard = xkb_x11_get_core_keyboard_device_id(m_xcb);
  if (m_coreKeyboard < 0) {
    *reason = u"The X display has no keyboard."_s;
    return false;
  }
  return true;
}

Connection::~Connection() {
  xcb_disconnect(m_xcb);
}

bool Connection::isAlive() const {
  return xcb_connection_has_error(m_xcb) == 0;
}

void Connection::flush() const {
  xcb_flush(m_xcb);
}

void Connection::synchronize() const {
  const XcbPtr<xcb_get_input_focus_reply_t> reply(
      xcb_get_input_focus_reply(m_xcb, xcb_get_input_focus(m_xcb), nullptr));
}

}  // namespace zarvy::x11
