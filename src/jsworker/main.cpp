// zarvy-js-worker [<locale>]: runs scripts for the program that started it, one at a
// time, until that program closes the socket or ends the process. Not for use by hand.

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <jsc/jsc.h>
#include <memory>

#include "jsworker/Channel.h"
#include "jsworker/EngineZone.h"
#include "jsworker/NativeFunctions.h"
#include "jsworker/Sandbox.h"
#include "jsworker/ScriptContext.h"
#include "jsworker/ScriptWatch.h"
#include "jsworker/wire/ScriptWire.h"

namespace {

[[noreturn]] void runScripts(const char* locale) {
  std::setlocale(LC_ALL, "");  // the engine asks it for the user's language
  zarvy::setLanguage(locale);
  // Scripts are short: compiling them to machine code would cost memory and gain nothing, and
  // without it no page ever has to be both writable and executable.
  jsc_options_set_boolean(JSC_OPTIONS_USE_JIT, FALSE);
  zarvy::ScriptContext context;
  const zarvy::Channel channel(zarvy::scriptwire::workerSocket);
  const auto localTime = std::make_shared<zarvy::ProgramsLocalTime>(channel);
  const zarvy::ScriptWatch watch(zarvy::scriptwire::workerSocket);
  zarvy::giveUpPrivileges();
  zarvy::enterSandbox();
  channel.sendReady();
  while (true) {
    const zarvy::ScriptRequest request = channel.receiveRequest();
    watch.scriptBegins();
    localTime->forget();
    zarvy::setEngineZone(localTime, request.zoneName);
    const zarvy::ScriptResult result = context.evaluate(request.expression);
    watch.scriptEnds();
    channel.sendResult(result);
    if (!watch.isLeftLarge() || channel.isAsked()) continue;  // a script waits for its second
    context.collectGarbage();
    watch.endSoonIfLeftLarge();
  }
}

}  // namespace

int main(int argc, char* argv[]) {
  try {
    runScripts(argc > 1 ? argv[1] : "");
  } catch (const std::exception& error) {
    std::fprintf(stderr, "zarvy-js-worker: %s\n", error.what());
  }
  return EXIT_FAILURE;
}
