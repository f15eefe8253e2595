#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <span>
#include <vector>

#include "platform/x11/keyboard/KeyboardState.h"
#include "platform/x11/typing/HeldModifiers.h"
#include "platform/x11/typing/KeySender.h"
#include "platform/x11/typing/SpareKeys.h"

namespace zarvy::x11 {

class Connection;
class FollowedKeymap;
class OwnMapChanges;
class TargetBarrier;
class WindowProperties;

// Types characters and keys into whatever has the focus, on any layout and under any modifiers. A
// run is posted as a whole: another thread's run comes before it or after it. Any thread but the
// reader's, unless said otherwise.
class Typist {
 public:
  // The two keyboards whose keymaps matter.
  struct Keymaps {
    FollowedKeymap& typed;  // that the faked keys come from, and the characters are written with
    FollowedKeymap& heard;  // the union of all
  };

  Typist(Connection& connection, Keymaps keymaps, OwnMapChanges& ownChanges, KeySender& sender,
         HeldModifiers& modifiers, TargetBarrier& barrier, const WindowProperties& windows);

  // Called once if ever a character finds no spare key at all. On a typing thread.
  void onNoSpareKeys(std::function<void()> handler) { m_onNoSpareKeys = std::move(handler); }

  // A session is about to type `text`, the first of it first.
  void beginSession(std::span<const char32_t> text);
  void endSession();

  // False where the keyboard has no such key, or the server has gone.
  bool typeKey(quint16 virtualKey);

  // Types `characters`; `upcoming` starts with them and goes on with what the session will type
  // next, so that one change of the mapping serves for long. False where one of them was left out.
  bool typeCharacters(std::span<const char32_t> characters, std::span<const char32_t> upcoming);

  // Puts the likely characters of sessions to come on spare keys, those first that the layout in
  // force lacks.
  void prepare(std::span<const char32_t> characters);

  // Gives back what an earlier run of this program left behind. Before the reader starts.
  void reclaimSpareKeys();

  // The end is near: sessions that are still under way type nothing more and wait for nothing.
  void abandonSessions();

  // Gives the spare keys back. After the last session.
  void leaveNoTrace();

 private:
  struct Layout;  // how characters are typed right now
  class ModifierPresses;

  [[nodiscard]] Layout takeKeyboard();
  [[nodiscard]] std::vector<char32_t> lacking(const Layout& layout,
                                              std::span<const char32_t> text) const;
  [[nodiscard]] std::optional<KeyStroke> strokeOf(const Layout& layout, char32_t character) const;
  void reportIfNoSpareKeys(bool someLacking);

  Connection& m_connection;
  Keymaps m_keymaps;
  KeySender& m_sender;
  HeldModifiers& m_modifiers;
  const WindowProperties& m_windows;
  std::function<void()> m_onNoSpareKeys;

  std::atomic<bool> m_isAbandoned = false;

  std::mutex m_mutex;  // guards all below, and keeps runs whole
  SpareKeys m_spareKeys;
  int m_sessions = 0;
  bool m_reportedNoSpareKeys = false;

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
