#pragma once

#include <bitset>
#include <cstdint>
#include <span>

namespace zarvy::x11 {

// The codes that the protocol leaves to keys.
inline constexpr int lowestKeycode = 8;
inline constexpr int highestKeycode = 255;

using KeycodeSet = std::bitset<256>;

// The keys of the server's bit vectors: the bit of a key is that of its code, lowest bit first.
[[nodiscard]] KeycodeSet keycodesOfBits(std::span<const uint8_t> bytes);

}  // namespace zarvy::x11
