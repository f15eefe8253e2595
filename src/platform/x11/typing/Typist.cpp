#include "platform/x11/typing/Typist.h"

#include <algorithm>
#include <chrono>
#include <thread>
#include <utility>

#include "platform/x11/connection/Connection.h"
#include "platform/x11/keyboard/LiveKeymap.h"
#include "platform/x11/keyboard/PersonsKeys.h"
#include "platform/x11/typing/KeySender.h"
#include "platform/x11/typing/TargetBarrier.h"
#include "platform/x11/typing/TypingRun.h"

namespace zarvy::x11 {

namespace {

using namespace std::chrono_literals;

constexpr auto longestGrab = 1s;
constexpr auto pauseDuringGrab = 10ms;

}  // namespace

Typist::Typist(Connection& connection, Keyboard keyboard, OwnMapChanges& ownChanges,
               KeySender& sender, HeldModifiers& modifiers, TargetBarrier& barrier,
               const WindowProperties& windows)
    : m_connection(connection),
      m_keyboard(keyboard),
      m_sender(sender),
      m_modifiers(modifiers),
      m_barrier(barrier),
      m_grabProbe(connection),
      m_scratchKeys(connection, ownChanges, keyboard.keymap, barrier, windows,
                    [this] { static_cast<void>(lookOnceModifiersAreUnused()); }),
      m_record(connection) {}

void Typist::beginSession() {
  m_modifiers.awaitShortcutModifiersReleased(m_keyboard.keymap.current()->modifiers());
  const std::lock_guard lock(m_mutex);
  if (m_sessions++ > 0) return;
  m_pressesBefore = m_keyboard.persons.presses();
  m_isShutOut = false;
  m_isPatient = true;
  m_textWasTyped = true;
}

void Typist::endSession() {
  const std::lock_guard lock(m_mutex);
  if (--m_sessions > 0) return;
  m_record.erase();
  m_sender.flush();
}

bool Typist::typeKey(quint16 virtualKey) {
  const std::lock_guard lock(m_mutex);
  while (isLetIn()) {
    // A person who types with a modifier is not waited for: what they type goes ahead of a
    // backspace. For the same reason the scratch keys are left alone here.
    Look seen = look();
    if (m_textWasTyped && m_barrier.awaitKeyDetour(seen.server.focus)) {
      m_textWasTyped = false;
      seen = look();
    }
    const Layout layout = keysOf(seen);
    const std::optional<uint8_t> keycode = layout.snapshot->keycodeOf(virtualKey);
    if (!keycode || !m_connection.isAlive()) return false;
    if (!holdFreeKeyboard()) {
      awaitKeyboard();
      continue;
    }
    m_record.write(layout.keyboard.number);
    TypingRun(m_connection, m_sender, m_modifiers, layout.keyboard).type({.keycode = *keycode});
    return true;
  }
  return false;
}

bool Typist::typeCharacters(std::span<const char32_t> characters,
                            std::span<const char32_t> upcoming, bool atOnce) {
  const std::lock_guard lock(m_mutex);
  bool complete = m_connection.isAlive();
  std::optional<std::size_t> roomMadeAt;
  for (std::size_t at = 0; at < characters.size();) {
    if (!isLetIn()) return false;
    const Layout layout = charactersOf(atOnce ? look() : lookOnceModifiersAreUnused());
    const auto typed = typeWhatHasAKey(layout, characters.subspan(at));
    if (!typed) {
      awaitKeyboard();
      continue;
    }
    at += *typed;
    if (at == characters.size()) break;
    if (roomMadeAt == at) {
      complete = false;
      ++at;
      continue;
    }
    awaitKeyboard();
    if (!isLetIn()) return false;
    makeRoomFor(layout, upcoming.subspan(std::min(at, upcoming.size())));
    roomMadeAt = at;
  }
  return complete;
}

bool Typist::mustWait() {
  const std::lock_guard lock(m_mutex);
  const KeycodeSet modifiers = m_keyboard.keymap.current()->modifiers().momentary;
  return m_isPatient && m_keyboard.persons.areInUse(modifiers, m_pressesBefore);
}

// How many of the first characters it has typed. Absent where another client has taken the
// keyboard.
std::optional<std::size_t> Typist::typeWhatHasAKey(const Layout& layout,
                                                   std::span<const char32_t> characters) {
  std::vector<KeyStroke> strokes;
  for (const char32_t character : characters) {
    const std::optional<KeyStroke> stroke = strokeOf(layout, character);
    if (!stroke) break;
    strokes.push_back(*stroke);
  }
  if (strokes.empty()) return 0;
  if (!holdFreeKeyboard()) return std::nullopt;
  for (std::size_t i = 0; i < strokes.size(); ++i) {
    const bool isSpare = m_scratchKeys.keycodes()[strokes[i].keycode];
    if (isSpare) m_scratchKeys.markUsed(characters[i], layout.focus);
  }
  m_textWasTyped = true;
  m_record.write(layout.keyboard.number);
  TypingRun run(m_connection, m_sender, m_modifiers, layout.keyboard);
  for (const KeyStroke& stroke : strokes) run.type(stroke);
  return strokes.size();
}

void Typist::makeRoomFor(const Layout& layout, std::span<const char32_t> text) {
  const std::vector<char32_t> missing = lacking(layout, text);
  m_scratchKeys.makeRoom(missing);
  if (missing.empty() || m_scratchKeys.capacity() > 0 || m_reportedNoScratchKeys) return;
  m_reportedNoScratchKeys = true;
  m_onNoScratchKeys();
}

void Typist::prepare(std::span<const char32_t> characters) {
  const std::lock_guard lock(m_mutex);
  const auto snapshot = m_keyboard.keymap.current();
  const bool isInUse = (m_keyboard.persons.held() & snapshot->modifiers().momentary).any();
  if (m_isAbandoned || isInUse) return;
  m_scratchKeys.follow();
  const KeyboardState state = KeyboardState::query(m_connection);
  std::vector<char32_t> wanted;
  for (uint32_t i = 0; i < snapshot->layoutCount(); ++i) {
    const uint32_t layout = (state.effectiveLayout + i) % snapshot->layoutCount();
    const auto strokes = snapshot->strokes(layout, 0, m_scratchKeys.keycodes());
    std::copy_if(characters.begin(), characters.end(), std::back_inserter(wanted),
                 [&](char32_t character) { return !strokes->contains(character); });
  }
  if (!m_scratchKeys.mustAwaitReaders(wanted)) m_scratchKeys.makeRoom(wanted);
}

void Typist::abandonSessions() {
  m_isAbandoned = true;
  m_modifiers.abandonWaits();
  m_keyboard.persons.abandonWaits();
}

void Typist::reclaimScratchKeys() {
  const std::lock_guard lock(m_mutex);
  if (m_scratchKeys.reclaim()) m_keyboard.keymap.reload();
}

void Typist::leaveNoTrace() {
  const std::lock_guard lock(m_mutex);
  m_scratchKeys.giveBack();
  m_modifiers.letGo();
}

// Window managers have the keyboard for the time of a key press.
void Typist::awaitKeyboard() {
  const auto deadline = std::chrono::steady_clock::now() + longestGrab;
  while (isLetIn() && m_grabProbe.isGrabbedByAnother() == true) {
    m_isShutOut = std::chrono::steady_clock::now() >= deadline;
    std::this_thread::sleep_for(pauseDuringGrab);
  }
}

// Keeps other clients out from here to the end of the run that follows, so that none of them takes
// the keyboard in between. False where one has it already.
bool Typist::holdFreeKeyboard() {
  xcb_grab_server(m_connection.xcb());
  if (m_grabProbe.isGrabbedByAnother() != true) return true;
  xcb_ungrab_server(m_connection.xcb());
  m_connection.flush();
  return false;
}

Typist::Look Typist::look() const {
  m_sender.awaitPosted();
  Look seen{.server = {}, .releases = m_keyboard.persons.releases()};
  seen.server = KeyboardSnapshot::take(m_connection);
  return seen;
}

// A modifier that the server knows of while its press has not been heard here yet has just been
// pressed.
Typist::Look Typist::lookOnceModifiersAreUnused() {
  PersonsKeys& persons = m_keyboard.persons;
  const KeycodeSet modifiers = m_keyboard.keymap.current()->modifiers().momentary;
  for (;;) {
    m_isPatient = m_isPatient && persons.awaitUnused(modifiers, m_pressesBefore);
    const Look seen = look();
    m_silentModifiers &= seen.server.down;
    const KeycodeSet unheard = seen.server.down & modifiers & ~m_silentModifiers & ~persons.held();
    if (unheard.none()) return seen;
    if (!persons.awaitHeard(unheard)) m_silentModifiers |= unheard;
  }
}

// The keyboard as it is for the next run.
Typist::Layout Typist::keysOf(const Look& seen) const {
  const KeyboardSnapshot& look = seen.server;
  const auto snapshot = m_keyboard.keymap.named(look.keymap);
  const KeyboardState& state = look.state;
  const ModifierKeys& keys = snapshot->modifiers();
  uint32_t unwanted = keys.shift | keys.levelThree | keys.control | keys.option | keys.command;
  if (snapshot->shiftTurnsCapsLock() || !m_scratchKeys.workUnderCapsLock()) unwanted |= keys.lock;
  const uint32_t unlocked = state.lockedModifiers & unwanted & ~keys.numLock;
  const uint32_t locked = state.lockedModifiers & ~unlocked;
  return {.snapshot = snapshot,
          .strokes = nullptr,
          .locked = locked,
          .capsLock = (locked & keys.lock) != 0,
          .keyboard = {.number = m_keyboard.persons.lastKeyboard(),
                       .keys = keys,
                       .held = look.down & keys.momentary,
                       .releases = seen.releases,
                       .latched = state.latchedModifiers,
                       .locked = unlocked},
          .focus = look.focus};
}

Typist::Layout Typist::charactersOf(const Look& seen) {
  static_cast<void>(m_keyboard.keymap.named(seen.server.keymap));  // which is followed
  m_scratchKeys.follow();
  Layout layout = keysOf(seen);
  // Layout keys that are held will have been released.
  layout.strokes = strokesOf(layout.snapshot, seen.server.state.lockedLayout, layout.locked);
  return layout;
}

std::shared_ptr<const CharacterStrokes> Typist::strokesOf(
    const std::shared_ptr<const KeymapSnapshot>& snapshot, uint32_t layout, uint32_t locked) {
  LayoutKey key{.snapshot = snapshot,
                .layout = layout,
                .locked = locked,
                .excluded = m_scratchKeys.keycodes()};
  if (!(key == m_layoutKey)) {
    m_strokes = key.snapshot->strokes(key.layout, key.locked, key.excluded);
    m_layoutKey = std::move(key);
  }
  return m_strokes;
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
  return m_scratchKeys.strokeOf(character, layout.capsLock);
}

}  // namespace zarvy::x11
