#pragma once

#include <cstdint>

namespace zarvy {

// What the kernel is to do, as libseccomp has it, with a call that the sandbox refuses: such a call
// fails with EPERM. A library that was updated may ask for one that nobody here has thought of, so
// the first one that is refused so is told on standard error, by its number, where that takes a
// line at once. On machines whose registers are not known here none is told.
//
// Takes SIGSYS for that: a call of a thread that blocks all signals, as the C library does for
// moments, ends the process. Once, ahead of the sandbox.
[[nodiscard]] std::uint32_t actionForRefusedCalls();

}  // namespace zarvy
