// What is told of keys that another client has for itself, and of which client that is, on a real X
// server.

#include <thread>
#include <unistd.h>

#include <gtest/gtest.h>
#include <xcb/xinput.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include "e2e/harness/WaitUntil.h"
#include "platform/KeyEventPoster.h"
#include "platform/SecureInput.h"
#include "platform/x11/BareWindow.h"
#include "platform/x11/KeyboardDesk.h"
#include "support/QtPrinters.h"

namespace zarvy::x11 {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

constexpr xcb_input_device_id_t masterKeyboard = 3;

bool grabKeyboard(const e2e::XConnection& connection, xcb_window_t window) {
  const auto reply = e2e::owned(
      xcb_grab_keyboard_reply(connection.get(),
                              xcb_grab_keyboard(connection.get(), 0, window, XCB_CURRENT_TIME,
                                                XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
                              nullptr));
  return reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
}

bool grabDevice(const e2e::XConnection& connection, xcb_window_t window,
                xcb_input_device_id_t device) {
  const uint32_t mask = XCB_INPUT_XI_EVENT_MASK_KEY_PRESS;
  const auto reply = e2e::owned(xcb_input_xi_grab_device_reply(
      connection.get(),
      xcb_input_xi_grab_device(connection.get(), window, XCB_CURRENT_TIME, XCB_CURSOR_NONE, device,
                               XCB_INPUT_GRAB_MODE_22_ASYNC, XCB_INPUT_GRAB_MODE_22_ASYNC, 0, 1,
                               &mask),
      nullptr));
  return reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
}

void ungrabKeyboard(const e2e::XConnection& connection) {
  xcb_ungrab_keyboard(connection.get(), XCB_CURRENT_TIME);
  connection.synchronise();
}

void ungrabDevice(const e2e::XConnection& connection, xcb_input_device_id_t device) {
  xcb_input_xi_ungrab_device(connection.get(), XCB_CURRENT_TIME, device);
  connection.synchronise();
}

xcb_window_t focusOf(const e2e::XConnection& connection) {
  const auto reply = e2e::owned(
      xcb_get_input_focus_reply(connection.get(), xcb_get_input_focus(connection.get()), nullptr));
  return reply ? reply->focus : xcb_window_t{XCB_WINDOW_NONE};
}

// Holds the keyboard, as a password prompt does.
class KeyboardGrab {
 public:
  explicit KeyboardGrab(const e2e::XConnection& connection)
      : m_connection(connection), m_window(connection) {
    EXPECT_TRUE(grabKeyboard(connection, m_window.id()));
  }
  ~KeyboardGrab() { ungrabKeyboard(m_connection); }
  KeyboardGrab(const KeyboardGrab&) = delete;
  KeyboardGrab& operator=(const KeyboardGrab&) = delete;

 private:
  const e2e::XConnection& m_connection;
  BareWindow m_window;
};

int pressesIn(const e2e::XConnection& connection) {
  int presses = 0;
  connection.synchronise();
  while (const auto event = e2e::owned(xcb_poll_for_event(connection.get()))) {
    if ((event->response_type & 0x7f) == XCB_KEY_PRESS) ++presses;
  }
  return presses;
}

// What the presses typed, without those of Shift; any number of keys in a row that were only told
// to have been typed is one "*".
QString told(const std::vector<KeyEvent>& events) {
  QString text;
  for (const KeyEvent& event : events) {
    if (event.keyCode == KeyboardDesk::forgetting) {
      if (!text.endsWith(u'*')) text += u'*';
    } else {
      text += event.charactersIgnoringModifiers.value_or(QString());
    }
  }
  return text;
}

class Grabs : public testing::Test {
 protected:
  void expectSecure(bool isSecure) {
    EXPECT_TRUE(
        e2e::waitUntil([&] { return secureInput().isSecureEventInputEnabled() == isSecure; }, 10s))
        << (isSecure ? "is not taken for secure input" : "is taken for secure input");
  }

  // Waits until what the person types is told to be `expected`.
  void expectTold(const QString& expected) {
    QString text;
    const bool isTold = e2e::waitUntil(
        [&] {
          text = told(m_desk.heard(0));
          return text == expected;
        },
        10s);
    EXPECT_TRUE(isTold) << text.toStdString();
  }

  // The adapters read no event more until what this returns is unlocked.
  [[nodiscard]] std::unique_lock<std::mutex> stopReading(BareWindow& window) {
    const int moves = m_desk.focusMoves();
    auto stopped = m_desk.stopReadingAtFocusMove();
    window.focus();
    EXPECT_TRUE(e2e::waitUntil([&] { return m_desk.focusMoves() > moves; }, 10s));
    return stopped;
  }

  // What the adapters have asked of the server has been done.
  void synchronise() { EXPECT_TRUE(m_desk.session().isAlive()); }

  void type(const QString& text, e2e::Body body = e2e::Body::xtest) {
    m_desk.person().type(text, {.body = body, .interval = 2ms});
    connection().synchronise();  // else the server may do what the adapters ask for first
  }

  [[nodiscard]] const SecureInput& secureInput() { return m_desk.session().secureInput(); }
  [[nodiscard]] const e2e::XConnection& connection() const { return m_desk.connection(); }

  KeyboardDesk m_desk{{.layouts = "us"}};
};

class GrabsOfBodies : public Grabs, public testing::WithParamInterface<e2e::Body> {};

TEST_P(GrabsOfBodies, LetNothingBeToldOfWhatIsTypedButThatThereWasSomething) {
  type(u"ab"_s, GetParam());
  expectTold(u"ab"_s);
  {
    const KeyboardGrab prompt(connection());
    type(u"sEc"_s, GetParam());
  }
  type(u"cd"_s, GetParam());
  expectTold(u"ab*cd"_s);
}

INSTANTIATE_TEST_SUITE_P(Through, GrabsOfBodies,
                         testing::Values(e2e::Body::xtest, e2e::Body::serverKeyboard),
                         [](const auto& row) {
                           return row.param == e2e::Body::xtest ? "XTest" : "Keyboard";
                         });

TEST_F(Grabs, HaveWhatWasTypedBeforeForgottenThoughNothingIsTyped) {
  type(u"ab"_s);
  expectTold(u"ab"_s);
  const KeyboardGrab prompt(connection());
  expectTold(u"ab*"_s);
}

TEST_F(Grabs, AreSecureInputOnceTheyHaveLasted) {
  EXPECT_FALSE(secureInput().isSecureEventInputEnabled());
  {
    const KeyboardGrab prompt(connection());
    expectSecure(true);
  }
  expectSecure(false);
}

TEST_F(Grabs, TellTheProcessThatHasTheKeyboard) {
  EXPECT_EQ(secureInput().ownerProcessIdentifier(), std::nullopt);
  {
    const KeyboardGrab prompt(connection());
    expectSecure(true);
    EXPECT_EQ(secureInput().ownerProcessIdentifier(), getpid());
  }
  expectSecure(false);
  EXPECT_EQ(secureInput().ownerProcessIdentifier(), std::nullopt);
}

TEST_F(Grabs, AreFollowedFromWindowToWindow) {
  TypingWitness second(m_desk.server().display());  // another caret
  type(u"a"_s);
  expectTold(u"*a"_s);
  {
    const KeyboardGrab prompt(connection());
    type(u"s"_s);
  }
  type(u"b"_s);
  expectTold(u"*a*b"_s);
  EXPECT_EQ(second.text(), u"ab"_s);
}

TEST_F(Grabs, OfTheWindowThatHasTheFocusAreNoticedToo) {
  type(u"a"_s);
  expectTold(u"a"_s);
  ASSERT_TRUE(grabKeyboard(connection(), focusOf(connection())));
  expectSecure(true);
  EXPECT_EQ(secureInput().ownerProcessIdentifier(), getpid());
  type(u"s"_s);
  ungrabKeyboard(connection());
  expectSecure(false);
  type(u"b"_s);
  expectTold(u"a*b"_s);
}

TEST_F(Grabs, ThroughXInputAreNoticedToo) {
  ASSERT_TRUE(grabDevice(connection(), focusOf(connection()), masterKeyboard));
  expectSecure(true);
  EXPECT_EQ(secureInput().ownerProcessIdentifier(), getpid());
  ungrabKeyboard(connection());  // means nothing to a grab of this kind
  EXPECT_FALSE(grabKeyboard(e2e::XConnection(m_desk.server().display()), connection().root()));
  EXPECT_TRUE(secureInput().isSecureEventInputEnabled());
  ungrabDevice(connection(), masterKeyboard);
  expectSecure(false);
}

TEST_F(Grabs, GetNothingOfWhatIsBeingTyped) {
  const auto typing = m_desk.session().keyEventPoster().beginTyping(u"abcdef"_s);
  EXPECT_TRUE(typing->pressText(u"ab"));
  {
    const e2e::XConnection lockers(m_desk.server().display());
    const KeyboardGrab locker(lockers);
    EXPECT_FALSE(typing->pressText(u"cd"));
    EXPECT_EQ(pressesIn(lockers), 0);
  }
  EXPECT_FALSE(typing->pressText(u"ef")) << "the place of the caret is no longer known";
  EXPECT_EQ(m_desk.witness().text(), u"ab"_s);
  m_desk.type(u"gh"_s);
  EXPECT_EQ(m_desk.witness().text(), u"ab"_s) << "the same sessions";
}

TEST_F(Grabs, ThatEndSoonAreWaitedFor) {
  const auto typing = m_desk.session().keyEventPoster().beginTyping(u"abcd"_s);
  EXPECT_TRUE(typing->pressText(u"ab"));
  std::optional<KeyboardGrab> windowManager(std::in_place, connection());
  std::thread end([&] { windowManager.reset(); });
  EXPECT_TRUE(typing->pressText(u"cd"));
  end.join();
  EXPECT_EQ(m_desk.witness().text(), u"abcd"_s);
}

// As with the keys that lock the screen.
TEST_F(Grabs, GetNothingWhereTheyComeWhileAHeldModifierIsWaitedFor) {
  const e2e::XConnection lockers(m_desk.server().display());
  const auto typing = m_desk.session().keyEventPoster().beginTyping(u"abcdef"_s);
  EXPECT_TRUE(typing->pressText(u"ab"));
  m_desk.person().press(XKB_KEY_Super_L);
  m_desk.letAdaptersCatchUp();
  std::optional<KeyboardGrab> locker;
  std::thread lock([&] { locker.emplace(lockers); });
  EXPECT_FALSE(typing->pressText(u"cdef"));
  lock.join();
  EXPECT_EQ(pressesIn(lockers), 0);
  m_desk.person().releaseAll();
}

TEST_F(Grabs, ThatAreRefusedAreNone) {
  const KeyboardGrab prompt(connection());
  expectSecure(true);
  {
    const e2e::XConnection second(m_desk.server().display());
    EXPECT_FALSE(grabKeyboard(second, connection().root()));
  }
  // Neither the refusal nor the end of who was refused changes anything.
  type(u"s"_s);
  expectTold(u"*"_s);
  EXPECT_TRUE(secureInput().isSecureEventInputEnabled());
  EXPECT_EQ(secureInput().ownerProcessIdentifier(), getpid());
}

TEST_F(Grabs, EndWithTheClient) {
  {
    const e2e::XConnection second(m_desk.server().display());
    ASSERT_TRUE(grabKeyboard(second, focusOf(connection())));
    expectSecure(true);
  }
  expectSecure(false);
  EXPECT_EQ(secureInput().ownerProcessIdentifier(), std::nullopt);
}

// The end of a client is known ahead of the keys before it.
TEST_F(Grabs, ThatEndWithTheClientLetOutNothingThatWaitsToBeRead) {
  BareWindow window(connection());
  std::unique_lock<std::mutex> stopped;
  {
    const e2e::XConnection second(m_desk.server().display());
    ASSERT_TRUE(grabKeyboard(second, focusOf(connection())));
    expectSecure(true);
    stopped = stopReading(window);
    type(u"sEc"_s);
  }
  expectSecure(false);
  synchronise();
  type(u"cd"_s);
  stopped.unlock();
  expectTold(u"*cd"_s);
}

TEST_F(Grabs, AreNoticedWhereAWindowOfThisProgramHasTheFocusToo) {
  const e2e::XConnection program(m_desk.server().display());
  m_desk.setOwnClient(program);
  BareWindow own(program);
  own.focus();
  {
    const KeyboardGrab prompt(connection());
    expectSecure(true);
    EXPECT_EQ(secureInput().ownerProcessIdentifier(), getpid());
  }
  expectSecure(false);
  m_desk.closeSession();
}

TEST_F(Grabs, EndWithTheWindow) {
  BareWindow prompt(connection());
  prompt.focus();
  ASSERT_TRUE(grabKeyboard(connection(), prompt.id()));
  expectSecure(true);
  type(u"s"_s);
  prompt.unmap();
  expectSecure(false);
}

TEST_F(Grabs, OfOtherDevicesAreNone) {
  constexpr xcb_input_device_id_t masterPointer = 2;
  ASSERT_TRUE(grabDevice(connection(), focusOf(connection()), masterPointer));
  type(u"a"_s);
  expectTold(u"a"_s);
  EXPECT_FALSE(secureInput().isSecureEventInputEnabled());
  ungrabDevice(connection(), masterPointer);
}

// Those that a client has when the adapters begin.
class OlderGrabs : public Grabs {
 protected:
  OlderGrabs() { m_desk.closeSession(); }
};

TEST_F(OlderGrabs, AreNoticedAndEndWhenTheKeyboardIsGivenBack) {
  {
    const KeyboardGrab prompt(connection());
    m_desk.openSession();
    expectSecure(true);
    EXPECT_EQ(secureInput().ownerProcessIdentifier(), std::nullopt);
    type(u"sEc"_s);
  }
  expectSecure(false);
  type(u"cd"_s);
  expectTold(u"*cd"_s);
  expectSecure(false);
}

TEST_F(OlderGrabs, ThroughXInputAreNoticedAndEndLikeOthers) {
  ASSERT_TRUE(grabDevice(connection(), focusOf(connection()), masterKeyboard));
  m_desk.openSession();
  expectSecure(true);
  type(u"s"_s);
  ungrabDevice(connection(), masterKeyboard);
  expectSecure(false);
  type(u"a"_s);
  expectTold(u"*a"_s);
  expectSecure(false);
}

TEST_F(OlderGrabs, EndWithTheClientThoughNothingIsTyped) {
  {
    const e2e::XConnection second(m_desk.server().display());
    ASSERT_TRUE(grabKeyboard(second, focusOf(connection())));
    m_desk.openSession();
    expectSecure(true);
  }
  expectSecure(false);
}

TEST_F(OlderGrabs, OutlastOtherClientsThatGiveBackWhatTheyDoNotHave) {
  const KeyboardGrab prompt(connection());
  m_desk.openSession();
  expectSecure(true);
  ungrabKeyboard(e2e::XConnection(m_desk.server().display()));
  type(u"s"_s);
  EXPECT_TRUE(secureInput().isSecureEventInputEnabled());
  expectTold(u"*"_s);
}

TEST_F(OlderGrabs, AreNotMadeUp) {
  m_desk.openSession();
  type(u"a"_s);
  expectTold(u"a"_s);
  EXPECT_FALSE(secureInput().isSecureEventInputEnabled());
  const KeyboardGrab prompt(connection());  // no other client is in its way
}

// A client that takes the keyboard, and has a window that it says something of.
class GrabsOfMenus : public Grabs {
 protected:
  void expectNeverSecure() {
    EXPECT_FALSE(e2e::waitUntil([&] { return secureInput().isSecureEventInputEnabled(); }, 1s));
  }

  e2e::XConnection m_client{m_desk.server().display()};
};

class GrabsOfMenusThatSaySo : public GrabsOfMenus,
                              public testing::WithParamInterface<const char*> {};

TEST_P(GrabsOfMenusThatSaySo, AreNoSecretAndAreNotHeardEither) {
  type(u"ab"_s);
  expectTold(u"ab"_s);
  BareWindow menu(m_client);
  menu.setType(GetParam());
  ASSERT_TRUE(grabKeyboard(m_client, menu.id()));
  expectNeverSecure();
  type(u"n"_s);
  ungrabKeyboard(m_client);
  type(u"c"_s);
  expectTold(u"ab*c"_s);
}

INSTANTIATE_TEST_SUITE_P(, GrabsOfMenusThatSaySo,
                         testing::Values("MENU", "DROPDOWN_MENU", "POPUP_MENU", "COMBO"),
                         [](const auto& row) { return std::string(row.param); });

TEST_F(GrabsOfMenus, AreSecretAgainOnceTheMenuHasClosed) {
  BareWindow menu(m_client);
  menu.setType("POPUP_MENU");
  BareWindow prompt(m_client);
  ASSERT_TRUE(grabKeyboard(m_client, prompt.id()));
  expectNeverSecure();
  menu.unmap();
  expectSecure(true);
}

TEST_F(GrabsOfMenus, AreThoseOfTheClientThatHasTheMenu) {
  const e2e::XConnection other(m_desk.server().display());
  BareWindow menu(other);
  menu.setType("POPUP_MENU");
  ASSERT_TRUE(grabKeyboard(m_client, connection().root()));
  expectSecure(true);
}

TEST_F(GrabsOfMenus, AreNotThoseOfOtherWindows) {
  BareWindow dialog(m_client);
  dialog.setType("DIALOG");
  BareWindow toolTip(m_client);
  toolTip.setType("TOOLTIP");
  BareWindow bare(m_client);
  BareWindow tornOff(m_client, false);
  tornOff.setType("MENU");
  ASSERT_TRUE(grabKeyboard(m_client, dialog.id()));
  expectSecure(true);
}

// Menus that say nothing of themselves belong to a window, and grab the pointer as well.
class GrabsOfPopups : public GrabsOfMenus {
 protected:
  void grabPointer() {
    const auto reply = e2e::owned(xcb_grab_pointer_reply(
        m_client.get(),
        xcb_grab_pointer(m_client.get(), 0, m_popup.id(), 0, XCB_GRAB_MODE_ASYNC,
                         XCB_GRAB_MODE_ASYNC, XCB_WINDOW_NONE, XCB_CURSOR_NONE, XCB_CURRENT_TIME),
        nullptr));
    ASSERT_TRUE(reply);
    ASSERT_EQ(reply->status, XCB_GRAB_STATUS_SUCCESS);
  }

  BareWindow m_window{m_client, false};
  BareWindow m_popup{m_client};
};

TEST_F(GrabsOfPopups, AreNoSecret) {
  m_popup.setOwner(m_window);
  grabPointer();
  ASSERT_TRUE(grabKeyboard(m_client, m_popup.id()));
  expectNeverSecure();
}

TEST_F(GrabsOfPopups, ThroughXInputAreNoneEither) {
  m_popup.setOwner(m_window);
  grabPointer();
  ASSERT_TRUE(grabDevice(m_client, m_popup.id(), masterKeyboard));
  expectNeverSecure();
}

TEST_F(GrabsOfPopups, AreSecretWithoutThePointer) {
  m_popup.setOwner(m_window);
  ASSERT_TRUE(grabKeyboard(m_client, m_popup.id()));
  expectSecure(true);
}

// As a prompt that keeps the window manager out.
TEST_F(GrabsOfPopups, AreSecretWhereTheyBelongToNoWindow) {
  grabPointer();
  ASSERT_TRUE(grabKeyboard(m_client, m_popup.id()));
  expectSecure(true);
}

TEST_F(GrabsOfPopups, AreSecretWhereTheyBelongToAWindowThatIsNotShown) {
  m_popup.setOwner(m_window);
  m_window.unmap();
  grabPointer();
  ASSERT_TRUE(grabKeyboard(m_client, m_popup.id()));
  expectSecure(true);
}

// As a prompt that shows a tool tip.
TEST_F(GrabsOfPopups, AreSecretWhereTheGrabIsForTheWindowThatTheyBelongTo) {
  m_popup.setOwner(m_window);
  grabPointer();
  ASSERT_TRUE(grabKeyboard(m_client, m_window.id()));
  expectSecure(true);
}

// Its menus say nothing of themselves, and neither do its frames.
class GrabsOfWindowManagers : public GrabsOfMenus {
 protected:
  GrabsOfWindowManagers() {
    const xcb_window_t root = m_client.root();
    const xcb_window_t check = m_check.id();
    const xcb_atom_t name = m_client.atom("_NET_SUPPORTING_WM_CHECK");
    xcb_change_property(m_client.get(), XCB_PROP_MODE_REPLACE, root, name, XCB_ATOM_WINDOW, 32, 1,
                        &check);
    xcb_unmap_window(m_client.get(), check);
    m_client.synchronise();
  }

  void resize(const BareWindow& window, uint32_t width, uint32_t height) {
    const uint32_t size[] = {width, height};
    xcb_configure_window(m_client.get(), window.id(),
                         XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, size);
    m_client.synchronise();
  }

  BareWindow m_check{m_client};
  BareWindow m_window{m_client};
};

TEST_F(GrabsOfWindowManagers, AreNoSecretWhileTheyShowAMenu) {
  resize(m_window, 150, 200);
  ASSERT_TRUE(grabKeyboard(m_client, m_client.root()));
  expectNeverSecure();
}

TEST_F(GrabsOfWindowManagers, AreSecretWhileTheyShowNone) {
  ASSERT_TRUE(grabKeyboard(m_client, m_client.root()));
  expectSecure(true);
}

TEST_F(GrabsOfWindowManagers, AreSecretBehindWhatCoversTheScreen) {
  resize(m_window, 32767, 32767);
  ASSERT_TRUE(grabKeyboard(m_client, m_client.root()));
  expectSecure(true);
}

TEST_F(GrabsOfWindowManagers, TakeNoFrameForAMenu) {
  resize(m_window, 150, 200);
  BareWindow application(connection());
  xcb_reparent_window(connection().get(), application.id(), m_window.id(), 0, 0);
  connection().synchronise();
  ASSERT_TRUE(grabKeyboard(m_client, m_client.root()));
  expectSecure(true);
}

TEST(GrabsWithoutResourceExtension, AreNoticedWithoutAName) {
  KeyboardDesk desk({.layouts = "us"}, {"-extension", "X-Resource"});
  const KeyboardGrab prompt(desk.connection());
  const SecureInput& secureInput = desk.session().secureInput();
  EXPECT_TRUE(e2e::waitUntil([&] { return secureInput.isSecureEventInputEnabled(); }, 10s));
  EXPECT_EQ(secureInput.ownerProcessIdentifier(), std::nullopt);
  EXPECT_TRUE(desk.session().isAlive());
}

using Secrets = Grabs;

TEST_F(Secrets, AreToldAsKeysThatWereTypedAndNothingElse) {
  type(u"ab"_s);
  expectTold(u"ab"_s);
  m_desk.setSecret(true);
  type(u"sEc"_s);
  EXPECT_EQ(told(m_desk.heard(6)), u"ab*"_s);  // Shift is one of them
  m_desk.setSecret(false);
  type(u"cd"_s);
  expectTold(u"ab*cd"_s);
}

TEST_F(Secrets, DoNotEndTheDeadKeyThatWasPressedBefore) {
  m_desk.changeLayout({.layouts = "de"});
  m_desk.person().tap(XKB_KEY_dead_acute);
  type(u"x"_s);
  m_desk.person().tap(XKB_KEY_dead_acute);
  m_desk.setSecret(true);
  type(u"s"_s);
  expectTold(u"*"_s);
  m_desk.setSecret(false);
  type(u"e"_s);
  expectTold(u"*e"_s);
}

TEST_F(Secrets, StayUnknownUpToTheFence) {
  BareWindow window(connection());
  m_desk.setSecret(true);
  auto stopped = stopReading(window);
  type(u"sEc"_s);
  m_desk.session().fenceKeys();
  synchronise();
  m_desk.setSecret(false);
  type(u"cd"_s);
  stopped.unlock();
  expectTold(u"*cd"_s);
}

TEST_F(Secrets, HaveWhatWasTypedForgottenWhereAWindowOfThisProgramHasTheKeyboardToo) {
  const e2e::XConnection program(m_desk.server().display());
  m_desk.setOwnClient(program);
  BareWindow own(program);
  m_desk.letAdaptersCatchUp();  // with whatever had the keyboard at first
  const int moves = m_desk.focusMoves();
  own.focus();
  ASSERT_TRUE(e2e::waitUntil([&] { return m_desk.focusMoves() > moves; }, 10s));
  m_desk.session().forgetWhatWasTyped();
  expectTold(u"*"_s);
  m_desk.closeSession();
}

TEST_F(Secrets, HaveWhatWasTypedForgottenOnRequest) {
  type(u"ab"_s);
  expectTold(u"ab"_s);
  m_desk.session().forgetWhatWasTyped();
  type(u"c"_s);
  expectTold(u"ab*c"_s);
}

}  // namespace
}  // namespace zarvy::x11
