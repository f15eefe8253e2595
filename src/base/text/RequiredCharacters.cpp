#include "base/text/RequiredCharacters.h"

#include <optional>

namespace zarvy {
namespace {

using Characters = std::bitset<128>;

bool isAscii(QChar character) {
  return character.unicode() < 0x80;
}

bool isDigit(QChar character) {
  return character >= u'0' && character <= u'9';
}

bool isLetter(QChar character) {
  return (character >= u'a' && character <= u'z') || (character >= u'A' && character <= u'Z');
}

// Walks a pattern by the grammar of regular expressions. Every step is absent, and so the whole,
// where the pattern holds something else than is known here.
class PatternReader {
 public:
  explicit PatternReader(QStringView pattern) : m_pattern(pattern) {}

  [[nodiscard]] std::optional<Characters> read() {
    const auto characters = alternatives();
    return atEnd() ? characters : std::nullopt;
  }

  [[nodiscard]] bool ignoresCase() const { return m_ignoresCase; }

 private:
  static constexpr int deepestGroup = 50;

  [[nodiscard]] bool atEnd() const { return m_position >= m_pattern.size(); }
  [[nodiscard]] QChar peek() const { return atEnd() ? QChar() : m_pattern[m_position]; }
  QChar take() { return m_pattern[m_position++]; }

  bool skip(QStringView text) {
    if (!m_pattern.sliced(m_position).startsWith(text)) return false;
    m_position += text.size();
    return true;
  }

  // What every alternative requires.
  std::optional<Characters> alternatives() {
    auto required = sequence();
    while (required && skip(u"|")) {
      const auto other = sequence();
      if (!other) return std::nullopt;
      *required &= *other;
    }
    return required;
  }

  // What the parts require that must occur at least once.
  std::optional<Characters> sequence() {
    Characters required;
    while (!atEnd() && peek() != u'|' && peek() != u')') {
      const auto part = atom();
      if (!part) return std::nullopt;
      const auto mustOccur = quantifier();
      if (!mustOccur) return std::nullopt;
      if (*mustOccur) required |= *part;
    }
    return required;
  }

  std::optional<Characters> atom() {
    const QChar character = take();
    switch (character.unicode()) {
      case u'(':
        return group();
      case u'[':
        return skipSet() ? std::optional<Characters>(Characters()) : std::nullopt;
      case u'\\':
        return escape();
      case u'.':
      case u'^':
      case u'$':
        return Characters();
      case u'*':
      case u'+':
      case u'?':
      case u'{':
      case u'}':
      case u']':
        return std::nullopt;
      default:
        return literal(character);
    }
  }

  static Characters literal(QChar character) {
    Characters result;
    if (isAscii(character)) result.set(character.unicode());
    return result;
  }

  std::optional<Characters> group() {
    bool isLookaround = false;
    if (skip(u"?")) {
      isLookaround = skip(u"=") || skip(u"!") || skip(u"<=") || skip(u"<!");
      if (!isLookaround && !skip(u":") && !skip(u">") && !skipName()) return setting();
    }
    if (++m_depth > deepestGroup) return std::nullopt;
    const auto required = alternatives();
    --m_depth;
    if (!required || !skip(u")")) return std::nullopt;
    return isLookaround ? Characters() : *required;
  }

  bool skipName() {
    if (!skip(u"<")) return false;
    while (isLetter(peek()) || isDigit(peek())) ++m_position;
    return skip(u">");
  }

  // "(?i)" may stand anywhere; it is taken to hold for the whole pattern, which asks for less.
  std::optional<Characters> setting() {
    if (!skip(u"i)")) return std::nullopt;
    m_ignoresCase = true;
    return Characters();
  }

  // A set asks for no character in particular. Sets nest; a bracket that opens with its own
  // closing bracket, as "[]a]", is left alone.
  bool skipSet() {
    int depth = 1;
    bool isFirst = true;
    while (!atEnd()) {
      const QChar character = take();
      if (character == u'\\') {
        if (atEnd() || peek() == u'Q') return false;
        ++m_position;
      } else if (character == u'[') {
        ++depth;
        isFirst = true;
        continue;
      } else if (character == u']') {
        if (isFirst) return false;
        if (--depth == 0) return true;
      } else if (character == u'^' && isFirst) {
        continue;
      }
      isFirst = false;
    }
    return false;
  }

  std::optional<Characters> escape() {
    if (atEnd()) return std::nullopt;
    const QChar character = take();
    if (!isAscii(character) || (!isLetter(character) && !isDigit(character))) {
      return literal(character);
    }
    constexpr QStringView withoutArgument = u"AbBdDGhHnrRsStvVwWXzZ";
    if (withoutArgument.contains(character)) return Characters();
    return std::nullopt;
  }

  // Whether what stands before must occur.
  std::optional<bool> quantifier() {
    bool mustOccur = true;
    if (skip(u"*") || skip(u"?")) {
      mustOccur = false;
    } else if (skip(u"{")) {
      const auto least = interval();
      if (!least) return std::nullopt;
      mustOccur = *least;
    } else if (!skip(u"+")) {
      return true;
    }
    if (!skip(u"?")) skip(u"+");  // reluctant and possessive ones
    return mustOccur;
  }

  // Whether the lower end of "{2,3}" is one or more.
  std::optional<bool> interval() {
    bool isAtLeastOne = false;
    if (!isDigit(peek())) return std::nullopt;
    while (isDigit(peek())) isAtLeastOne |= take() != u'0';
    if (skip(u",")) {
      while (isDigit(peek())) ++m_position;
    }
    if (!skip(u"}")) return std::nullopt;
    return isAtLeastOne;
  }

  QStringView m_pattern;
  qsizetype m_position = 0;
  int m_depth = 0;
  bool m_ignoresCase = false;
};

Characters inLowerCase(const Characters& characters) {
  Characters result = characters;
  constexpr std::size_t toLower = u'a' - u'A';
  for (std::size_t upper = u'A'; upper <= u'Z'; ++upper) {
    if (!characters.test(upper)) continue;
    result.reset(upper);
    result.set(upper + toLower);
  }
  return result;
}

}  // namespace

RequiredCharacters::RequiredCharacters(QStringView pattern) {
  PatternReader reader(pattern);
  m_characters = reader.read().value_or(Characters());
  m_ignoresCase = reader.ignoresCase();
  if (m_ignoresCase) m_characters = inLowerCase(m_characters);
}

bool RequiredCharacters::arePresentIn(QStringView text) const {
  if (m_characters.none()) return true;
  Characters present;
  bool isAllAscii = true;
  for (const QChar character : text) {
    if (isAscii(character)) {
      present.set(character.unicode());
    } else {
      isAllAscii = false;
    }
  }
  if (m_ignoresCase) {
    // Letters outside ASCII may be other cases of those within it.
    if (!isAllAscii) return true;
    present = inLowerCase(present);
  }
  return (m_characters & ~present).none();
}

}  // namespace zarvy
