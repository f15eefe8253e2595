#pragma once

#include <chrono>

#include <QByteArray>
#include <QString>
#include <QStringView>

class QDBusConnection;

namespace zarvy {

// The address of the bus that ibus has for itself, as its daemon leaves it for the applications of
// this display; empty where it has never run. Of one that has ended the address is still there.
[[nodiscard]] QString ibusAddress();

// The address in the content of the file that the daemon leaves.
[[nodiscard]] QString ibusAddressIn(const QByteArray& content);

// Whether ibus, on its bus, makes other text of the keys now. False where it does not answer in
// time. Blocks for up to `limit`; any thread.
[[nodiscard]] bool ibusIsComposing(const QDBusConnection& bus, std::chrono::milliseconds limit);

// Whether its engine of this name makes other text of the keys; none has no name.
[[nodiscard]] bool ibusEngineComposes(QStringView engine);

}  // namespace zarvy
