#include "platform/x11/typing/TypedText.h"

#include <QChar>

#include "base/text/KeylessCharacters.h"
#include "platform/VirtualKey.h"

namespace zarvy::x11 {

namespace {

// Code points that are no characters by definition; no key can carry them.
bool isNoncharacter(char32_t character) {
  return (character & 0xfffeU) == 0xfffeU || (character >= U'\xfdd0' && character <= U'\xfdef');
}

}  // namespace

std::vector<TypedText::Piece> TypedText::feed(QStringView run) {
  std::vector<Piece> pieces;
  for (const QChar unit : run) {
    if (m_highSurrogate && unit.isLowSurrogate()) {
      add(QChar::surrogateToUcs4(*m_highSurrogate, unit.unicode()), pieces);
      m_highSurrogate.reset();
      continue;
    }
    if (m_highSurrogate) add(QChar::ReplacementCharacter, pieces);
    m_highSurrogate.reset();
    if (unit.isHighSurrogate()) {
      m_highSurrogate = unit.unicode();
    } else {
      add(unit.isLowSurrogate() ? char32_t{QChar::ReplacementCharacter} : unit.unicode(), pieces);
    }
  }
  return pieces;
}

std::vector<TypedText::Piece> TypedText::finish(bool returnKeyFollows) {
  std::vector<Piece> pieces;
  if (m_highSurrogate) add(QChar::ReplacementCharacter, pieces);
  m_highSurrogate.reset();
  if (m_hasCarriageReturn && !returnKeyFollows) {
    pieces.push_back({.virtualKey = virtualkey::returnKey});
  }
  m_hasCarriageReturn = false;
  return pieces;
}

void TypedText::add(char32_t character, std::vector<Piece>& pieces) {
  const bool endsLineBreak = character == U'\n' && m_hasCarriageReturn;
  if (m_hasCarriageReturn && !endsLineBreak) {
    pieces.push_back({.virtualKey = virtualkey::returnKey});
  }
  m_hasCarriageReturn = character == U'\r';
  if (character == U'\t') {
    pieces.push_back({.virtualKey = virtualkey::tab});
  } else if (character == U'\n') {
    pieces.push_back({.virtualKey = virtualkey::returnKey});
  } else if (character != U'\r' && !hasNoKey(character)) {
    const bool isTypable = !isNoncharacter(character);
    pieces.push_back({.character = isTypable ? character : char32_t{QChar::ReplacementCharacter},
                      .virtualKey = std::nullopt});
  }
}

std::vector<char32_t> charactersToType(QStringView text) {
  TypedText typed;
  std::vector<char32_t> characters;
  for (const auto& pieces : {typed.feed(text), typed.finish()}) {
    for (const TypedText::Piece& piece : pieces) {
      if (!piece.virtualKey) characters.push_back(piece.character);
    }
  }
  return characters;
}

}  // namespace zarvy::x11
