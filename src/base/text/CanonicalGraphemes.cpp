#include "base/text/CanonicalGraphemes.h"

#include <array>

#include <unicode/unorm2.h>

#include "base/text/IcuText.h"

namespace zarvy {
namespace {

// Numbers up to here are code points that stand for themselves.
constexpr CanonicalGraphemes::Number firstFreeNumber = 0x110000;

// Null only where the installation of the ICU data is broken; text then stands for itself.
const UNormalizer2* decomposer() {
  UErrorCode status = U_ZERO_ERROR;
  const UNormalizer2* instance = unorm2_getNFDInstance(&status);
  return U_SUCCESS(status) ? instance : nullptr;
}

std::optional<char32_t> soleCodePoint(QStringView text) {
  if (text.size() == 1) return text.front().unicode();
  if (text.size() == 2 && text.front().isHighSurrogate() && text.back().isLowSurrogate()) {
    return QChar::surrogateToUcs4(text.front(), text.back());
  }
  return std::nullopt;
}

bool decomposes(char32_t codePoint) {
  constexpr char32_t firstThatDecomposes = 0xC0;
  if (codePoint < firstThatDecomposes) return false;
  const UNormalizer2* normalizer = decomposer();
  if (!normalizer) return false;
  std::array<UChar, 32> unused{};
  UErrorCode status = U_ZERO_ERROR;
  return unorm2_getDecomposition(normalizer, static_cast<UChar32>(codePoint), unused.data(),
                                 static_cast<int32_t>(unused.size()), &status) >= 0;
}

}  // namespace

QString canonicalDecomposition(QStringView text) {
  const UNormalizer2* normalizer = decomposer();
  if (!normalizer || text.isEmpty()) return text.toString();
  const auto length = static_cast<int32_t>(text.size());
  const auto decompose = [&](char16_t* target, int32_t capacity, UErrorCode* status) {
    return unorm2_normalize(normalizer, text.utf16(), length, target, capacity, status);
  };
  const auto result = textFromIcu(text.size() * 2, decompose);
  return result ? *result : text.toString();
}

CanonicalGraphemes::Number CanonicalGraphemes::add(QStringView grapheme) {
  if (const auto number = find(grapheme)) return *number;
  const Number number = firstFreeNumber + static_cast<Number>(m_numbers.size());
  m_numbers.insert(canonicalDecomposition(grapheme), number);
  return number;
}

std::optional<CanonicalGraphemes::Number> CanonicalGraphemes::find(QStringView grapheme) const {
  if (const auto codePoint = soleCodePoint(grapheme); codePoint && !decomposes(*codePoint)) {
    return codePoint;
  }
  const QString decomposition = canonicalDecomposition(grapheme);
  if (const auto codePoint = soleCodePoint(decomposition)) return codePoint;
  const auto found = m_numbers.constFind(decomposition);
  if (found == m_numbers.constEnd()) return std::nullopt;
  return *found;
}

}  // namespace zarvy
