// What becomes of a window that appears while the user types elsewhere. Where the window manager
// gave it the keyboard, the tests of the program's own windows under it would prove little.

#include <algorithm>

#include "e2e/behaviour/BehaviourTest.h"
#include "e2e/harness/Windows.h"

namespace zarvy::e2e {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr auto deadline = std::chrono::seconds(20);
constexpr std::uint8_t eventTypeMask = 0x7F;  // the top bit says that a client sent the event

// The server counts milliseconds in 32 bits and begins again.
bool isLater(xcb_timestamp_t time, xcb_timestamp_t other) {
  return static_cast<std::int32_t>(time - other) > 0;
}

// When the user has last done something in the window, as its application tells it: at the window,
// or at another one that it names for that.
std::optional<xcb_timestamp_t> lastUseOf(const XConnection& connection, xcb_window_t window) {
  const auto named = connection.property(window, "_NET_WM_USER_TIME_WINDOW");
  const auto times =
      connection.property(named.empty() ? window : named.front(), "_NET_WM_USER_TIME");
  return times.empty() ? std::nullopt : std::optional(times.front());
}

// A window that does nothing but appear: its client sends no request for the keyboard.
class PlainWindow {
 public:
  explicit PlainWindow(const std::string& display)
      : m_connection(display), m_id(xcb_generate_id(m_connection.get())) {
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(m_connection.get(), XCB_COPY_FROM_PARENT, m_id, m_connection.root(), 0, 0,
                      200, 100, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_EVENT_MASK, &events);
  }

  [[nodiscard]] xcb_window_t id() const { return m_id; }

  // The server's time, which comes with the event of a changed property.
  [[nodiscard]] xcb_timestamp_t now() const {
    setUserTime(XCB_CURRENT_TIME);
    for (;;) {
      const auto event = owned(xcb_wait_for_event(m_connection.get()));
      if (!event) throw std::runtime_error("the server has gone");
      if ((event->response_type & eventTypeMask) != XCB_PROPERTY_NOTIFY) continue;
      return reinterpret_cast<const xcb_property_notify_event_t&>(*event).time;
    }
  }

  // `lastUse` is when the user has last done something in this application.
  void show(xcb_timestamp_t lastUse) const {
    setUserTime(lastUse);
    xcb_map_window(m_connection.get(), m_id);
    m_connection.synchronise();
  }

  [[nodiscard]] bool demandsAttention() const {
    const auto states = m_connection.property(m_id, "_NET_WM_STATE");
    const xcb_atom_t wanted = m_connection.atom("_NET_WM_STATE_DEMANDS_ATTENTION");
    return std::find(states.begin(), states.end(), wanted) != states.end();
  }

 private:
  void setUserTime(xcb_timestamp_t time) const {
    xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, m_id,
                        m_connection.atom("_NET_WM_USER_TIME"), XCB_ATOM_CARDINAL, 32, 1, &time);
    xcb_flush(m_connection.get());
  }

  XConnection m_connection;
  xcb_window_t m_id;
};

class UncalledWindows : public BehaviourTest, public testing::WithParamInterface<TargetKind> {
 protected:
  UncalledWindows() : BehaviourTest(WindowManagerKind::xfwm4) {}

  [[nodiscard]] bool isActive(xcb_window_t window) {
    return activeWindow(stage().connection()) == window;
  }

  // Types into `application`, later than at `moment`, and waits until all the world can know.
  void useAfter(const PlainWindow& clock, xcb_timestamp_t moment, xcb_window_t application) {
    ASSERT_TRUE(waitUntil([&] { return isLater(clock.now(), moment); }, deadline));
    person().type(u"x"_s);
    expectText(u"x"_s);
    const auto isKnown = [&] {
      const auto lastUse = lastUseOf(stage().connection(), application);
      return lastUse && isLater(*lastUse, moment);
    };
    ASSERT_TRUE(waitUntil(isKnown, deadline));
  }
};

TEST_P(UncalledWindows, waitWithoutTheKeyboardUntilTheUserTurnsToThem) {
  stage().startTarget(GetParam());
  const xcb_window_t application = activeWindow(stage().connection());
  const PlainWindow window(stage().server().display());
  const xcb_timestamp_t before = window.now();
  ASSERT_NO_FATAL_FAILURE(useAfter(window, before, application));
  window.show(before);
  ASSERT_TRUE(waitUntil([&] { return window.demandsAttention(); }, deadline));
  EXPECT_TRUE(isActive(application));
  person().type(u"y"_s);
  expectText(u"xy"_s);
}

TEST_P(UncalledWindows, getTheKeyboardWhereTheyAnswerTheUsersLastAction) {
  stage().startTarget(GetParam());
  const PlainWindow window(stage().server().display());
  const xcb_window_t application = activeWindow(stage().connection());
  ASSERT_NO_FATAL_FAILURE(useAfter(window, window.now(), application));
  window.show(window.now());
  EXPECT_TRUE(waitUntil([&] { return isActive(window.id()); }, deadline));
}

// Not xterm: it tells nobody when it was used, and any window takes the keyboard from it.
INSTANTIATE_TEST_SUITE_P(, UncalledWindows, testing::Values(TargetKind::mousepad, TargetKind::qt6),
                         [](const auto& instance) { return nameOf(instance.param); });

}  // namespace
}  // namespace zarvy::e2e
