#include "fuzz/FuzzText.h"

#include <array>
#include <cstdio>
#include <cstdlib>

namespace zarvy::fuzz {
namespace {

constexpr std::uint8_t separator = 0x1E;

constexpr std::array<QStringView, 20> troublesome{
    u"\u00DF",      // becomes two letters in upper case
    u"\u0130",      // becomes two characters in lower case
    u"\u01C6",      // has a title form
    u"\u03A3",      // its lower case depends on what follows
    u"\u0301",      // joins what stands before it
    u"\u200D",      // joins both sides
    u"\u0600",      // joins what stands behind it
    u"\u0661",      // a digit
    u"\U0001D7D7",  // a digit of two UTF-16 units
    u"\u00A0",      // white space
    u"\u2028",      // a line break to some
    u"\u05D0",      // from right to left
    u"\u202E",      // turns the direction
    u"\uFEFF",      // a byte order mark
    u"\uFFFF",      // no character
    u"\U0001F600",  // two UTF-16 units
    u"\r\n",        // one character of two
    u"\u00E9",      // the same as the next two
    u"e\u0301",
    u"\uFB01",  // becomes two letters in every case but lower
};

}  // namespace

QString textOf(Bytes bytes) {
  QString text;
  for (const std::uint8_t byte : bytes) {
    const std::size_t index = byte - 0x80U;
    if (byte < 0x80) {
      text += QChar(char16_t{byte});
    } else if (byte == 0xFE) {
      text += QChar(0xD83D);
    } else if (byte == 0xFF) {
      text += QChar(0xDE00);
    } else {
      text += troublesome.at(index % troublesome.size());
    }
  }
  return text;
}

QStringList textsOf(Bytes bytes) {
  QStringList texts;
  std::size_t start = 0;
  for (std::size_t index = 0; index <= bytes.size(); ++index) {
    if (index < bytes.size() && bytes[index] != separator) continue;
    texts.append(textOf(bytes.subspan(start, index - start)));
    start = index + 1;
  }
  return texts;
}

void require(bool isRight, std::string_view what) {
  if (isRight) return;
  std::fprintf(stderr, "wrong: %.*s\n", static_cast<int>(what.size()), what.data());
  std::abort();
}

}  // namespace zarvy::fuzz
