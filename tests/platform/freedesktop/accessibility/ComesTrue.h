#pragma once

#include <chrono>

#include <QCoreApplication>

#include "e2e/harness/WaitUntil.h"

namespace zarvy {

// Whether `condition` becomes true within ten seconds. The fakes answer on this thread, so that it
// has to run an event loop.
template <typename Condition>
[[nodiscard]] bool comesTrue(Condition condition) {
  return e2e::waitUntil(
      [&] {
        QCoreApplication::processEvents();
        return condition();
      },
      std::chrono::seconds(10), std::chrono::milliseconds(1));
}

}  // namespace zarvy
