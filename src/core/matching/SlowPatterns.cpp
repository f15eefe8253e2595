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

void SlowPatterns::keepThoseOf(const TriggerLibrary& library) {
  const std::scoped_lock guard(m_lock);
  if (m_times.isEmpty()) return;
  QHash<QString, int> kept;
  for (const qsizetype position : library.regexPositions()) {
    const QString& pattern = library.snippets().at(position).trigger;
    const auto times = std::as_const(m_times).constFind(pattern);
    if (times != m_times.cend()) kept.insert(pattern, *times);
  }
  m_times = std::move(kept);
  m_leftOut.removeIf([this](const QString& pattern) { return !m_times.contains(pattern); });
}

}  // namespace zarvy
