#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <mutex>

namespace zarvy::x11 {

// Knows which changes of a keyboard's mapping this program made itself, on keys that it has taken:
// those make no new keymap. Any thread.
class OwnMapChanges {
 public:
  // Sends a request that changes the mapping; `request` returns its sequence number.
  void make(const std::function<uint32_t()>& request);

  // Was the request with this sequence number one of them?
  [[nodiscard]] bool contains(uint32_t sequence) const;

 private:
  mutable std::mutex m_mutex;
  std::deque<uint32_t> m_sequences;  // the latest ones
};

}  // namespace zarvy::x11
