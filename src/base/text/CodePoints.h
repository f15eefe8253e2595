#pragma once

#include <QStringView>

namespace zarvy {

// The code point that begins at `position` of `text`; a lone surrogate is one of its own. Private
// to this folder.
[[nodiscard]] inline char32_t codePointAt(QStringView text, qsizetype position) {
  const QChar unit = text[position];
  if (unit.isHighSurrogate() && position + 1 < text.size() && text[position + 1].isLowSurrogate()) {
    return QChar::surrogateToUcs4(unit, text[position + 1]);
  }
  return unit.unicode();
}

// In UTF-16 units.
[[nodiscard]] constexpr qsizetype lengthOf(char32_t codePoint) {
  return codePoint > 0xFFFF ? 2 : 1;
}

}  // namespace zarvy
