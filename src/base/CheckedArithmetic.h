#pragma once

#include <QtGlobal>

#include "base/EndProcess.h"

namespace zarvy {

// Arithmetic that never wraps. Where the result does not fit into 64 bits the process ends, with
// `lineOnOverflow` on standard error.

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
