#pragma once

#include "base/Clock.h"

namespace zarvy {

// The machine's own clock.
class SystemClock final : public Clock {
 public:
  [[nodiscard]] QDateTime now() const override { return QDateTime::currentDateTimeUtc(); }
};

}  // namespace zarvy
