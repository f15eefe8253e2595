#include "platform/x11/typing/SpareKeys.h"

#include <algorithm>

#include "platform/x11/connection/Connection.h"
#include "platform/x11/connection/XkbProtocol.h"
#include "platform/x11/hearing/KeyHearing.h"
#include "platform/x11/typing/KeySymbolTable.h"
#include "platform/x11/typing/TargetBarrier.h"

namespace zarvy::x11 {

SpareKeys::SpareKeys(Connection& connection, KeyHearing& hearing, TargetBarrier& barrier)
    : m_connection(connection),
      m_hearing(hearing),
      m_barrier(barrier),
      m_writer(connection, hearing) {}

void SpareKeys::follow(const std::shared_ptr<const KeymapSnapshot>& snapshot) {
  if (snapshot == m_snapshot) return;
  const bool first = m_snapshot == nullptr;
  m_snapshot = snapshot;
  if (first || m_levels != m_writer.levels() || !serverStillHasThem()) startAnew(*snapshot);
}

bool SpareKeys::serverStillHasThem() const {
  const auto table = KeySymbolTable::read(m_connection, XCB_XKB_ID_USE_CORE_KBD);
  if (!table) return true;
  return std::all_of(m_pool.slots().begin(), m_pool.slots().end(), [&](const auto& slot) {
    if (slot.character == 0) return true;
    const auto symbols = table->symbols(slot.keycode);
    const auto level = static_cast<std::size_t>(slot.level);
    return level < symbols.size() && symbols[level] == xkb_utf32_to_keysym(slot.character);
  });
}

// What is left of an earlier pool is given back first, so that its keys are free to be taken anew.
void SpareKeys::startAnew(const KeymapSnapshot& snapshot) {
  giveBack();
  std::vector<uint8_t> keycodes = snapshot.spareKeycodes();
  if (const auto table = KeySymbolTable::read(m_connection, XCB_XKB_ID_USE_CORE_KBD)) {
    for (std::size_t code = 0; code < m_keycodes.size(); ++code) {
      const auto keycode = static_cast<uint8_t>(code);
      const bool known = std::find(keycodes.begin(), keycodes.end(), keycode) != keycodes.end();
      if (m_keycodes[code] && !known && table->symbols(keycode).empty()) {
        keycodes.push_back(keycode);
      }
    }
  }
  m_keycodes.reset();
  for (const uint8_t keycode : keycodes) m_keycodes.set(keycode);
  m_levels = m_writer.levels();
  m_pool.reset(keycodes, m_levels);
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
  const SpareKeyPool::Plan plan = m_pool.fit(wanted);
  if (plan.changes.empty()) return;
  if (plan.replacesUnread) awaitReaders();
  if (m_writer.write(symbolsOfChangedKeys(plan))) m_pool.apply(plan);
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
  for (const xcb_window_t window : m_unreadWindows) m_barrier.waitUntilRead(window);
  m_unreadWindows.clear();
  m_pool.markAllRead();
}

}  // namespace zarvy::x11
