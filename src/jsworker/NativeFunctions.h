#pragma once

#include <JavaScriptCore/JavaScript.h>

namespace zarvy {

// Gives scripts `now`, `today`, `time`, `random` and `uuid` as global functions. Dates are in the
// language and the time zone that are the process's own at the time of the call.
void bindNativeFunctions(JSGlobalContextRef context);

}  // namespace zarvy
