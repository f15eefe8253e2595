#include "platform/x11/typing/ScratchKeyPool.h"

#include <algorithm>
#include <numeric>
#include <unordered_set>

namespace zarvy::x11 {

void ScratchKeyPool::reset(std::span<const uint8_t> keycodes, int levels) {
  m_slots.clear();
  m_slotOf.clear();
  // Slots that need no modifier come first, for the characters that are wanted most.
  for (int level = 0; level < levels; ++level) {
    for (const uint8_t keycode : keycodes) {
      m_slots.push_back({.keycode = keycode, .level = level});
    }
  }
}

std::optional<ScratchKeyPool::Slot> ScratchKeyPool::find(char32_t character) const {
  const auto found = m_slotOf.find(character);
  if (found == m_slotOf.end()) return std::nullopt;
  return m_slots[found->second];
}

ScratchKeyPool::Plan ScratchKeyPool::fit(std::span<const char32_t> wanted) const {
  std::unordered_set<char32_t> kept;
  std::vector<char32_t> missing;
  for (const char32_t character : wanted) {
    if (kept.size() == capacity()) break;
    if (kept.insert(character).second && !m_slotOf.contains(character)) {
      missing.push_back(character);
    }
  }
  std::vector<std::size_t> oldestFirst(m_slots.size());
  std::iota(oldestFirst.begin(), oldestFirst.end(), std::size_t{0});
  std::stable_sort(oldestFirst.begin(), oldestFirst.end(),
                   [&](std::size_t left, std::size_t right) {
                     return m_slots[left].lastUse < m_slots[right].lastUse;
                   });

  Plan plan;
  auto candidate = oldestFirst.begin();
  for (const char32_t character : missing) {
    candidate = std::find_if(candidate, oldestFirst.end(), [&](std::size_t slot) {
      return !kept.contains(m_slots[slot].character);
    });
    if (candidate == oldestFirst.end()) break;
    plan.replacesUnread = plan.replacesUnread || m_slots[*candidate].isUnread;
    plan.changes.push_back({*candidate++, character});
  }
  return plan;
}

void ScratchKeyPool::apply(const Plan& plan) {
  for (const Plan::Change& change : plan.changes) m_slotOf.erase(m_slots[change.slot].character);
  for (const Plan::Change& change : plan.changes) {
    Slot& slot = m_slots[change.slot];
    slot.character = change.character;
    slot.lastUse = ++m_uses;
    slot.isUnread = false;
    m_slotOf[change.character] = change.slot;
  }
}

void ScratchKeyPool::markUsed(char32_t character) {
  const auto found = m_slotOf.find(character);
  if (found == m_slotOf.end()) return;
  m_slots[found->second].lastUse = ++m_uses;
  m_slots[found->second].isUnread = true;
}

void ScratchKeyPool::markAllRead() {
  for (Slot& slot : m_slots) slot.isUnread = false;
}

}  // namespace zarvy::x11
