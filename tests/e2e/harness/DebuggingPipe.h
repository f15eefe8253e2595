#pragma once

#include <string>

#include <QJsonObject>

#include "e2e/harness/ChildProcess.h"

namespace zarvy::e2e {

// The remote debugging protocol of a browser over the pipes that it was started with: JSON messages
// that end with NUL. One thread. Throws std::runtime_error where the browser does not answer.
class DebuggingPipe {
 public:
  DebuggingPipe();

  // What the browser has to be started with: it reads from 3 and writes to 4.
  [[nodiscard]] std::vector<ProcessSpecification::Descriptor> childDescriptors() const;

  // To be called once the browser runs.
  void closeChildEnds();

  // Sends a command, to the page of `session` where that is not empty, and gives its "result".
  QJsonObject call(const QString& method, const QJsonObject& parameters, const QString& session);

 private:
  void send(const QByteArray& message);
  [[nodiscard]] QByteArray receive();

  FileDescriptor m_commandsForChild;
  FileDescriptor m_commands;
  FileDescriptor m_answers;
  FileDescriptor m_answersFromChild;
  QByteArray m_received;
  int m_lastId = 0;
};

}  // namespace zarvy::e2e
