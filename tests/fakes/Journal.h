#pragma once

#include <mutex>
#include <utility>

#include <QStringList>

namespace zarvy {

// What several fakes were asked to do, in one order. Any thread.
class Journal {
 public:
  void add(const QString& entry) {
    const std::scoped_lock guard(m_lock);
    m_entries.append(entry);
  }

  [[nodiscard]] QStringList entries() const {
    const std::scoped_lock guard(m_lock);
    return m_entries;
  }

  // The entries added since the last call.
  [[nodiscard]] QStringList takeEntries() {
    const std::scoped_lock guard(m_lock);
    return std::exchange(m_entries, {});
  }

 private:
  mutable std::mutex m_lock;
  QStringList m_entries;
};

}  // namespace zarvy
