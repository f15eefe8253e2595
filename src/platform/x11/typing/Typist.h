#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <vector>

#include "platform/x11/capture/GrabProbe.h"
#include "platform/x11/keyboard/KeyboardState.h"
#include "platform/x11/typing/HeldModifiers.h"
#include "platform/x11/typing/ScratchKeys.h"
#include "platform/x11/typing/TypingRecord.h"

namespace zarvy::x11 {

class Connection;
class LiveKeymap;
class KeySender;
class OwnMapChanges;
class TargetBarrier;
class WindowProperties;

// Types characters and keys into whatever has the focus, on any layout and under any modifiers. A
// run is posted as a whole: another thread's run comes before it or after it. Any thread but the
// reader's, unless said otherwise.
//
// It types on the keyboard that the user typed on last, as KeySender says why, and the user types
// on meanwhile: each stroke stands for itself, and a user who types with a modifier held may finish
// first.
//
// While another client has the keyboard for itself nothing is typed: a menu would carry it out, and
// a screen locker take it for a password. What is left of a session whose turn does not come soon
// is dropped.
class Typist {
 public:
  // What there is of the keyboard. `keymap` is that of the union of all keyboards.
  struct Keyboard {
    LiveKeymap& keymap;
    PersonsKeys& persons;
  };

  Typist(Connection& connection, Keyboard keyboard, OwnMapChanges& ownChanges, KeySender& sender,
         HeldModifiers& modifiers, TargetBarrier& barrier, const WindowProperties& windows);

  // Called once if ever a character finds no scratch key at all. On a typing thread.
  void onNoScratchKeys(std::function<void()> handler) { m_onNoScratchKeys = std::move(handler); }

  // A session is about to type.
  void beginSession();
  void endSession();

  // False where the keyboard has no such key, another client keeps it, or the server is gone.
  bool typeKey(quint16 virtualKey);

  // Types `characters`; `upcoming` starts with them and goes on with what the session will type
  // next, so that one change of the mapping serves for long. False where one of them was left out.
  // Waits ahead of each run for a person who types with a modifier held, unless it is to be
  // `atOnce`.
  bool typeCharacters(std::span<const char32_t> characters, std::span<const char32_t> upcoming,
                      bool atOnce);

  // Whether typeCharacters() would wait now.
  [[nodiscard]] bool mustWait();

  // Puts the likely characters of sessions to come on scratch keys, those first that the layout in
  // force lacks. Does nothing where it would have to wait, and a session with it.
  void prepare(std::span<const char32_t> characters);

  // Gives back what an earlier run of this program left behind. Before the reader starts.
  void reclaimScratchKeys();

  // The end is near: sessions that are still under way type nothing more and wait for nothing.
  void abandonSessions();

  // Gives the scratch keys back. After the last session.
  void leaveNoTrace();

 private:
  // How keys are typed right now; and characters, where there are strokes.
  struct Layout {
    std::shared_ptr<const KeymapSnapshot> snapshot;
    std::shared_ptr<const CharacterStrokes> strokes;
    uint32_t locked = 0;  // modifiers that stay so
    bool capsLock = false;
    HeldModifiers::RunKeyboard keyboard;
    xcb_window_t focus = XCB_WINDOW_NONE;
  };

  // What the server says of the keyboard, and what had been heard just before.
  struct Look {
    KeyboardSnapshot server;
    std::array<uint32_t, 256> releases{};  // as PersonsKeys counts them
  };
  [[nodiscard]] bool isLetIn() const { return !m_isAbandoned && !m_isShutOut; }
  void awaitKeyboard();
  [[nodiscard]] bool holdFreeKeyboard();
  [[nodiscard]] Look look() const;
  [[nodiscard]] Look lookOnceModifiersAreUnused();
  [[nodiscard]] Layout keysOf(const Look& seen) const;
  [[nodiscard]] Layout charactersOf(const Look& seen);
  [[nodiscard]] std::shared_ptr<const CharacterStrokes> strokesOf(
      const std::shared_ptr<const KeymapSnapshot>& snapshot, uint32_t layout, uint32_t locked);
  [[nodiscard]] std::vector<char32_t> lacking(const Layout& layout,
                                              std::span<const char32_t> text) const;
  [[nodiscard]] std::optional<KeyStroke> strokeOf(const Layout& layout, char32_t character) const;
  [[nodiscard]] std::optional<std::size_t> typeWhatHasAKey(const Layout& layout,
                                                           std::span<const char32_t> characters);
  void makeRoomFor(const Layout& layout, std::span<const char32_t> text);

  Connection& m_connection;
  Keyboard m_keyboard;
  KeySender& m_sender;
  HeldModifiers& m_modifiers;
  TargetBarrier& m_barrier;
  const GrabProbe m_grabProbe;
  std::function<void()> m_onNoScratchKeys;

  std::atomic<bool> m_isAbandoned = false;

  std::mutex m_mutex;  // guards all below, and keeps runs whole
  ScratchKeys m_scratchKeys;
  TypingRecord m_record;
  int m_sessions = 0;
  uint64_t m_pressesBefore = 0;  // by others, when the first of the present sessions began
  bool m_isShutOut = false;      // another client kept the keyboard from the present sessions
  bool m_isPatient = true;       // the present sessions wait for a person who types with a modifier
  KeycodeSet m_silentModifiers;  // held, though no press of them is ever heard
  bool m_textWasTyped = false;   // by the user or by sessions, since the last key
  bool m_reportedNoScratchKeys = false;

  struct LayoutKey {
    std::shared_ptr<const KeymapSnapshot> snapshot;
    uint32_t layout = 0;
    uint32_t locked = 0;
    KeycodeSet excluded;
    bool operator==(const LayoutKey&) const = default;
  };
  LayoutKey m_layoutKey;
  std::shared_ptr<const CharacterStrokes> m_strokes;  // of m_layoutKey
};

}  // namespace zarvy::x11
