#include "base/text/RegionalSettings.h"

#include <array>

#include <QByteArrayList>

#include <unicode/uloc.h>

namespace zarvy {
namespace {

// The first that is set and not empty, in the order that POSIX gives them.
QByteArray languageOfDates() {
  for (const char* const variable : {"LC_ALL", "LC_TIME", "LANG"}) {
    if (QByteArray value = qgetenv(variable); !value.isEmpty()) return value;
  }
  return {};
}

}  // namespace

RegionalSettings RegionalSettings::ofUser() {
  const QByteArray name = languageOfDates();
  const QByteArray language = name.split('.').first();
  if (language.isEmpty() || language == "C" || language == "POSIX") return {"en_US_POSIX"};
  std::array<char, ULOC_FULLNAME_CAPACITY> canonical{};
  UErrorCode status = U_ZERO_ERROR;
  uloc_canonicalize(name.constData(), canonical.data(), static_cast<int32_t>(canonical.size()),
                    &status);
  if (U_FAILURE(status) || status == U_STRING_NOT_TERMINATED_WARNING) return {"en_US_POSIX"};
  return {QByteArray(canonical.data())};
}

}  // namespace zarvy
