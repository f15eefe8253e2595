#include "core/matching/MatchingRound.h"

#include <utility>

namespace zarvy {

MatchingRound::MatchingRound(const SteadyClock& clock, QSet<QString> leftOut)
    : m_clock(clock),
      m_leftOut(std::move(leftOut)),
      m_start(clock.now()),
      m_now(m_start),
      m_begin(m_start) {}

bool MatchingRound::isLeftOut(const Snippet& snippet) const {
  return m_leftOut.contains(snippet.trigger);
}

void MatchingRound::look() {
  m_now = m_clock.now();
}

void MatchingRound::beginCompiling() {
  look();
  m_begin = m_now;
}

void MatchingRound::endCompiling(const Snippet& snippet, bool hasCompiled) {
  look();
  m_hasCompiled |= hasCompiled;
  if (m_now - m_begin >= timeOfAll) m_tooSlow.push_back(snippet);
}

void MatchingRound::beginSearch() {
  look();
  m_begin = m_now;
  m_steps = 0;
  m_isSlowAlone = false;
  m_isStopped = false;
}

bool MatchingRound::mayGoOn(qint64 steps) {
  look();
  m_steps = steps;
  m_isSlowAlone = steps > ordinarySteps && m_now - m_begin >= timeOfOne;
  m_isStopped = m_isSlowAlone || isOver();
  return !m_isStopped;
}

void MatchingRound::endSearch(const Snippet& snippet, bool hasGivenUp) {
  const bool lacksMemory = hasGivenUp && !m_isStopped;
  if (m_isSlowAlone || lacksMemory) {
    m_tooSlow.push_back(snippet);
  } else if (m_steps > ordinarySteps) {
    m_hardWorking.push_back(snippet);
  }
}

std::vector<Snippet> MatchingRound::tooSlow() const {
  std::vector<Snippet> result = m_tooSlow;
  if (isOver() && !m_hasCompiled) {
    result.insert(result.end(), m_hardWorking.begin(), m_hardWorking.end());
  }
  return result;
}

bool MatchingRound::isCrowded() const {
  return isOver() && !m_hasCompiled && tooSlow().empty();
}

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
