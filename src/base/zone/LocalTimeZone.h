#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include <unicode/basictz.h>

#include "base/zone/LocalTime.h"

namespace zarvy {

// A time zone for ICU whose clocks are those of a LocalTime, for ICU's own data is as old as the
// library. Only the words for a zone come from that data. Copies share the LocalTime.
class LocalTimeZone final : public icu::BasicTimeZone {
 public:
  // `name` is one that ICU has words for; see knownZoneName().
  LocalTimeZone(std::shared_ptr<const LocalTime> time, const std::string& name);

  [[nodiscard]] LocalTimeZone* clone() const override;

  void getOffset(UDate date, UBool local, int32_t& rawOffset, int32_t& dstOffset,
                 UErrorCode& status) const override;
  void getOffsetFromLocal(UDate date, UTimeZoneLocalOption nonExistingTime,
                          UTimeZoneLocalOption duplicatedTime, int32_t& rawOffset,
                          int32_t& dstOffset, UErrorCode& status) const override;
  int32_t getOffset(uint8_t era, int32_t year, int32_t month, int32_t day, uint8_t dayOfWeek,
                    int32_t milliseconds, UErrorCode& status) const override;
  int32_t getOffset(uint8_t era, int32_t year, int32_t month, int32_t day, uint8_t dayOfWeek,
                    int32_t milliseconds, int32_t monthLength, UErrorCode& status) const override;

  // Of the present.
  [[nodiscard]] int32_t getRawOffset() const override;
  [[nodiscard]] UBool useDaylightTime() const override;
  UBool inDaylightTime(UDate date, UErrorCode& status) const override;

  // Does nothing: the clocks cannot be set here.
  void setRawOffset(int32_t) override {}

  // What the changes of the clocks are by rule is not known here, only what they come to.
  UBool getNextTransition(UDate, UBool, icu::TimeZoneTransition&) const override { return false; }
  UBool getPreviousTransition(UDate, UBool, icu::TimeZoneTransition&) const override {
    return false;
  }
  int32_t countTransitionRules(UErrorCode&) const override { return 0; }
  void getTimeZoneRules(const icu::InitialTimeZoneRule*& initial, const icu::TimeZoneRule**,
                        int32_t& count, UErrorCode& status) const override;

  static UClassID getStaticClassID();
  [[nodiscard]] UClassID getDynamicClassID() const override;

 private:
  const std::shared_ptr<const LocalTime> m_time;
};

// `name` where it is one of ICU's, and the name of the unknown zone otherwise: a zone that is
// written as a rule has none.
[[nodiscard]] std::string knownZoneName(const std::string& name);

}  // namespace zarvy
