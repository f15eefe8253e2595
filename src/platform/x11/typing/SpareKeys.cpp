#include "platform/x11/typing/SpareKeys.h"

#include <algorithm>

#include "platform/x11/connection/Connection.h"
#include "platform/x11/keyboard/FollowedKeymap.h"
#include "platform/x11/typing/KeySymbolTable.h"
#include "platform/x11/typing/TargetBarrier.h"

namespace zarvy::x11 {

SpareKeys::SpareKeys(Connection& connection, OwnMapChanges& ownChanges, const FollowedKeymap& typed,
                     const FollowedKeymap& heard, TargetBarrier& barrier)
    : m_connection(connection),
      m_typed(typed),
      m_heard(heard),
      m_barrier(barrier),
      m_writer(connection, ownChanges, typed) {}

// The keymap that is heard is new each time another keyboard is used. Looking at it costs nothing;
// the server is asked only where it might be that of a keyboard without the spare keys.
void SpareKeys::follow() {
  const auto typed = m_typed.current();
  const auto heard = m_heard.current();
  const bool isFirst = m_typedSnapshot == nullptr;
  const bool isTypedNew = m_typedSnapshot != typed;
  const bool isHeardSuspect = m_heardSnapshot != heard && !looksComplete(*heard);
  m_typedSnapshot = typed;
  m_heardSnapshot = heard;
  const bool hasTyped =
      !isTypedNew || (!isFirst && m_kind == m_writer.kind() && areOn(m_typed.device()));
  if (!hasTyped || (isHeardSuspect && !areOn(m_heard.device()))) startAnew();
}

// Keymaps are not read again for changes of this program's own, so a key may seem empty that is
// not.
bool SpareKeys::looksComplete(const KeymapSnapshot& keymap) const {
  return std::all_of(m_pool.slots().begin(), m_pool.slots().end(), [&](const auto& slot) {
    return slot.character == 0 || keymap.hasSymbols(slot.keycode);
  });
}

bool SpareKeys::areOn(uint16_t device) const {
  const auto table = KeySymbolTable::read(m_connection, device);
  if (!table) return true;
  return std::all_of(m_pool.slots().begin(), m_pool.slots().end(), [&](const auto& slot) {
    if (slot.character == 0) return true;
    const auto symbols = table->symbols(slot.keycode);
    const auto level = static_cast<std::size_t>(slot.level);
    return level < symbols.size() && symbols[level] == xkb_utf32_to_keysym(slot.character);
  });
}

// What is left of an earlier pool is given back first, so that its keys are free to be taken anew.
void SpareKeys::startAnew() {
  giveBack();
  const std::vector<uint8_t> keycodes = m_writer.freeKeys();
  m_keycodes.reset();
  for (const uint8_t keycode : keycodes) m_keycodes.set(keycode);
  m_kind = m_writer.kind();
  m_pool.reset(keycodes, m_kind.levels);
}

std::optional<KeyStroke> SpareKeys::strokeOf(char32_t character, bool capsLock) const {
  const auto slot = m_pool.find(character);
  if (!slot) return std::nullopt;
  // Under the type of a spare key Caps Lock swaps the levels that Shift chooses between.
  const bool upper = slot->level % 2 == 1;
  return KeyStroke{
      .keycode = slot->keycode, .shift = upper != capsLock, .levelThree = slot->level >= 2};
}

void SpareKeys::makeRoom(std::span<const char32_t> wanted) {
  if (tryToMakeRoom(wanted)) return;
  startAnew();
  static_cast<void>(tryToMakeRoom(wanted));
}

// False where the keys are not what they were taken for.
bool SpareKeys::tryToMakeRoom(std::span<const char32_t> wanted) {
  const SpareKeyPool::Plan plan = m_pool.fit(wanted);
  if (plan.changes.empty()) return true;
  if (plan.replacesUnread) awaitReaders();
  const auto outcome = m_writer.write(symbolsOfChangedKeys(plan));
  if (outcome == SpareKeyWriter::Outcome::written) m_pool.apply(plan);
  return outcome != SpareKeyWriter::Outcome::notFree;
}

std::map<uint8_t, SpareKeySymbols> SpareKeys::symbolsOfChangedKeys(
    const SpareKeyPool::Plan& plan) const {
  std::map<uint8_t, SpareKeySymbols> keys;
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

void SpareKeys::markUsed(char32_t character, xcb_window_t window) {
  m_pool.markUsed(character);
  m_unreadWindows.insert(window);
}

bool SpareKeys::reclaim() {
  if (!m_writer.hasRecord()) return false;
  m_writer.giveBack();
  return true;
}

void SpareKeys::giveBack() {
  awaitReaders();
  m_writer.giveBack();
}

void SpareKeys::awaitReaders() {
  if (m_unreadWindows.empty()) return;
  m_barrier.waitUntilRead(m_unreadWindows);
  m_unreadWindows.clear();
  m_pool.markAllRead();
}

}  // namespace zarvy::x11
