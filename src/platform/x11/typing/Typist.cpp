#include "platform/x11/typing/Typist.h"

#include <algorithm>
#include <optional>

#include "platform/x11/connection/Connection.h"
#include "platform/x11/keyboard/FollowedKeymap.h"
#include "platform/x11/keyboard/KeyboardLook.h"
#include "platform/x11/windows/WindowProperties.h"

namespace zarvy::x11 {

struct Typist::Layout {
  std::shared_ptr<const KeymapSnapshot> snapshot;
  std::shared_ptr<const CharacterStrokes> strokes;
  KeycodeSet down;  // keys that are held; some of them may be needed
  bool capsLock = false;
};

// Holds Shift and LevelThree as the strokes of a run ask for them, and lets go at its end.
class Typist::ModifierPresses {
 public:
  ModifierPresses(KeySender& sender, const HeldModifiers& held, const ModifierKeys& keys)
      : m_sender(sender), m_held(held), m_keys(keys) {}
  ~ModifierPresses() { hold(false, false); }
  ModifierPresses(const ModifierPresses&) = delete;
  ModifierPresses& operator=(const ModifierPresses&) = delete;

  void hold(bool shift, bool levelThree) {
    set(m_levelThree, levelThree, m_keys.levelThreeKeys);
    set(m_shift, shift, m_keys.shiftKeys);
  }

 private:
  void set(std::optional<uint8_t>& pressed, bool wanted, const std::vector<uint8_t>& candidates) {
    if (wanted == pressed.has_value()) return;
    if (wanted) {
      pressed = m_held.freeKey(candidates);
      if (pressed) m_sender.press(*pressed);
    } else {
      m_sender.release(*pressed);
      pressed.reset();
    }
  }

  KeySender& m_sender;
  const HeldModifiers& m_held;
  const ModifierKeys& m_keys;
  std::optional<uint8_t> m_shift;
  std::optional<uint8_t> m_levelThree;
};

Typist::Typist(Connection& connection, Keymaps keymaps, OwnMapChanges& ownChanges,
               KeySender& sender, HeldModifiers& modifiers, TargetBarrier& barrier,
               const WindowProperties& windows)
    : m_connection(connection),
      m_keymaps(keymaps),
      m_sender(sender),
      m_modifiers(modifiers),
      m_windows(windows),
      m_spareKeys(connection, ownChanges, keymaps.typed, keymaps.heard, barrier) {}

void Typist::beginSession(std::span<const char32_t> text) {
  m_modifiers.awaitShortcutModifiersReleased(m_keymaps.heard.current()->modifiers());
  const std::lock_guard lock(m_mutex);
  ++m_sessions;
  if (m_isAbandoned) return;
  const Layout layout = takeKeyboard();
  m_sender.flush();
  const std::vector<char32_t> missing = lacking(layout, text);
  m_spareKeys.makeRoom(missing);
  reportIfNoSpareKeys(!missing.empty());
}

void Typist::endSession() {
  const std::lock_guard lock(m_mutex);
  if (--m_sessions == 0) m_modifiers.restore();
}

bool Typist::typeKey(quint16 virtualKey) {
  const std::lock_guard lock(m_mutex);
  if (m_isAbandoned) return false;
  const Layout layout = takeKeyboard();
  const std::optional<uint8_t> keycode = layout.snapshot->keycodeOf(virtualKey);
  if (!keycode || !m_connection.isAlive()) return false;
  if (layout.down[*keycode]) m_sender.release(*keycode);
  m_sender.tap(*keycode);
  m_sender.flush();
  return true;
}

bool Typist::typeCharacters(std::span<const char32_t> characters,
                            std::span<const char32_t> upcoming) {
  const std::lock_guard lock(m_mutex);
  if (m_isAbandoned) return false;
  Layout layout = takeKeyboard();
  std::optional<ModifierPresses> presses;
  presses.emplace(m_sender, m_modifiers, layout.snapshot->modifiers());
  const xcb_window_t window = lacking(layout, characters).empty() ? xcb_window_t{XCB_WINDOW_NONE}
                                                                  : m_windows.activeWindow();
  bool complete = m_connection.isAlive();
  for (std::size_t i = 0; i < characters.size(); ++i) {
    const char32_t character = characters[i];
    std::optional<KeyStroke> stroke = strokeOf(layout, character);
    if (!stroke) {
      presses.reset();
      m_sender.flush();
      m_spareKeys.makeRoom(lacking(layout, upcoming.subspan(std::min(i, upcoming.size()))));
      layout = takeKeyboard();  // the wait may have been long
      presses.emplace(m_sender, m_modifiers, layout.snapshot->modifiers());
      stroke = strokeOf(layout, character);
    }
    if (!stroke) {
      complete = false;
      continue;
    }
    presses->hold(stroke->shift, stroke->levelThree);
    if (layout.down[stroke->keycode]) {
      // A key that is down already types nothing when it is pressed.
      m_sender.release(stroke->keycode);
      layout.down.reset(stroke->keycode);
    }
    m_sender.tap(stroke->keycode);
    if (m_spareKeys.keycodes()[stroke->keycode]) m_spareKeys.markUsed(character, window);
  }
  presses.reset();
  m_sender.flush();
  return complete;
}

void Typist::prepare(std::span<const char32_t> characters) {
  const std::lock_guard lock(m_mutex);
  if (m_isAbandoned) return;
  const auto snapshot = m_keymaps.typed.current();
  m_spareKeys.follow();
  const KeyboardState state = KeyboardState::query(m_connection);
  std::vector<char32_t> wanted;
  for (uint32_t i = 0; i < snapshot->layoutCount(); ++i) {
    const uint32_t layout = (state.effectiveLayout + i) % snapshot->layoutCount();
    const auto strokes = snapshot->strokes(layout, 0, m_spareKeys.keycodes());
    std::copy_if(characters.begin(), characters.end(), std::back_inserter(wanted),
                 [&](char32_t character) { return !strokes->contains(character); });
  }
  m_spareKeys.makeRoom(wanted);
}

void Typist::abandonSessions() {
  m_isAbandoned = true;
  m_modifiers.abandonWaits();
}

void Typist::reclaimSpareKeys() {
  const std::lock_guard lock(m_mutex);
  if (!m_spareKeys.reclaim()) return;
  m_keymaps.typed.reload();
  m_keymaps.heard.reload();
}

void Typist::leaveNoTrace() {
  const std::lock_guard lock(m_mutex);
  m_spareKeys.giveBack();
  m_modifiers.letGo();
}

// The keyboard as it is at the start of a run, with the user's modifiers out of the way.
Typist::Layout Typist::takeKeyboard() {
  Layout layout;
  const KeyboardLook look = KeyboardLook::take(m_connection, m_keymaps.typed.device());
  const auto heard = m_keymaps.heard.named(look.heardKeymap);
  layout.snapshot = m_keymaps.typed.named(look.typedKeymap);
  m_spareKeys.follow();
  const KeyboardState& state = look.state;
  layout.down = look.down;
  const ModifierKeys& keys = layout.snapshot->modifiers();
  // What a key that is down holds was decided by the keyboard that it was pressed on.
  const KeycodeSet held = look.down & (keys.momentary | heard->modifiers().momentary);
  uint32_t unwanted = keys.shift | keys.levelThree | keys.control | keys.option | keys.command;
  if (layout.snapshot->shiftTurnsCapsLock() || !m_spareKeys.workUnderCapsLock()) {
    unwanted |= keys.lock;
  }
  const uint32_t unlocked = state.lockedModifiers & unwanted & ~keys.numLock;
  m_modifiers.clear(keys, held, state.latchedModifiers, unlocked);
  const uint32_t locked = state.lockedModifiers & ~unlocked;
  layout.down &= ~held;
  layout.capsLock = (locked & keys.lock) != 0;
  LayoutKey key{.snapshot = layout.snapshot,
                .layout = state.lockedLayout,  // held layout keys have just been released
                .locked = locked,
                .excluded = m_spareKeys.keycodes()};
  if (!(key == m_layoutKey)) {
    m_strokes = key.snapshot->strokes(key.layout, key.locked, key.excluded);
    m_layoutKey = std::move(key);
  }
  layout.strokes = m_strokes;
  return layout;
}

std::vector<char32_t> Typist::lacking(const Layout& layout, std::span<const char32_t> text) const {
  std::vector<char32_t> missing;
  std::copy_if(text.begin(), text.end(), std::back_inserter(missing),
               [&](char32_t character) { return !layout.strokes->contains(character); });
  return missing;
}

std::optional<KeyStroke> Typist::strokeOf(const Layout& layout, char32_t character) const {
  const auto found = layout.strokes->find(character);
  if (found != layout.strokes->end()) return found->second;
  return m_spareKeys.strokeOf(character, layout.capsLock);
}

void Typist::reportIfNoSpareKeys(bool someLacking) {
  if (!someLacking || m_spareKeys.capacity() > 0 || m_reportedNoSpareKeys) return;
  m_reportedNoSpareKeys = true;
  m_onNoSpareKeys();
}

}  // namespace zarvy::x11
