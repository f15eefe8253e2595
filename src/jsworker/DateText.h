#pragma once

#include <string>

#include <unicode/udat.h>

namespace zarvy {

// The present date and time in the language that is the process's own, in the zone that is the
// engine's. Empty where ICU has no words for it.
[[nodiscard]] std::u16string dateText(UDateFormatStyle date, UDateFormatStyle time);

// Makes `locale`, as ICU names it, the process's own; an empty one leaves what the environment
// says. Reads what there is to be read for it, so that nothing has to be read later.
void setLanguage(const char* locale);

}  // namespace zarvy
