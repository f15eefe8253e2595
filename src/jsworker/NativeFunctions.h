#pragma once

#include <JavaScriptCore/JavaScript.h>

namespace zarvy {

// Makes `locale`, as ICU names it, the language of the process and so of the dates below; an empty
// one leaves what the environment says. Reads the data that it needs, so that nothing has to be
// read later.
void setLanguage(const char* locale);

// Gives scripts `now`, `today`, `time`, `random` and `uuid` as global functions. Dates are in the
// language of the process and in the time zone of the engine.
void bindNativeFunctions(JSGlobalContextRef context);

}  // namespace zarvy
