#include "ui/desktop/PrivateDesktop.h"

#include <cstdint>

namespace zarvy {
namespace {

constexpr std::uint32_t background = 0x8A9BA8;

void paint(const e2e::XConnection& connection) {
  xcb_change_window_attributes(connection.get(), connection.root(), XCB_CW_BACK_PIXEL, &background);
  xcb_clear_area(connection.get(), 0, connection.root(), 0, 0, 0, 0);
  connection.synchronise();
}

}  // namespace

PrivateDesktop::PrivateDesktop()
    : m_server(m_home.path().toStdString(), {"-screen", "0", "1800x1600x24"}),
      m_connection(m_server.display()),
      m_manager(e2e::WindowManagerKind::openbox, m_connection, environment(),
                m_home.path().toStdString()) {
  paint(m_connection);
}

e2e::Environment PrivateDesktop::environment() const {
  e2e::Environment environment = e2e::environmentWithHome(m_home.path().toStdString());
  environment["DISPLAY"] = m_server.display();
  environment.erase("QT_LINUX_ACCESSIBILITY_ALWAYS_ON");  // there is no bus
  return environment;
}

}  // namespace zarvy
