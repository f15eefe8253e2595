#pragma once

#include <memory>

#include <QString>

class QLockFile;

namespace zarvy {

// Keeps two instances from serving one user at a time: both would hear every key, expand every
// trigger and write the same documents. The claim goes with the process, in whatever way it ends.
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

 private:
  std::unique_ptr<QLockFile> m_lock;
  const bool m_isOnlyOne;
};

}  // namespace zarvy
