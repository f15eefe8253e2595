#pragma once

#include <QString>

#include "core/placeholders/ExpansionLimit.h"
#include "core/placeholders/PlaceholderScan.h"

namespace zarvy {

// The text with each placeholder of `form` replaced by `valueOf` it; what was put in is not
// searched again. The text as it is where it would become too long.
template <typename ValueOf>
[[nodiscard]] QString replaceEach(const QString& text, const PlaceholderForm& form,
                                  ValueOf valueOf) {
  const QStringView source = text;
  PlaceholderScan scan(source, form);
  QString result;
  qsizetype end = 0;
  while (const auto placeholder = scan.next()) {
    const qsizetype start = placeholder->literal.utf16() - source.utf16();
    result += source.sliced(end, start - end);
    result += valueOf(*placeholder);
    end = start + placeholder->literal.size();
    if (result.size() > ExpansionLimit::longestText) return text;
  }
  if (end == 0) return text;
  return result += source.sliced(end);
}

}  // namespace zarvy
