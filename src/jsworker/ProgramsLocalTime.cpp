#include "jsworker/ProgramsLocalTime.h"

#include <algorithm>

namespace zarvy {

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

}  // namespace zarvy
