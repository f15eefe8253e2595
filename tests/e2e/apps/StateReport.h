#pragma once

#include <string>
#include <string_view>

namespace zarvy::e2e {

// One line of what a target program tells the harness: how often it has been emptied on the
// harness's behalf, the caret in UTF-16 units, and the text's units as four hexadecimal digits
// each.
[[nodiscard]] inline std::string stateReport(int clearCount, std::u16string_view text,
                                             std::size_t caret) {
  constexpr std::string_view digits = "0123456789abcdef";
  std::string line = std::to_string(clearCount);
  line.append(" ").append(std::to_string(caret)).append(" ");
  line.reserve(line.size() + text.size() * 4 + 1);
  for (const unsigned unit : text) {
    for (const unsigned shift : {12U, 8U, 4U, 0U}) line += digits[(unit >> shift) & 0xFU];
  }
  return line + "\n";
}

}  // namespace zarvy::e2e
