#pragma once

#include <functional>
#include <future>
#include <memory>

#include <QString>

#include "base/posix/FileDescriptor.h"

class QLocalServer;

namespace zarvy {

// Keeps two instances from serving one user at a time: both would hear every key, expand every
// trigger and write the same documents. The claim is a lock on a file beside the documents, which
// goes with the process in whatever way that ends, and which no other user can take. Main thread.
class SingleInstance {
 public:
  // However `dataDirectory` is written, and also where it is not there yet.
  explicit SingleInstance(const QString& dataDirectory);
  ~SingleInstance();
  SingleInstance(const SingleInstance&) = delete;
  SingleInstance& operator=(const SingleInstance&) = delete;

  // Claims the data directory until the end of this object. Where another process has claimed it,
  // tells that of this start; where that is just ending, waits for the end. False where the other
  // one goes on, or does not answer. True too where nothing can be claimed: a program that does not
  // start would be the greater harm.
  [[nodiscard]] bool becomeOnlyOne();

  // Calls `onOtherStart` whenever the program is started again. It says whether this one goes on;
  // where it does not, the other one waits for its end and takes its place. For the only one; once,
  // within the life of the QCoreApplication.
  void listen(std::function<bool()> onOtherStart);

  // A program that is started from now on waits for the end of this one. As soon as the event loop
  // has ended: nothing would answer.
  void stopListening();

  // What became of the attempt to lock the file.
  struct Claim {
    bool isOurs = true;
    FileDescriptor lock = {};
    QString socketOfOther = {};
  };

 private:
  enum class Answer { none, silence, given };

  [[nodiscard]] bool claim();
  [[nodiscard]] Answer tellOnlyOne() const;

  const QString m_dataDirectory;
  const QString m_socket;   // where a second one tells of its start; it stands in the locked file
  QString m_socketOfOther;  // of the one that has the claim; empty while that does not listen
  FileDescriptor m_claim;
  std::future<Claim> m_lateClaim;  // of a disk that took long: holds the lock once it has it
  std::unique_ptr<QLocalServer> m_server;
};

}  // namespace zarvy
