#pragma once

#include <chrono>

#include <QString>

class QDBusConnection;

namespace zarvy {

// The address of the bus that ibus has for itself, as its daemon leaves it for the applications of
// this display; empty where it has never run. Of one that has ended the address is still there.
[[nodiscard]] QString ibusAddress();

// Whether ibus, on its bus, makes other text of the keys now. False where it does not answer in
// time. Blocks for up to `limit`; any thread.
[[nodiscard]] bool ibusIsComposing(const QDBusConnection& bus, std::chrono::milliseconds limit);

}  // namespace zarvy
