#pragma once

#include <atomic>
#include <string>
#include <thread>

#include <QString>
#include <QTemporaryDir>

#include "base/posix/FileDescriptor.h"

namespace zarvy {

// A Unix socket where a bus might be. Answers each line with which a connection to a bus begins as
// it is told to, and says nothing to what follows. Ends with the object, and its connections too.
class FakeBus {
 public:
  enum class Manner { answers, isSilent, refuses, closes, babbles };

  // `name` is that of the socket's file, or in the abstract name space where that is chosen.
  explicit FakeBus(Manner manner, const QString& name = QStringLiteral("bus"),
                   bool isAbstract = false);
  ~FakeBus();
  FakeBus(const FakeBus&) = delete;
  FakeBus& operator=(const FakeBus&) = delete;

  // Without escapes.
  [[nodiscard]] const QString& path() const { return m_path; }

  // Whether a connection has come to its first message, which gets no answer.
  [[nodiscard]] bool hasBegun() const { return m_hasBegun; }

  // How many connections it has taken so far.
  [[nodiscard]] int connectionCount() const { return m_connectionCount; }

  // The first line of the latest connection, with the zero byte ahead of it.
  [[nodiscard]] std::string firstLine() const { return m_firstLine; }

 private:
  void serve();
  void talk();
  bool reply(const std::string& line);

  const Manner m_manner;
  QTemporaryDir m_folder;
  QString m_path;
  FileDescriptor m_listening;
  std::atomic<int> m_talking = -1;
  std::atomic<bool> m_ends = false;
  std::atomic<bool> m_hasBegun = false;
  std::atomic<int> m_connectionCount = 0;
  std::string m_firstLine;  // read once a probe has ended
  std::thread m_thread;
};

}  // namespace zarvy
