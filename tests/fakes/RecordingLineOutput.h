#pragma once

#include <mutex>
#include <utility>

#include <QStringList>

#include "base/LineOutput.h"

namespace zarvy {

// Keeps the printed lines. Any thread.
class RecordingLineOutput final : public LineOutput {
 public:
  void print(const QString& line) override {
    const std::scoped_lock guard(m_lock);
    m_lines.append(line);
  }

  [[nodiscard]] QStringList lines() const {
    const std::scoped_lock guard(m_lock);
    return m_lines;
  }

  // The lines printed since the last call.
  [[nodiscard]] QStringList takeLines() {
    const std::scoped_lock guard(m_lock);
    return std::exchange(m_lines, {});
  }

 private:
  mutable std::mutex m_lock;
  QStringList m_lines;
};

}  // namespace zarvy
