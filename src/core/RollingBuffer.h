#pragma once

#include <mutex>

#include <QString>

namespace zarvy {

// The last characters typed, counted in user-perceived characters. Any thread.
class RollingBuffer {
 public:
  explicit RollingBuffer(qsizetype maxLength) : m_maxLength(maxLength) {}

  // Appends one character, which may join the last one where it is a combining mark; drops
  // characters from the start beyond the most that are kept. Returns a copy of the whole.
  QString append(QStringView character);

  void removeLast();
  void clear();
  [[nodiscard]] QString text() const;

 private:
  const qsizetype m_maxLength;
  mutable std::mutex m_lock;
  QString m_text;
};

}  // namespace zarvy
