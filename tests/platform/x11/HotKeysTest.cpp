// Which keys other clients have, on a real X server.

#include <array>

#include <gtest/gtest.h>
#include <xcb/xinput.h>

#include "platform/HotKeys.h"
#include "platform/x11/KeyboardDesk.h"
#include "support/QtPrinters.h"

namespace zarvy::x11 {
namespace {

using namespace Qt::Literals::StringLiterals;

constexpr uint8_t spaceBar = 65;
constexpr uint32_t mod1 = XCB_MOD_MASK_1;

constexpr HotKey altSpace{49, 0x80000};
constexpr HotKey superSpace{49, 0x100000};
constexpr HotKey controlAltSpace{49, 0xC0000};

class HotKeysOfOthers : public testing::Test {
 protected:
  [[nodiscard]] bool isTaken(const HotKey& key) {
    return m_desk.session().hotKeys().isTakenByAnother(key);
  }

  void grab(uint32_t modifiers) {
    xcb_grab_key(m_other.get(), 0, m_other.root(), static_cast<uint16_t>(modifiers), spaceBar,
                 XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    m_other.synchronise();
  }

  KeyboardDesk m_desk{{.layouts = "us"}};
  e2e::XConnection m_other{m_desk.server().display()};
};

TEST_F(HotKeysOfOthers, AreFreeAtFirst) {
  EXPECT_FALSE(isTaken(altSpace));
  EXPECT_FALSE(isTaken(superSpace));
  EXPECT_FALSE(isTaken({10'000, 0x80000})) << "no keyboard has it";
}

TEST_F(HotKeysOfOthers, AreTakenUntilTheyAreGivenBack) {
  grab(mod1);
  EXPECT_TRUE(isTaken(altSpace));
  EXPECT_FALSE(isTaken(superSpace));
  EXPECT_FALSE(isTaken(controlAltSpace));
  xcb_ungrab_key(m_other.get(), spaceBar, m_other.root(), mod1);
  m_other.synchronise();
  EXPECT_FALSE(isTaken(altSpace));
}

TEST_F(HotKeysOfOthers, AreTakenAlsoWithTheLocksThatMayBeOn) {
  grab(mod1 | XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2);
  EXPECT_TRUE(isTaken(altSpace));
}

TEST_F(HotKeysOfOthers, AreTakenWithWhateverModifiers) {
  grab(XCB_MOD_MASK_ANY);
  EXPECT_TRUE(isTaken(altSpace));
  EXPECT_TRUE(isTaken(superSpace));
}

TEST_F(HotKeysOfOthers, AreTakenThroughXInputToo) {
  const uint32_t modifiers = XCB_MOD_MASK_4;
  for (const auto device :
       std::to_array<xcb_input_device_id_t>({0, 1, 3})) {  // all; the united ones; their keyboard
    const e2e::XConnection other(m_desk.server().display());
    const auto refused = e2e::owned(xcb_input_xi_passive_grab_device_reply(
        other.get(),
        xcb_input_xi_passive_grab_device(other.get(), XCB_CURRENT_TIME, other.root(),
                                         XCB_CURSOR_NONE, spaceBar, device, 1, 0,
                                         XCB_INPUT_GRAB_TYPE_KEYCODE, XCB_INPUT_GRAB_MODE_22_ASYNC,
                                         XCB_GRAB_MODE_ASYNC, 0, nullptr, &modifiers),
        nullptr));
    ASSERT_TRUE(refused);
    ASSERT_EQ(refused->num_modifiers, 0);
    EXPECT_TRUE(isTaken(superSpace)) << device;
    EXPECT_FALSE(isTaken(altSpace)) << device;
  }
}

// What is found free stays free for others.
TEST_F(HotKeysOfOthers, AreNotKeptByTheQuestion) {
  EXPECT_FALSE(isTaken(altSpace));
  EXPECT_TRUE(m_desk.session().isAlive());
  const auto error = e2e::owned(xcb_request_check(
      m_other.get(), xcb_grab_key_checked(m_other.get(), 0, m_other.root(), XCB_MOD_MASK_ANY,
                                          spaceBar, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC)));
  EXPECT_FALSE(error);
  const uint32_t any = uint32_t{1} << 31;
  const auto refused = e2e::owned(xcb_input_xi_passive_grab_device_reply(
      m_other.get(),
      xcb_input_xi_passive_grab_device(m_other.get(), XCB_CURRENT_TIME, m_other.root(),
                                       XCB_CURSOR_NONE, spaceBar, 0, 1, 0,
                                       XCB_INPUT_GRAB_TYPE_KEYCODE, XCB_INPUT_GRAB_MODE_22_ASYNC,
                                       XCB_GRAB_MODE_ASYNC, 0, nullptr, &any),
      nullptr));
  ASSERT_TRUE(refused);
  EXPECT_EQ(refused->num_modifiers, 0);
}

TEST_F(HotKeysOfOthers, AreStillHeard) {
  EXPECT_FALSE(isTaken(altSpace));
  m_desk.person().type(u"a b"_s);
  EXPECT_EQ(m_desk.heardText(3), u"a b"_s);
}

}  // namespace
}  // namespace zarvy::x11
