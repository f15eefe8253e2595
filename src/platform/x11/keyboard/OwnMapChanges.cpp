#include "platform/x11/keyboard/OwnMapChanges.h"

#include <algorithm>

namespace zarvy::x11 {

namespace {

constexpr std::size_t rememberedChanges = 64;

}  // namespace

// Under the lock, so that no event of a change is looked at before the change is on record.
void OwnMapChanges::make(const std::function<uint32_t()>& request) {
  const std::lock_guard lock(m_mutex);
  m_sequences.push_back(request());
  if (m_sequences.size() > rememberedChanges) m_sequences.pop_front();
}

bool OwnMapChanges::contains(uint32_t sequence) const {
  const std::lock_guard lock(m_mutex);
  return std::find(m_sequences.begin(), m_sequences.end(), sequence) != m_sequences.end();
}

}  // namespace zarvy::x11
