// What applications are told around a change of the keyboard mapping, on a real X server.

#include <string>

#include <gtest/gtest.h>
#include <xkbcommon/xkbcommon-x11.h>

#include "e2e/harness/Xkb.h"
#include "platform/x11/KeyboardDesk.h"
#include "support/QtPrinters.h"

namespace zarvy::x11 {
namespace {

using namespace Qt::Literals::StringLiterals;

// Follows the mapping and the state of the union of all keyboards.
class EventWatch {
 public:
  explicit EventWatch(const std::string& display) : m_connection(display) {
    xkb_x11_setup_xkb_extension(m_connection.get(), 1, 0, XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS,
                                nullptr, nullptr, &m_eventBase, nullptr);
    constexpr uint16_t events = XCB_XKB_EVENT_TYPE_STATE_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY;
    xcb_xkb_select_events(m_connection.get(), XCB_XKB_ID_USE_CORE_KBD, events, 0, events, 0xff,
                          0xff, nullptr);
    m_connection.synchronise();
  }

  void lock(uint8_t group, uint8_t modifiers) {
    xcb_xkb_latch_lock_state(m_connection.get(), XCB_XKB_ID_USE_CORE_KBD, modifiers, modifiers, 1,
                             group, 0, 0, 0);
    m_connection.synchronise();
  }

  // Whether a state was told between the last change of the mapping and now. `locked` is the
  // latest.
  [[nodiscard]] bool isToldBehindLastChange() {
    m_connection.synchronise();
    bool isTold = false;
    while (const auto event = e2e::owned(xcb_poll_for_queued_event(m_connection.get()))) {
      if ((event->response_type & 0x7f) != m_eventBase) continue;
      const auto& state = reinterpret_cast<const xcb_xkb_state_notify_event_t&>(*event);
      isTold = state.xkbType == XCB_XKB_STATE_NOTIFY;
      if (isTold) {
        lockedGroup = state.lockedGroup;
        lockedModifiers = state.lockedMods;
      } else {
        ++changes;
      }
    }
    return isTold;
  }

  int changes = 0;
  unsigned lockedGroup = 0;
  unsigned lockedModifiers = 0;

 private:
  e2e::XConnection m_connection;
  uint8_t m_eventBase = 0;
};

struct Locks {
  const char* name;
  uint8_t group;
  uint8_t modifiers;
};

class MappingChanges : public testing::TestWithParam<Locks> {};

TEST_P(MappingChanges, AreFollowedByWordOfWhatIsLocked) {
  KeyboardDesk desk({.layouts = "us,ru"});
  EventWatch watch(desk.server().display());
  watch.lock(GetParam().group, GetParam().modifiers);
  desk.type(u"日"_s);
  EXPECT_TRUE(watch.isToldBehindLastChange());
  EXPECT_GT(watch.changes, 0);
  EXPECT_EQ(watch.lockedGroup, GetParam().group);
  EXPECT_EQ(watch.lockedModifiers, GetParam().modifiers);
  watch.changes = 0;
  desk.closeSession();
  EXPECT_TRUE(watch.isToldBehindLastChange());
  EXPECT_GT(watch.changes, 0);
}

INSTANTIATE_TEST_SUITE_P(, MappingChanges,
                         testing::Values(Locks{"SecondLayout", 1, 0},
                                         Locks{"CapsLock", 0, XCB_MOD_MASK_LOCK}),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace zarvy::x11
