#include "platform/x11/X11Session.h"

#include <atomic>
#include <optional>
#include <utility>

#include <xcb/xcb.h>

#include "base/LineOutput.h"
#include "base/Scheduler.h"
#include "platform/x11/capture/GrabRecord.h"
#include "platform/x11/capture/GrabWatch.h"
#include "platform/x11/capture/KeyCapture.h"
#include "platform/x11/capture/KeyFence.h"
#include "platform/x11/capture/OwnPosts.h"
#include "platform/x11/capture/X11HotKeys.h"
#include "platform/x11/capture/X11KeyEventSource.h"
#include "platform/x11/capture/X11SecureInput.h"
#include "platform/x11/connection/Connection.h"
#include "platform/x11/connection/EventReader.h"
#include "platform/x11/keyboard/HeldKeys.h"
#include "platform/x11/keyboard/LiveKeymap.h"
#include "platform/x11/keyboard/OwnMapChanges.h"
#include "platform/x11/keyboard/PersonsKeys.h"
#include "platform/x11/typing/HeldModifiers.h"
#include "platform/x11/typing/KeySender.h"
#include "platform/x11/typing/TargetBarrier.h"
#include "platform/x11/typing/TypingRecord.h"
#include "platform/x11/typing/Typist.h"
#include "platform/x11/typing/X11KeyEventPoster.h"
#include "platform/x11/windows/WindowProperties.h"
#include "platform/x11/windows/X11ActivationPolicy.h"
#include "platform/x11/windows/X11Workspace.h"

namespace zarvy::x11 {

using namespace Qt::Literals::StringLiterals;

bool canReachDisplay() {
  xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
  const bool isReached = xcb_connection_has_error(connection) == 0;
  xcb_disconnect(connection);
  return isReached;
}

// What can be missing.
struct X11Session::Keyboards {
  std::unique_ptr<Connection> connection;
  OwnMapChanges ownChanges;
  std::unique_ptr<LiveKeymap> keymap;  // of the union of all
  std::unique_ptr<PersonsKeys> persons;

  [[nodiscard]] static std::unique_ptr<Keyboards> open(QString* reason) {
    auto keyboards = std::make_unique<Keyboards>();
    keyboards->connection = Connection::open(reason);
    if (!keyboards->connection) return nullptr;
    Connection& connection = *keyboards->connection;
    const auto unionOfAll = static_cast<uint16_t>(connection.coreKeyboard());
    const uint16_t fake = HeldKeys(connection).ownFakeKeyboard().value_or(unionOfAll);
    keyboards->persons = std::make_unique<PersonsKeys>(fake);
    keyboards->keymap = LiveKeymap::create(connection, keyboards->ownChanges, unionOfAll);
    if (keyboards->keymap) return keyboards;
    *reason = u"The X display does not give its keyboard layout."_s;
    return nullptr;
  }
};

// In the order in which they stand on each other; what has a thread is last, so that this has ended
// before anything it calls goes.
struct X11Session::Parts {
  Parts(std::unique_ptr<Keyboards> openKeyboards, Scheduler& scheduler, Options options)
      : keyboards(std::move(openKeyboards)),
        connection(keyboards->connection.get()),
        fence(*connection),
        grabs(*connection, fence),
        secureInput(*connection, grabs, options.isOwnWindow,
                    [this, ownMenuIsOpen = options.ownMenuIsOpen] {
                      return ownWindowHasFocus || ownMenuIsOpen();
                    }),
        capture(*connection, posts, *keyboards->keymap,
                [this, mustNotBeHeard = std::move(options.mustNotBeHeard)](xcb_timestamp_t time) {
                  return fence.isAhead() || grabs.mayHide(time) || mustNotBeHeard();
                }),
        sender(*connection, posts),
        windows(*connection),
        barrier(*connection, windows, options.keyDetour),
        modifiers(*connection, sender, *keyboards->persons),
        typist(*connection, {.keymap = *keyboards->keymap, .persons = *keyboards->persons},
               keyboards->ownChanges, sender, modifiers, barrier, windows),
        source(scheduler, std::move(options.ownMenuIsOpen)),
        poster(typist),
        hotKeys(*connection, *keyboards->keymap),
        workspace(*connection, std::move(options.ownBundleIdentifier)),
        policy(*connection, windows),
        reader(*connection) {
    grabs.onFocusMoved([this, isOwnWindow = std::move(options.isOwnWindow),
                        tell = std::move(options.onFocusMoved)](xcb_window_t window) {
      ownWindowHasFocus = isOwnWindow(window);
      source.deliverForgetting();  // the caret is another one
      tell(window == XCB_WINDOW_NONE ? 0 : windows.localProcess(window));
    });
  }

  void connectReader() {
    grabs.onGrab([this] { source.deliverForgetting(); });
    capture.onPress([this](const KeyEvent& event) { source.deliver(event, ownWindowHasFocus); });
    capture.onHiddenPress([this] { source.deliverForgetting(); });
    capture.onPointerPress([this] { source.deliverForgetting(); });
    capture.onStateChange([this] { modifiers.stateChanged(); });
    capture.onForeignKey([this](const auto& key) { followKey(key); });
    capture.onKeyboardsChanged(
        [this] { keyboards->persons->keepKeyboards(HeldKeys(*connection).allKeyboards()); });
    reader.pauseBetweenReads([this] { return pauseForOwnKeys(); });
    reader.addListener([this](const auto& event) { fence.handleEvent(event); });
    reader.addListener([this](const auto& event) { grabs.handleEvent(event); });
    reader.addListener([this](const auto& event) { capture.handleEvent(event); });
    reader.addListener([this](const auto& event) { barrier.handleEvent(event); });
  }

  [[nodiscard]] std::chrono::microseconds pauseForOwnKeys() {
    const std::chrono::microseconds pause = posts.timeToCome();
    if (pause.count() == 0) source.deliverOwnKeys();
    return pause;
  }

  void followKey(const KeyCapture::ForeignKey& key) {
    if (key.isPress) {
      keyboards->persons->press(key.keyboard, key.keycode);
      if (keyboards->keymap->current()->modifiers().momentary[key.keycode]) {
        modifiers.keyPressed(key.keyboard, key.keycode, key.sequence);
      }
    } else {
      keyboards->persons->release(key.keyboard, key.keycode);
      modifiers.keyReleased(key.keycode);
    }
  }

  // What is held already.
  void lookAtHeldKeys() const {
    const HeldKeys held(*connection);
    for (const uint16_t keyboard : held.physicalKeyboards()) {
      const KeycodeSet down = held.on(keyboard);
      for (std::size_t keycode = 0; keycode < down.size(); ++keycode) {
        if (down[keycode]) keyboards->persons->press(keyboard, static_cast<uint8_t>(keycode));
      }
    }
  }

  void recordGrabs() {
    record.emplace(
        *connection,
        GrabRecord::Listener{
            .onChange = [this](const auto& change, auto client,
                               auto time) { grabs.handleRecorded(change, client, time); },
            .onClientGone = [this](auto client) { grabs.handleLostClient(client); }});
    grabs.lookAgain();
  }

  // Answers to pings arrive at the root window of the application's screen.
  void listenOnRoots() const {
    const uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    for (const xcb_window_t root : connection->roots()) {
      xcb_change_window_attributes(connection->xcb(), root, XCB_CW_EVENT_MASK, &mask);
    }
    connection->flush();
  }

  std::unique_ptr<Keyboards> keyboards;
  Connection* connection;
  OwnPosts posts;
  KeyFence fence;
  GrabWatch grabs;
  // The toolkit is slow to believe that the focus has left it, so the display's events tell.
  std::atomic<bool> ownWindowHasFocus = false;
  X11SecureInput secureInput;
  KeyCapture capture;
  KeySender sender;
  WindowProperties windows;
  TargetBarrier barrier;
  HeldModifiers modifiers;
  Typist typist;
  X11KeyEventSource source;
  X11KeyEventPoster poster;
  X11HotKeys hotKeys;
  X11Workspace workspace;
  X11ActivationPolicy policy;
  EventReader reader;
  std::optional<GrabRecord> record;
};

std::unique_ptr<X11Session> X11Session::open(Scheduler& scheduler, LineOutput& output,
                                             Options options, QString* reason) {
  auto keyboards = Keyboards::open(reason);
  if (!keyboards) return nullptr;
  auto onLost = std::move(options.onConnectionLost);
  auto parts = std::make_unique<Parts>(std::move(keyboards), scheduler, std::move(options));
  parts->connectReader();
  parts->recordGrabs();
  parts->listenOnRoots();
  releaseKeysLeftDown(*parts->connection, parts->sender);
  parts->lookAtHeldKeys();
  parts->grabs.tellFocus();
  parts->typist.reclaimScratchKeys();
  parts->typist.onNoScratchKeys([&output] {
    output.print(u"No spare keys: characters that the keyboard layout lacks are left out"_s);
  });
  Parts* raw = parts.get();
  parts->reader.start([raw, &scheduler, onLost = std::move(onLost)] {
    raw->barrier.release();
    raw->modifiers.abandonWaits();
    raw->keyboards->persons->abandonWaits();
    if (onLost) scheduler.post(onLost);
  });
  return std::unique_ptr<X11Session>(new X11Session(std::move(parts)));
}

X11Session::X11Session(std::unique_ptr<Parts> parts) : m_parts(std::move(parts)) {}

X11Session::~X11Session() {
  m_parts->typist.leaveNoTrace();
}

KeyEventSource& X11Session::keyEventSource() {
  return m_parts->source;
}
KeyEventPoster& X11Session::keyEventPoster() {
  return m_parts->poster;
}
Workspace& X11Session::workspace() {
  return m_parts->workspace;
}
SecureInput& X11Session::secureInput() {
  return m_parts->secureInput;
}
HotKeys& X11Session::hotKeys() {
  return m_parts->hotKeys;
}
ActivationPolicy& X11Session::activationPolicy() {
  return m_parts->policy;
}
void X11Session::forgetWhatWasTyped() {
  m_parts->source.deliverForgetting();
}
void X11Session::fenceKeys() {
  m_parts->fence.set();
}
qint64 X11Session::keyboardOwner() const {
  const xcb_window_t window = m_parts->windows.focusedTopLevel();
  return window == XCB_WINDOW_NONE ? 0 : m_parts->windows.localProcess(window);
}
bool X11Session::hasCompositor() const {
  return m_parts->windows.hasCompositor();
}
void X11Session::abandonTyping() {
  m_parts->typist.abandonSessions();
  m_parts->barrier.hurry();
}
bool X11Session::isAlive() const {
  m_parts->connection->synchronize();  // Qt may be the first to notice, on a connection of its own
  return m_parts->connection->isAlive();
}

}  // namespace zarvy::x11
