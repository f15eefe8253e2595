#include "base/text/ReplacementTemplate.h"

#include <memory>

#include <unicode/uregex.h>

namespace zarvy {
namespace {

// In UTF-16 units: a template of many "$0" multiplies what it matched.
constexpr qsizetype longestResult = qsizetype{16} * 1024 * 1024;

struct CloseExpression {
  void operator()(URegularExpression* expression) const { uregex_close(expression); }
};

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
  const std::unique_ptr<URegularExpression, CloseExpression> everything(
      uregex_openC(whole, 0, nullptr, &status));
  uregex_setText(everything.get(), matched.isEmpty() ? u"" : matched.utf16(),
                 static_cast<int32_t>(matched.size()), &status);
  const QStringView source = replacementTemplate;
  QString result(source.size() + matched.size(), Qt::Uninitialized);
  const auto replace = [&] {
    return uregex_replaceFirst(
        everything.get(), source.utf16(), static_cast<int32_t>(source.size()),
        reinterpret_cast<char16_t*>(result.data()), static_cast<int32_t>(result.size()), &status);
  };
  int32_t length = replace();
  if (status == U_BUFFER_OVERFLOW_ERROR) {
    result.resize(length);
    status = U_ZERO_ERROR;
    length = replace();
  }
  if (U_FAILURE(status)) return std::nullopt;
  result.truncate(length);
  return result;
}

}  // namespace zarvy
