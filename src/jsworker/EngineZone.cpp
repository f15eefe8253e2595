#include "jsworker/EngineZone.h"

#include <algorithm>
#include <dlfcn.h>
#include <utility>

#include <unicode/datefmt.h>
#include <unicode/dtitvfmt.h>
#include <unicode/ucal.h>
#include <unicode/udat.h>
#include <unicode/udateintervalformat.h>

#include "base/zone/LocalTimeZone.h"

// The engine cannot be told the time zone: it asks ICU for the machine's, and ICU looks into files
// that cannot be opened here, or into data of its own that is as old as the library. So this file
// defines four of ICU's functions once more. The loader finds those of the program ahead of those
// of the libraries; each leaves the work to ICU's, which is next, and puts the zone in.

namespace zarvy {
namespace {

icu::UnicodeString canonicalName(const icu::UnicodeString& name) {
  icu::UnicodeString canonical;
  UErrorCode status = U_ZERO_ERROR;
  icu::TimeZone::getCanonicalID(name, canonical, status);
  return U_SUCCESS(status) ? canonical : name;
}

// One for the process, as the functions are.
struct EngineZone {
  std::unique_ptr<const LocalTimeZone> zone;
  icu::UnicodeString name;
};

EngineZone& engineZone() {
  static EngineZone zone;
  return zone;
}

// The engine hands back the name that it was given, as a synonym at times; none is the machine's.
// Any other zone is one that a script names.
bool isEngineZone(const char16_t* name, int32_t length) {
  if (!engineZone().zone) return false;
  if (!name) return true;
  const icu::UnicodeString asked =
      length < 0 ? icu::UnicodeString(name) : icu::UnicodeString(name, length);
  return canonicalName(asked) == canonicalName(engineZone().name);
}

template <typename Function>
Function* nextOf(Function*, const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

std::int32_t ProgramsLocalTime::offsetAt(std::int64_t instant) const {
  return answerFor(instant).offset;
}

std::int32_t ProgramsLocalTime::savingAt(std::int64_t instant) const {
  return answerFor(instant).saving;
}

const scriptwire::ClockAnswer& ProgramsLocalTime::answerFor(std::int64_t instant) const {
  using scriptwire::furthestInstant;
  instant = std::clamp(instant, -furthestInstant, furthestInstant);
  const auto known = m_answers.upper_bound(instant);
  if (known != m_answers.end() && known->second.from <= instant) return known->second;
  const scriptwire::ClockAnswer answer = m_channel.ask({instant});
  return m_answers.insert_or_assign(answer.until, answer).first->second;
}

void setEngineZone(std::shared_ptr<const LocalTime> time, const std::string& name) {
  const std::string known = knownZoneName(name);
  engineZone() = {std::make_unique<const LocalTimeZone>(std::move(time), known),
                  icu::UnicodeString::fromUTF8(known)};
}

}  // namespace zarvy

// The header gives each function the number of ICU's version, which is part of the name to look up.
#define NAME_OF(function) TEXT_OF(function)
#define TEXT_OF(name) #name

// NOLINTNEXTLINE(readability-non-const-parameter): it is written to, and the type is ICU's
U_CAPI int32_t U_EXPORT2 ucal_getHostTimeZone(UChar* result, int32_t capacity, UErrorCode* status) {
  return zarvy::engineZone().name.extract(result, capacity, *status);
}

U_CAPI UCalendar* U_EXPORT2 ucal_open(const UChar* zone, int32_t length, const char* locale,
                                      UCalendarType type, UErrorCode* status) {
  auto* const next = zarvy::nextOf(&ucal_open, NAME_OF(ucal_open));
  UCalendar* const calendar = next(zone, length, locale, type, status);
  if (calendar && zarvy::isEngineZone(zone, length)) {
    // What the C interface hands out is the C++ object.
    reinterpret_cast<icu::Calendar*>(calendar)->setTimeZone(*zarvy::engineZone().zone);
  }
  return calendar;
}

U_CAPI UDateFormat* U_EXPORT2 udat_open(UDateFormatStyle time, UDateFormatStyle date,
                                        const char* locale, const UChar* zone, int32_t length,
                                        const UChar* pattern, int32_t patternLength,
                                        UErrorCode* status) {
  auto* const next = zarvy::nextOf(&udat_open, NAME_OF(udat_open));
  UDateFormat* const format =
      next(time, date, locale, zone, length, pattern, patternLength, status);
  if (format && zarvy::isEngineZone(zone, length)) {
    reinterpret_cast<icu::DateFormat*>(format)->setTimeZone(*zarvy::engineZone().zone);
  }
  return format;
}

U_CAPI UDateIntervalFormat* U_EXPORT2 udtitvfmt_open(const char* locale, const UChar* skeleton,
                                                     int32_t skeletonLength, const UChar* zone,
                                                     int32_t length, UErrorCode* status) {
  auto* const next = zarvy::nextOf(&udtitvfmt_open, NAME_OF(udtitvfmt_open));
  UDateIntervalFormat* const format = next(locale, skeleton, skeletonLength, zone, length, status);
  if (format && zarvy::isEngineZone(zone, length)) {
    reinterpret_cast<icu::DateIntervalFormat*>(format)->setTimeZone(*zarvy::engineZone().zone);
  }
  return format;
}
