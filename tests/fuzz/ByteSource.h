#pragma once

#include <algorithm>
#include <cstring>
#include <type_traits>

#include "fuzz/FuzzText.h"

namespace zarvy::fuzz {

// Takes an input apart from its start on. What is behind the end is zeros.
class ByteSource {
 public:
  explicit ByteSource(Bytes bytes) : m_rest(bytes) {}

  [[nodiscard]] bool isEmpty() const { return m_rest.empty(); }

  // Fewer than `count` where there are no more.
  [[nodiscard]] Bytes take(std::size_t count) {
    const Bytes taken = m_rest.first(std::min(count, m_rest.size()));
    m_rest = m_rest.subspan(taken.size());
    return taken;
  }

  [[nodiscard]] Bytes takeRest() { return take(m_rest.size()); }

  // In the machine's own order.
  template <typename Number = std::uint8_t>
  [[nodiscard]] Number number() {
    static_assert(std::is_trivially_copyable_v<Number>);
    Number result{};
    const Bytes bytes = take(sizeof(Number));
    if (!bytes.empty()) std::memcpy(&result, bytes.data(), bytes.size());
    return result;
  }

  // From 0 on, less than `count`.
  [[nodiscard]] std::size_t below(std::size_t count) { return number() % count; }

 private:
  Bytes m_rest;
};

}  // namespace zarvy::fuzz
