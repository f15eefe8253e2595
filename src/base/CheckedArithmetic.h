#pragma once

#include <limits>

#include <QtGlobal>

#include "base/EndProcess.h"

namespace zarvy {

// Arithmetic that never wraps.

// One more than `a`. The greatest number stays as it is: for what counts on from a number that
// anybody may have written into a document, which must not be able to end the process.
[[nodiscard]] inline qint64 numberAfter(qint64 a) {
  return a == std::numeric_limits<qint64>::max() ? a : a + 1;
}

// Where the results of these do not fit into 64 bits the process ends, with `lineOnOverflow` on
// standard error.

[[nodiscard]] inline qint64 checkedSum(qint64 a, qint64 b, const char* lineOnOverflow) {
  qint64 result = 0;
  if (__builtin_add_overflow(a, b, &result)) endProcess(lineOnOverflow);
  return result;
}

[[nodiscard]] inline qint64 checkedDifference(qint64 a, qint64 b, const char* lineOnOverflow) {
  qint64 result = 0;
  if (__builtin_sub_overflow(a, b, &result)) endProcess(lineOnOverflow);
  return result;
}

}  // namespace zarvy
