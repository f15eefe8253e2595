#include "core/matching/SlowPatterns.h"

#include <utility>

namespace zarvy {

bool SlowPatterns::note(const QString& pattern) {
  const std::scoped_lock guard(m_lock);
  if (++m_times[pattern] != patience) return false;
  m_leftOut.insert(pattern);
  return true;
}

QSet<QString> SlowPatterns::leftOut() const {
  const std::scoped_lock guard(m_lock);
  return m_leftOut;
}

void SlowPatterns::keepThoseOf(const QList<Snippet>& regexes) {
  const std::scoped_lock guard(m_lock);
  if (m_times.isEmpty()) return;
  QHash<QString, int> kept;
  for (const Snippet& snippet : regexes) {
    const auto times = std::as_const(m_times).constFind(snippet.trigger);
    if (times != m_times.cend()) kept.insert(snippet.trigger, *times);
  }
  m_times = std::move(kept);
  m_leftOut.removeIf([this](const QString& pattern) { return !m_times.contains(pattern); });
}

}  // namespace zarvy
