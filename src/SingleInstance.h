#pragma once

#include <functional>
#include <memory>

#include <QString>

class QLocalServer;
class QLockFile;

namespace zarvy {

// Keeps two instances from serving one user at a time: both would hear every key, expand every
// trigger and write the same documents. The claim goes with the process, in whatever way it ends.
// Main thread.
class SingleInstance {
 public:
  // Claims `dataDirectory`, by a lock file in the folder for what lives as long as a session.
  explicit SingleInstance(const QString& dataDirectory);
  ~SingleInstance();
  SingleInstance(const SingleInstance&) = delete;
  SingleInstance& operator=(const SingleInstance&) = delete;

  // False where another process has claimed the directory. True too where there is no place for a
  // lock file: a program that does not start would be the greater harm.
  [[nodiscard]] bool isOnlyOne() const { return m_isOnlyOne; }

  // Calls `onOtherStart` whenever the program is started again. For the only one; once, within the
  // life of the QCoreApplication.
  void listen(std::function<void()> onOtherStart);

  // Tells the only one of this start. For the others; waits a moment for one that is just coming
  // up, and returns without a word where it does not answer.
  void tellOnlyOne() const;

 private:
  const QString m_place;  // of the lock file and the socket, without their endings
  std::unique_ptr<QLockFile> m_lock;
  const bool m_isOnlyOne;
  std::unique_ptr<QLocalServer> m_server;
};

}  // namespace zarvy
