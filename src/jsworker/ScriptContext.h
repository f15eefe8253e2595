#pragma once

#include <JavaScriptCore/JavaScript.h>
#include <memory>
#include <string_view>

#include "jsworker/EngineText.h"
#include "jsworker/wire/ScriptWire.h"

namespace zarvy {

struct ScriptResult {
  scriptwire::Outcome outcome = scriptwire::Outcome::nothing;
  EngineText text;  // for the outcome that has one
  bool hasThrown = false;
  EngineText description;  // of what was thrown; null where it has none
};

// The bare context that scripts run in: the language, the five native functions, and no timers.
// What a script leaves in it stays for the next one. One thread.
class ScriptContext {
 public:
  ScriptContext();

  // Comes back when the script, and every promise that it has settled, has run to its end: maybe
  // never.
  [[nodiscard]] ScriptResult evaluate(std::u16string_view expression);

  // Frees what no script can reach any more.
  void collectGarbage();

 private:
  struct Release {
    void operator()(JSGlobalContextRef context) const { JSGlobalContextRelease(context); }
  };

  void removeGlobals();
  [[nodiscard]] ScriptResult resultOf(JSValueRef value);

  const std::unique_ptr<OpaqueJSContext, Release> m_context;
};

}  // namespace zarvy
