#pragma once

#include <string>

#include <unicode/udat.h>

namespace zarvy {

// The present date and time in the language and the time zone that are the process's own. Empty
// where ICU has no words for it.
[[nodiscard]] std::u16string dateText(UDateFormatStyle date, UDateFormatStyle time);

// Makes `locale`, as ICU names it, and `timeZone`, as the tz database does, the process's own; an
// empty one leaves what the environment says. Reads the files that say it, so that nothing has to
// be read later.
void setRegion(const char* locale, const char* timeZone);

}  // namespace zarvy
