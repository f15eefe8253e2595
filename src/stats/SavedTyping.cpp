#include "stats/SavedTyping.h"

#include "base/CheckedArithmetic.h"

namespace zarvy {

qint64 charactersSaved(const ExpansionEvent& event) {
  if (event.expansionLength <= event.triggerLength) return 0;
  return checkedDifference(event.expansionLength, event.triggerLength,
                           "An expansion has saved more characters than 64 bits can count.");
}

double secondsSaved(qint64 characters) {
  constexpr double charactersPerSecond = 3.33;
  return static_cast<double>(characters) / charactersPerSecond;
}

}  // namespace zarvy
