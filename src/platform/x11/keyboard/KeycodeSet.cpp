#include "platform/x11/keyboard/KeycodeSet.h"

namespace zarvy::x11 {

KeycodeSet keycodesOfBits(std::span<const uint8_t> bytes) {
  KeycodeSet set;
  for (std::size_t key = 0; key < set.size() && key / 8 < bytes.size(); ++key) {
    set[key] = ((bytes[key / 8] >> (key % 8)) & 1) != 0;
  }
  return set;
}

}  // namespace zarvy::x11
