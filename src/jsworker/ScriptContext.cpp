#include "jsworker/ScriptContext.h"

#include "jsworker/NativeFunctions.h"

// Exported by the engine, though no public header declares it. JSGarbageCollect() leaves the work
// to an event loop, and this process has none.
// NOLINTNEXTLINE(readability-identifier-naming): the engine's name
extern "C" [[gnu::weak]] void JSSynchronousGarbageCollectForDebugging(JSContextRef context);

namespace zarvy {
namespace {

using scriptwire::Outcome;

// A script has no way to schedule work that outlives its evaluation, as the compilation of a
// WebAssembly module does, and nowhere to write to.
constexpr const char* unwantedGlobals[] = {"setTimeout",    "setInterval", "clearTimeout",
                                           "clearInterval", "console",     "WebAssembly"};

ScriptResult thrown(JSContextRef context, Outcome outcome, JSValueRef exception) {
  ScriptResult result;
  result.outcome = outcome;
  result.hasThrown = true;
  result.description.reset(JSValueToStringCopy(context, exception, nullptr));
  return result;
}

}  // namespace

ScriptContext::ScriptContext() : m_context(JSGlobalContextCreate(nullptr)) {
  removeGlobals();
  bindNativeFunctions(m_context.get());
}

void ScriptContext::removeGlobals() {
  JSObjectRef global = JSContextGetGlobalObject(m_context.get());
  for (const char* const name : unwantedGlobals) {
    const EngineText property(JSStringCreateWithUTF8CString(name));
    JSObjectDeleteProperty(m_context.get(), global, property.get(), nullptr);
  }
}

ScriptResult ScriptContext::evaluate(std::u16string_view expression) {
  const EngineText script = engineText(expression);
  JSValueRef exception = nullptr;
  const JSValueRef value =
      JSEvaluateScript(m_context.get(), script.get(), nullptr, nullptr, 1, &exception);
  if (exception) return thrown(m_context.get(), Outcome::nothing, exception);
  return resultOf(value);
}

void ScriptContext::collectGarbage() {
  if (JSSynchronousGarbageCollectForDebugging) {
    JSSynchronousGarbageCollectForDebugging(m_context.get());
  } else {
    JSGarbageCollect(m_context.get());
  }
}

ScriptResult ScriptContext::resultOf(JSValueRef value) {
  ScriptResult result;
  if (JSValueIsUndefined(m_context.get(), value) || JSValueIsNull(m_context.get(), value)) {
    return result;
  }
  JSValueRef exception = nullptr;
  result.text.reset(JSValueToStringCopy(m_context.get(), value, &exception));
  if (exception) return thrown(m_context.get(), Outcome::noText, exception);
  result.outcome = result.text ? Outcome::text : Outcome::noText;
  return result;
}

}  // namespace zarvy
