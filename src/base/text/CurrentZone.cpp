#include "base/text/CurrentZone.h"

#include "base/zone/LocalTimeZone.h"
#include "base/zone/SystemLocalTime.h"

namespace zarvy {

std::unique_ptr<icu::TimeZone> currentZone() {
  return std::make_unique<LocalTimeZone>(std::make_shared<SystemLocalTime>(),
                                         knownZoneName(SystemLocalTime::zoneName()));
}

}  // namespace zarvy
