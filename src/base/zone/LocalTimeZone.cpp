#include "base/zone/LocalTimeZone.h"

#include <cmath>
#include <utility>

#include <unicode/gregocal.h>

namespace zarvy {
namespace {

constexpr int32_t millisecondsInASecond = 1000;
constexpr std::int64_t day = 24LL * 3600;
constexpr std::int64_t halfAYear = 182 * day;

std::int64_t secondsOf(UDate date) {
  return static_cast<std::int64_t>(std::floor(date / millisecondsInASecond));
}

std::int64_t present() {
  return secondsOf(icu::Calendar::getNow());
}

// An instant with the offset at what the clocks show, in seconds. Where they are moved back they
// show it twice, where they are moved forward never: then the offset is that before or after they
// were moved, as asked for, and in the latter case the instant is just one with that offset.
std::int64_t instantOf(const LocalTime& time, std::int64_t shown, bool latterOfTwo,
                       bool latterOfNone) {
  // No place is further from Greenwich than a day, and none moves its clocks twice in two.
  const std::int32_t former = time.offsetAt(shown - day);
  const std::int32_t latter = time.offsetAt(shown + day);
  const bool isBefore = time.offsetAt(shown - former) == former;
  const bool isAfter = time.offsetAt(shown - latter) == latter;
  if (!isBefore && !isAfter) return latterOfNone ? shown + day : shown - day;
  return isAfter && (!isBefore || latterOfTwo) ? shown - latter : shown - former;
}

bool isLatter(UTimeZoneLocalOption option) {
  constexpr int bits = 0x0C;  // those that say former or latter, beside others
  return (static_cast<int>(option) & bits) == UCAL_TZ_LOCAL_LATTER;
}

}  // namespace

LocalTimeZone::LocalTimeZone(std::shared_ptr<const LocalTime> time, const std::string& name)
    : BasicTimeZone(icu::UnicodeString::fromUTF8(name)), m_time(std::move(time)) {}

LocalTimeZone* LocalTimeZone::clone() const {
  return new LocalTimeZone(*this);
}

void LocalTimeZone::getOffset(UDate date, UBool local, int32_t& rawOffset, int32_t& dstOffset,
                              UErrorCode& status) const {
  if (U_FAILURE(status)) return;
  if (local) {
    // As ICU's own zones read it.
    getOffsetFromLocal(date, UCAL_TZ_LOCAL_FORMER, UCAL_TZ_LOCAL_LATTER, rawOffset, dstOffset,
                       status);
    return;
  }
  const std::int64_t instant = secondsOf(date);
  dstOffset = m_time->savingAt(instant) * millisecondsInASecond;
  rawOffset = m_time->offsetAt(instant) * millisecondsInASecond - dstOffset;
}

void LocalTimeZone::getOffsetFromLocal(UDate date, UTimeZoneLocalOption nonExistingTime,
                                       UTimeZoneLocalOption duplicatedTime, int32_t& rawOffset,
                                       int32_t& dstOffset, UErrorCode& status) const {
  if (U_FAILURE(status)) return;
  const std::int64_t instant =
      instantOf(*m_time, secondsOf(date), isLatter(duplicatedTime), isLatter(nonExistingTime));
  dstOffset = m_time->savingAt(instant) * millisecondsInASecond;
  rawOffset = m_time->offsetAt(instant) * millisecondsInASecond - dstOffset;
}

int32_t LocalTimeZone::getOffset(uint8_t era, int32_t year, int32_t month, int32_t dayOfMonth,
                                 uint8_t dayOfWeek, int32_t milliseconds,
                                 UErrorCode& status) const {
  return getOffset(era, year, month, dayOfMonth, dayOfWeek, milliseconds, 0, status);
}

// NOLINTNEXTLINE(readability-function-size): as many parameters as ICU has
int32_t LocalTimeZone::getOffset(uint8_t era, int32_t year, int32_t month, int32_t dayOfMonth,
                                 uint8_t, int32_t milliseconds, int32_t, UErrorCode& status) const {
  icu::GregorianCalendar calendar(*getGMT(), status);
  calendar.clear();
  calendar.set(UCAL_ERA, era);
  calendar.set(year, month, dayOfMonth);
  int32_t rawOffset = 0;
  int32_t dstOffset = 0;
  getOffset(calendar.getTime(status) + milliseconds, true, rawOffset, dstOffset, status);
  return rawOffset + dstOffset;
}

int32_t LocalTimeZone::getRawOffset() const {
  const std::int64_t now = present();
  return (m_time->offsetAt(now) - m_time->savingAt(now)) * millisecondsInASecond;
}

UBool LocalTimeZone::useDaylightTime() const {
  const std::int64_t now = present();
  return m_time->savingAt(now) != 0 || m_time->savingAt(now + halfAYear) != 0;
}

UBool LocalTimeZone::inDaylightTime(UDate date, UErrorCode& status) const {
  return U_SUCCESS(status) && m_time->savingAt(secondsOf(date)) != 0;
}

void LocalTimeZone::getTimeZoneRules(const icu::InitialTimeZoneRule*& initial,
                                     const icu::TimeZoneRule**, int32_t& count,
                                     UErrorCode& status) const {
  initial = nullptr;
  count = 0;
  if (U_SUCCESS(status)) status = U_UNSUPPORTED_ERROR;
}

UClassID LocalTimeZone::getStaticClassID() {
  static char id = 0;
  return &id;
}

UClassID LocalTimeZone::getDynamicClassID() const {
  return getStaticClassID();
}

std::string knownZoneName(const std::string& name) {
  const auto id = icu::UnicodeString::fromUTF8(name);
  icu::UnicodeString canonical;
  UBool isOfTheDatabase = false;
  UErrorCode status = U_ZERO_ERROR;
  icu::TimeZone::getCanonicalID(id, canonical, isOfTheDatabase, status);
  return U_SUCCESS(status) && isOfTheDatabase ? name : std::string(UCAL_UNKNOWN_ZONE_ID);
}

}  // namespace zarvy
