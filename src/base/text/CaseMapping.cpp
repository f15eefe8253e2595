#include "base/text/CaseMapping.h"

#include <unicode/ucasemap.h>
#include <unicode/uchar.h>
#include <unicode/ustring.h>

#include "base/text/CodePoints.h"
#include "base/text/IcuText.h"

namespace zarvy {
namespace {

// The mapping of no language in particular: null would be that of the environment.
constexpr const char* noLanguage = "";

// The text itself is the answer where ICU refuses it, which only a lack of memory makes it do.
template <typename Map>
QString mapped(QStringView text, Map map) {
  const auto result = textFromIcu(text.size() + text.size() / 8, map);
  return result ? *result : text.toString();
}

int32_t sizeOf(QStringView text) {
  return static_cast<int32_t>(text.size());
}

QString lower(QStringView text) {
  return mapped(text, [text](char16_t* target, int32_t capacity, UErrorCode* status) {
    return u_strToLower(target, capacity, text.utf16(), sizeOf(text), noLanguage, status);
  });
}

// Gives the first character its title form and the rest their lower one.
class WordCapitals {
 public:
  WordCapitals() {
    UErrorCode status = U_ZERO_ERROR;
    m_map.adoptInstead(ucasemap_open(
        noLanguage, U_TITLECASE_WHOLE_STRING | U_TITLECASE_NO_BREAK_ADJUSTMENT, &status));
  }

  [[nodiscard]] QString apply(QStringView word) {
    if (m_map.isNull()) return word.toString();
    return mapped(word, [this, word](char16_t* target, int32_t capacity, UErrorCode* status) {
      return ucasemap_toTitle(m_map.getAlias(), target, capacity, word.utf16(), sizeOf(word),
                              status);
    });
  }

 private:
  icu::LocalUCaseMapPointer m_map;
};

// The first position from `start` on at which `isWanted` holds for the code point; else the end.
template <typename Predicate>
qsizetype findCodePoint(QStringView text, qsizetype start, Predicate isWanted) {
  for (qsizetype position = start; position < text.size();) {
    const char32_t codePoint = codePointAt(text, position);
    if (isWanted(codePoint)) return position;
    position += lengthOf(codePoint);
  }
  return text.size();
}

bool isWhiteSpace(char32_t codePoint) {
  return u_isUWhiteSpace(static_cast<UChar32>(codePoint)) != 0;
}

bool isLetter(char32_t codePoint) {
  return u_isalpha(static_cast<UChar32>(codePoint)) != 0;
}

}  // namespace

QString upperCased(const QString& text) {
  return mapped(text, [&text](char16_t* target, int32_t capacity, UErrorCode* status) {
    const QStringView source = text;
    return u_strToUpper(target, capacity, source.utf16(), sizeOf(source), noLanguage, status);
  });
}

QString lowerCased(const QString& text) {
  return lower(text);
}

QString caseFolded(const QString& text, bool isTurkic) {
  const uint32_t options = isTurkic ? U_FOLD_CASE_EXCLUDE_SPECIAL_I : U_FOLD_CASE_DEFAULT;
  return mapped(text, [&text, options](char16_t* target, int32_t capacity, UErrorCode* status) {
    const QStringView source = text;
    return u_strFoldCase(target, capacity, source.utf16(), sizeOf(source), options, status);
  });
}

QString capitalized(const QString& text) {
  const QStringView source = text;
  WordCapitals capitals;
  QString result;
  result.reserve(text.size());
  qsizetype position = 0;
  while (position < source.size()) {
    const qsizetype word = findCodePoint(
        source, position, [](char32_t codePoint) { return !isWhiteSpace(codePoint); });
    const qsizetype end = findCodePoint(source, word, isWhiteSpace);
    const QStringView letters = source.first(end);
    const qsizetype letter = findCodePoint(letters, word, isLetter);
    result += source.sliced(position, word - position);
    result += lower(source.sliced(word, letter - word));
    if (letter < end) result += capitals.apply(source.sliced(letter, end - letter));
    position = end;
  }
  return result;
}

}  // namespace zarvy
