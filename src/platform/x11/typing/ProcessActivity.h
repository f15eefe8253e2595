#pragma once

#include <QString>

namespace zarvy::x11 {

// Watches whether the main thread of another process sleeps. One thread.
class ProcessActivity {
 public:
  // 0, or a process of another machine or user, is always taken for resting.
  explicit ProcessActivity(qint64 processIdentifier);

  // True where the thread sleeps and has used no processor time since the last call.
  [[nodiscard]] bool isResting();

 private:
  QString m_statFile;
  QByteArray m_lastTimes;
};

}  // namespace zarvy::x11
