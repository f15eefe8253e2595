#pragma once

#include <map>

#include <QByteArray>
#include <QString>

namespace zarvy::x11 {

// Watches whether another process does anything: any of its threads may be the one that reads its
// keys. One thread.
class ProcessActivity {
 public:
  // 0, or a process that is gone, is always taken for resting.
  explicit ProcessActivity(qint64 processIdentifier);

  // True where all its threads sleep and have done next to nothing since the last call. Some
  // programs have a thread that wakes up by the clock for a moment: that alone is no activity.
  [[nodiscard]] bool isResting();

  // True where it has been stopped, by a debugger or a shell, and does nothing until it is
  // continued.
  [[nodiscard]] bool isStopped() const;

 private:
  QString m_folder;
  std::map<QByteArray, qint64> m_runTimes;  // of each thread, in nanoseconds
};

}  // namespace zarvy::x11
