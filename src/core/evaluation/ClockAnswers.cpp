#include "core/evaluation/ClockAnswers.h"

namespace zarvy {
namespace {

// A stretch of time, and how close to each other one must look to be sure that the clocks are not
// moved on it.
struct Stretch {
  std::int64_t length;
  std::int64_t step;
};

constexpr std::int64_t hour = 3600;
constexpr Stretch stretches[] = {{hour * 24 * 32, hour * 24}, {hour / 4, hour / 4}, {1, 1}};

std::int64_t beginOf(const Stretch& stretch, std::int64_t instant) {
  const std::int64_t rest = instant % stretch.length;
  return instant - (rest < 0 ? rest + stretch.length : rest);
}

bool isSteady(const LocalTime& time, std::int64_t begin, const Stretch& stretch) {
  const std::int32_t offset = time.offsetAt(begin);
  for (std::int64_t past = stretch.step; past <= stretch.length; past += stretch.step) {
    if (time.offsetAt(begin + past - 1) != offset) return false;
  }
  return true;
}

}  // namespace

scriptwire::ClockAnswer answerTo(const scriptwire::ClockQuestion& question, const LocalTime& time) {
  scriptwire::ClockAnswer answer{question.instant, question.instant + 1,
                                 time.offsetAt(question.instant), time.savingAt(question.instant)};
  for (const Stretch& stretch : stretches) {
    const std::int64_t begin = beginOf(stretch, question.instant);
    if (!isSteady(time, begin, stretch)) continue;
    answer.from = begin;
    answer.until = begin + stretch.length;
    break;
  }
  return answer;
}

}  // namespace zarvy
