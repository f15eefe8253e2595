#include "platform/x11/typing/ScratchKeys.h"

#include <algorithm>
#include <utility>

#include "platform/x11/connection/Connection.h"
#include "platform/x11/keyboard/LiveKeymap.h"
#include "platform/x11/typing/KeySymbolTable.h"
#include "platform/x11/typing/TargetBarrier.h"
#include "platform/x11/windows/WindowProperties.h"

namespace zarvy::x11 {

namespace {

// To change the mapping while the user does not type with Shift.
constexpr int mostAttempts = 5;

}  // namespace

ScratchKeys::ScratchKeys(Connection& connection, OwnMapChanges& ownChanges,
                         const LiveKeymap& keymap, TargetBarrier& barrier,
                         const WindowProperties& windows,
                         std::function<void()> awaitModifiersUnused)
    : m_connection(connection),
      m_keymap(keymap),
      m_barrier(barrier),
      m_windows(windows),
      m_awaitModifiersUnused(std::move(awaitModifiersUnused)),
      m_writer(connection, ownChanges, keymap) {}

// The keymap is new each time another keyboard is used. Looking at it costs nothing; the server is
// asked only where it might be that of a keyboard without the scratch keys.
void ScratchKeys::follow() {
  const auto snapshot = m_keymap.current();
  if (m_snapshot == snapshot) return;
  const bool isFirst = m_snapshot == nullptr;
  m_snapshot = snapshot;
  const bool isSame = !isFirst && m_kind == m_writer.kind();
  if (!isSame || (!looksComplete(*snapshot) && !areThere())) startOver();
}

// Keymaps are not read again for changes of this program's own, so a key may seem empty that is
// not.
bool ScratchKeys::looksComplete(const KeymapSnapshot& keymap) const {
  return std::all_of(m_pool.slots().begin(), m_pool.slots().end(), [&](const auto& slot) {
    return slot.character == 0 || keymap.hasSymbols(slot.keycode);
  });
}

bool ScratchKeys::areThere() const {
  const auto table = KeySymbolTable::read(m_connection, m_keymap.device());
  if (!table) return true;
  return std::all_of(m_pool.slots().begin(), m_pool.slots().end(), [&](const auto& slot) {
    if (slot.character == 0) return true;
    const auto symbols = table->symbols(slot.keycode);
    const auto level = static_cast<std::size_t>(slot.level);
    return level < symbols.size() && symbols[level] == xkb_utf32_to_keysym(slot.character);
  });
}

// What is left of an earlier pool is given back first, so that its keys are free to be taken again.
void ScratchKeys::startOver() {
  giveBack();
  const std::vector<uint8_t> keycodes = m_writer.freeKeys();
  m_keycodes.reset();
  for (const uint8_t keycode : keycodes) m_keycodes.set(keycode);
  m_kind = m_writer.kind();
  m_pool.reset(keycodes, m_kind.levels);
}

std::optional<KeyStroke> ScratchKeys::strokeOf(char32_t character, bool capsLock) const {
  const auto slot = m_pool.find(character);
  if (!slot) return std::nullopt;
  // Under the type of a scratch key Caps Lock swaps the levels that Shift chooses between.
  const bool upper = slot->level % 2 == 1;
  return KeyStroke{
      .keycode = slot->keycode, .shift = upper != capsLock, .levelThree = slot->level >= 2};
}

void ScratchKeys::makeRoom(std::span<const char32_t> wanted) {
  if (tryToMakeRoom(wanted)) return;
  startOver();
  static_cast<void>(tryToMakeRoom(wanted));
}

// False where the keys are not what they were taken for.
bool ScratchKeys::tryToMakeRoom(std::span<const char32_t> wanted) {
  const ScratchKeyPool::Plan plan = m_pool.fit(wanted);
  if (plan.changes.empty()) return true;
  if (plan.replacesUnread) awaitReaders();
  const auto symbols = symbolsOfChangedKeys(plan);
  auto outcome = ScratchKeyWriter::Outcome::modifierIsHeld;
  for (int attempt = 1; outcome == ScratchKeyWriter::Outcome::modifierIsHeld; ++attempt) {
    m_awaitModifiersUnused();
    outcome = m_writer.write(symbols, attempt == mostAttempts);
  }
  if (outcome == ScratchKeyWriter::Outcome::written) {
    m_pool.apply(plan);
    m_barrier.letKeymapBeRead();
  }
  return outcome != ScratchKeyWriter::Outcome::notFree;
}

std::map<uint8_t, ScratchKeySymbols> ScratchKeys::symbolsOfChangedKeys(
    const ScratchKeyPool::Plan& plan) const {
  std::map<uint8_t, ScratchKeySymbols> keys;
  for (const auto& change : plan.changes) keys[m_pool.slots()[change.slot].keycode] = {};
  for (const auto& slot : m_pool.slots()) {
    const auto key = keys.find(slot.keycode);
    if (key == keys.end() || slot.character == 0) continue;
    key->second.at(static_cast<std::size_t>(slot.level)) = xkb_utf32_to_keysym(slot.character);
  }
  for (const auto& change : plan.changes) {
    const auto& slot = m_pool.slots()[change.slot];
    keys[slot.keycode].at(static_cast<std::size_t>(slot.level)) =
        xkb_utf32_to_keysym(change.character);
  }
  return keys;
}

void ScratchKeys::markUsed(char32_t character, xcb_window_t focus) {
  m_pool.markUsed(character);
  m_unreadWindows.insert(focus);
}

bool ScratchKeys::reclaim() {
  if (!m_writer.hasRecord()) return false;
  m_writer.giveBack();
  return true;
}

void ScratchKeys::giveBack() {
  awaitReaders();
  if (!m_pool.isEmpty()) m_awaitModifiersUnused();
  m_writer.giveBack();
}

// The focus may have moved between a look at it and the keys that followed, so the window that has
// it now may have got some of them too.
void ScratchKeys::awaitReaders() {
  if (m_unreadWindows.empty()) return;
  std::set<xcb_window_t> applications = {m_windows.activeWindow()};
  for (const xcb_window_t focus : m_unreadWindows) {
    applications.insert(m_windows.topLevelOf(focus));
  }
  m_barrier.waitUntilRead(applications);
  m_unreadWindows.clear();
  m_pool.markAllRead();
}

}  // namespace zarvy::x11
