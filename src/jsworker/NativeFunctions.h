#pragma once

#include <JavaScriptCore/JavaScript.h>

namespace zarvy {

// Gives scripts `now`, `today`, `time`, `random` and `uuid` as global functions. Dates are in the
// language that is the process's own and in the time zone of the engine.
void bindNativeFunctions(JSGlobalContextRef context);

}  // namespace zarvy
