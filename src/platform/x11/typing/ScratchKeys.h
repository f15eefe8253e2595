#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <span>

#include <xcb/xcb.h>

#include "platform/x11/keyboard/KeymapSnapshot.h"
#include "platform/x11/typing/ScratchKeyPool.h"
#include "platform/x11/typing/ScratchKeyWriter.h"

namespace zarvy::x11 {

class Connection;
class LiveKeymap;
class OwnMapChanges;
class TargetBarrier;
class WindowProperties;

// The characters that the layout lacks, put on the keys that it leaves free. One thread at a time.
class ScratchKeys {
 public:
  // `keymap` is that of the union of all keyboards. `awaitModifiersUnused` is called just ahead of
  // each change of the mapping: an application of Qt 5 that reads the new one asks the server which
  // modifiers are held then, and gets a letter that was typed with Shift just before as a small
  // one.
  ScratchKeys(Connection& connection, OwnMapChanges& ownChanges, const LiveKeymap& keymap,
              TargetBarrier& barrier, const WindowProperties& windows,
              std::function<void()> awaitModifiersUnused);

  // Makes the book-keeping agree with the server's keymap, which another client may have replaced.
  // To be called ahead of the other operations whenever a run begins.
  void follow();

  // The scratch keys in use, which are no part of the user's layout.
  [[nodiscard]] const KeycodeSet& keycodes() const { return m_keycodes; }

  // How many characters fit at a time; 0 where the keyboard has no scratch key.
  [[nodiscard]] std::size_t capacity() const { return m_pool.capacity(); }

  // False where Caps Lock must be off for a scratch key to be typed.
  [[nodiscard]] bool workUnderCapsLock() const { return m_kind.isSwappedByCapsLock; }

  // How `character` is typed from its scratch key now; absent where it lies on none.
  [[nodiscard]] std::optional<KeyStroke> strokeOf(char32_t character, bool capsLock) const;

  // Puts as many of `wanted` on scratch keys as fit, the first ones first. Changes the mapping at
  // most once, and not before every window that still has to read an old use of a key has done so.
  void makeRoom(std::span<const char32_t> wanted);

  // Whether makeRoom() would have to wait for an application.
  [[nodiscard]] bool mustAwaitReaders(std::span<const char32_t> wanted) const {
    return m_pool.fit(wanted).replacesUnread;
  }

  // `character` is about to be typed from its scratch key while `focus` has the input focus.
  void markUsed(char32_t character, xcb_window_t focus);

  // Gives back the keys that a crashed run of this program still holds; true where there were any.
  bool reclaim();

  // Gives every key back, once every window that still has to read a use of one has done so.
  void giveBack();

 private:
  void awaitReaders();
  [[nodiscard]] bool looksComplete(const KeymapSnapshot& keymap) const;
  [[nodiscard]] bool areThere() const;
  void startOver();
  [[nodiscard]] bool tryToMakeRoom(std::span<const char32_t> wanted);
  [[nodiscard]] std::map<uint8_t, ScratchKeySymbols> symbolsOfChangedKeys(
      const ScratchKeyPool::Plan& plan) const;

  Connection& m_connection;
  const LiveKeymap& m_keymap;
  TargetBarrier& m_barrier;
  const WindowProperties& m_windows;
  const std::function<void()> m_awaitModifiersUnused;
  ScratchKeyWriter m_writer;
  ScratchKeyPool m_pool;
  ScratchKeyWriter::Kind m_kind;  // of each key in the pool
  KeycodeSet m_keycodes;
  std::shared_ptr<const KeymapSnapshot> m_snapshot;
  std::set<xcb_window_t> m_unreadWindows;  // that had the input focus
};

}  // namespace zarvy::x11
