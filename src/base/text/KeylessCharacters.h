#pragma once

namespace zarvy {

// Whether `character` is a control character that no keyboard has a key for, which is all of them
// but tab, line feed and carriage return. Typing a text leaves these out.
[[nodiscard]] constexpr bool hasNoKey(char32_t character) {
  if (character == U'\t' || character == U'\n' || character == U'\r') return false;
  return character < U' ' || (character >= U'\x7f' && character < U'\xa0');
}

}  // namespace zarvy
