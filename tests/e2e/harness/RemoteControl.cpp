#include "e2e/harness/RemoteControl.h"

#include <stdexcept>

#include <QHostAddress>
#include <QJsonDocument>

namespace zarvy::e2e {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int answerDeadline = 60000;  // milliseconds

}  // namespace

bool RemoteControl::connectTo(std::uint16_t port) {
  m_socket.abort();
  m_socket.connectToHost(QHostAddress(QHostAddress::LocalHost), port);
  if (!m_socket.waitForConnected(1000)) return false;
  static_cast<void>(receive());  // it greets
  return true;
}

QJsonObject RemoteControl::call(const QString& command, const QJsonObject& parameters) {
  const int id = ++m_lastId;
  const QByteArray message =
      QJsonDocument(QJsonArray{0, id, command, parameters}).toJson(QJsonDocument::Compact);
  m_socket.write(QByteArray::number(message.size()) + ":" + message);
  for (;;) {
    const QJsonArray answer = QJsonDocument::fromJson(receive()).array();
    if (answer.at(0).toInt() != 1 || answer.at(1).toInt() != id) continue;
    if (!answer.at(2).isNull()) {
      throw std::runtime_error("the browser refuses " + command.toStdString() + ": " +
                               answer.at(2)[u"message"_s].toString().toStdString());
    }
    return answer.at(3).toObject();
  }
}

QByteArray RemoteControl::receive() {
  const auto more = [this] {
    if (!m_socket.waitForReadyRead(answerDeadline)) {
      throw std::runtime_error("the browser does not answer");
    }
  };
  QByteArray length;
  for (char digit = 0; digit != ':';) {
    if (m_socket.bytesAvailable() == 0) more();
    m_socket.getChar(&digit);
    length += digit;
  }
  length.chop(1);
  while (m_socket.bytesAvailable() < length.toLongLong()) more();
  return m_socket.read(length.toLongLong());
}

}  // namespace zarvy::e2e
