#pragma once

#include <chrono>
#include <cstdint>

#include <QJsonArray>
#include <QJsonObject>
#include <QTcpSocket>

namespace zarvy::e2e {

// The remote control of a browser of Mozilla's, "Marionette": JSON messages over TCP, the length in
// decimal and a colon ahead of each. One thread. Throws std::runtime_error where the browser does
// not answer.
class RemoteControl {
 public:
  // False where nobody listens there yet.
  [[nodiscard]] bool connectTo(std::uint16_t port);

  // Sends a command and gives its result.
  QJsonObject call(const QString& command, const QJsonObject& parameters);

 private:
  [[nodiscard]] QByteArray receive();

  QTcpSocket m_socket;
  int m_lastId = 0;
};

}  // namespace zarvy::e2e
