#include "jsworker/DateText.h"

#include <unicode/ucal.h>
#include <unicode/uloc.h>

namespace zarvy {

std::u16string dateText(UDateFormatStyle date, UDateFormatStyle time) {
  UErrorCode status = U_ZERO_ERROR;
  const icu::LocalUDateFormatPointer format(
      udat_open(time, date, nullptr, nullptr, 0, nullptr, 0, &status));
  if (U_FAILURE(status)) return {};
  std::u16string text(256, u'\0');  // no locale's styles come near it
  const int32_t length = udat_format(format.getAlias(), ucal_getNow(), text.data(),
                                     static_cast<int32_t>(text.size()), nullptr, &status);
  if (U_FAILURE(status)) return {};
  text.resize(static_cast<std::size_t>(length));
  return text;
}

void setLanguage(const char* locale) {
  UErrorCode status = U_ZERO_ERROR;
  if (*locale != '\0') uloc_setDefault(locale, &status);
  // ICU would look for the machine's zone by itself.
  ucal_setDefaultTimeZone(u"UTC", &status);
  (void)dateText(UDAT_MEDIUM, UDAT_SHORT);
}

}  // namespace zarvy
