#include "e2e/harness/WindowManager.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "e2e/harness/WaitUntil.h"

namespace zarvy::e2e {

namespace {

constexpr auto xfwm4Settings = R"(<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfwm4" version="1.0">
  <property name="general" type="empty">
    <property name="prevent_focus_stealing" type="bool" value="true"/>
  </property>
</channel>
)";

bool isManaged(const XConnection& connection) {
  const std::string name = "_NET_SUPPORTING_WM_CHECK";
  const auto announced = connection.property(connection.root(), name);
  return announced.size() == 1 && connection.property(announced[0], name) == announced;
}

// A small window that does not want the keyboard, for as long as the object lives.
class ProbeWindow {
 public:
  explicit ProbeWindow(const XConnection& connection)
      : m_connection(connection), m_window(xcb_generate_id(connection.get())) {
    xcb_create_window(connection.get(), XCB_COPY_FROM_PARENT, m_window, connection.root(), 0, 0, 10,
                      10, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    constexpr std::uint32_t hints[9] = {1 /* there is an input hint */, 0 /* no input */};
    xcb_change_property(connection.get(), XCB_PROP_MODE_REPLACE, m_window, XCB_ATOM_WM_HINTS,
                        XCB_ATOM_WM_HINTS, 32, 9, hints);
    xcb_map_window(connection.get(), m_window);
    connection.synchronise();
  }
  ~ProbeWindow() {
    xcb_destroy_window(m_connection.get(), m_window);
    m_connection.synchronise();
  }
  ProbeWindow(const ProbeWindow&) = delete;
  ProbeWindow& operator=(const ProbeWindow&) = delete;

  [[nodiscard]] xcb_window_t id() const { return m_window; }
  [[nodiscard]] bool isManaged() const {
    return !m_connection.property(m_window, "WM_STATE").empty();
  }

 private:
  const XConnection& m_connection;
  const xcb_window_t m_window;
};

// Its start is where openbox leaves most requests lying. So it is up once it looks after a window.
bool looksAfterWindows(const XConnection& connection) {
  const auto deadline = std::chrono::seconds(30);
  xcb_window_t window = XCB_WINDOW_NONE;
  {
    const ProbeWindow probe(connection);
    window = probe.id();
    const auto isManaged = [&] {
      nudgeWindowManager(connection);
      return probe.isManaged();
    };
    if (!waitUntil(isManaged, deadline)) return false;
  }
  const auto isForgotten = [&] {
    nudgeWindowManager(connection);
    const auto known = connection.property(connection.root(), "_NET_CLIENT_LIST");
    return std::find(known.begin(), known.end(), window) == known.end();
  };
  return waitUntil(isForgotten, deadline);
}

void writeXfwm4Settings(const Environment& environment) {
  const std::filesystem::path folder =
      environment.at("XDG_CONFIG_HOME") + "/xfce4/xfconf/xfce-perchannel-xml";
  std::filesystem::create_directories(folder);
  std::ofstream(folder / "xfwm4.xml") << xfwm4Settings;
}

ProcessSpecification specificationOf(WindowManagerKind kind, const Environment& environment,
                                     const std::string& logFolder) {
  ProcessSpecification specification{.program = nameOf(kind),
                                     .arguments = {"--sm-disable"},
                                     .environment = environment,
                                     .errorFile = logFolder + "/" + nameOf(kind) + ".log",
                                     .descriptors = {}};
  if (kind == WindowManagerKind::xfwm4) {
    writeXfwm4Settings(environment);
    specification.arguments = {"--compositor=off"};
  }
  return specification;
}

}  // namespace

std::string nameOf(WindowManagerKind kind) {
  return kind == WindowManagerKind::openbox ? "openbox" : "xfwm4";
}

void nudgeWindowManager(const XConnection& connection) {
  xcb_change_property(connection.get(), XCB_PROP_MODE_REPLACE, connection.root(),
                      connection.atom("ZARVY_E2E_NUDGE"), XCB_ATOM_CARDINAL, 32, 0, nullptr);
  connection.synchronise();
}

WindowManager::WindowManager(WindowManagerKind kind, const XConnection& connection,
                             const Environment& environment, const std::string& logFolder)
    : m_process(specificationOf(kind, environment, logFolder)) {
  const bool isUp = waitUntil([&] { return isManaged(connection); }, std::chrono::seconds(30)) &&
                    looksAfterWindows(connection);
  if (!isUp) {
    throw std::runtime_error(nameOf(kind) + " did not come up");
  }
}

}  // namespace zarvy::e2e
