#include "base/text/ReplacementTemplate.h"

#include <unicode/uregex.h>

#include "base/text/IcuText.h"

namespace zarvy {
namespace {

// In UTF-16 units: a template of many "$0" multiplies what it matched.
constexpr qsizetype longestResult = qsizetype{16} * 1024 * 1024;

}  // namespace

std::optional<QString> expandTemplate(const QString& replacementTemplate, QStringView matched,
                                      const char* whole) {
  if (!replacementTemplate.contains(u'$') && !replacementTemplate.contains(u'\\')) {
    return replacementTemplate;
  }
  const qsizetype references = replacementTemplate.count(u'$');
  if (replacementTemplate.size() + references * matched.size() > longestResult) return std::nullopt;
  // What matches all of the text, once, has ICU itself read the template.
  UErrorCode status = U_ZERO_ERROR;
  const icu::LocalURegularExpressionPointer everything(uregex_openC(whole, 0, nullptr, &status));
  uregex_setText(everything.getAlias(), matched.isEmpty() ? u"" : matched.utf16(),
                 static_cast<int32_t>(matched.size()), &status);
  if (U_FAILURE(status)) return std::nullopt;
  const QStringView source = replacementTemplate;
  const auto replace = [&](char16_t* target, int32_t capacity, UErrorCode* outcome) {
    return uregex_replaceFirst(everything.getAlias(), source.utf16(),
                               static_cast<int32_t>(source.size()), target, capacity, outcome);
  };
  return textFromIcu(source.size() + matched.size(), replace);
}

}  // namespace zarvy
