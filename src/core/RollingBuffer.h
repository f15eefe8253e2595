#pragma once

#include <mutex>

#include <QString>

namespace zarvy {

// The last characters typed, counted in user-perceived characters. What is dropped is overwritten
// in memory, as it may be something secret. Any thread.
class RollingBuffer {
 public:
  explicit RollingBuffer(qsizetype maxLength);
  ~RollingBuffer() { clear(); }
  RollingBuffer(const RollingBuffer&) = delete;
  RollingBuffer& operator=(const RollingBuffer&) = delete;

  // Appends one character, which may join the last one where it is a combining mark; drops
  // characters from the start beyond the most that are kept. Returns a copy of the whole, which
  // shares nothing with this and is the caller's to overwrite.
  QString append(QStringView character);

  void removeLast();
  void clear();
  [[nodiscard]] QString text() const;

 private:
  void chop(qsizetype units);

  const qsizetype m_maxLength;
  mutable std::mutex m_lock;
  QString m_text;  // never shared, and with room enough to seldom need more
};

}  // namespace zarvy
