#pragma once

#include <QByteArray>
#include <QString>

namespace zarvy::x11 {

// Watches whether the main thread of another process sleeps. One thread.
class ProcessActivity {
 public:
  // 0, or a process that has gone, is always taken for resting.
  explicit ProcessActivity(qint64 processIdentifier);

  // True where the thread sleeps and has not run since the last call.
  [[nodiscard]] bool isResting();

  // True where it has been stopped, by a debugger or a shell, and does nothing until it is
  // continued.
  [[nodiscard]] bool isStopped() const;

 private:
  QString m_folder;
  QByteArray m_lastSchedule;
};

}  // namespace zarvy::x11
