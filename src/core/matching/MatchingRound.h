#pragma once

#include <chrono>
#include <mutex>
#include <vector>

#include <QHash>
#include <QList>
#include <QSet>
#include <QString>

#include "base/Clock.h"
#include "core/model/Snippet.h"

namespace zarvy {

// One key's search through the regular expressions: how much time is left for it, and which
// patterns used it. One thread.
//
// All patterns together have 50 ms, compiling included. Where these are used up the patterns behind
// are not asked for this key. One pattern alone has 10 ms of them, so that a few slow ones leave
// the others their turn.
//
// Too slow is a pattern that was stopped after its 10 ms, that took 50 ms to compile, or that took
// too much memory; and where the 50 ms are used up, each one that did much work. Work is counted in
// steps, not in time alone. A round in which expressions were compiled blames none for the whole,
// as the next one has that behind it.
class MatchingRound {
 public:
  static constexpr std::chrono::milliseconds timeOfAll{50};
  static constexpr std::chrono::milliseconds timeOfOne{10};

  // What more steps than these is much work: some 1 ms, where an ordinary pattern takes some us.
  static constexpr qint64 ordinarySteps = 50'000;

  // `leftOut`: the patterns that are not to be asked at all.
  MatchingRound(const SteadyClock& clock, QSet<QString> leftOut);

  [[nodiscard]] bool isLeftOut(const Snippet& snippet) const;

  // Looks at the clock. So do the calls that begin or end something.
  void look();

  // The time for all was used up when the clock was last looked at.
  [[nodiscard]] bool isOver() const { return m_now - m_start >= timeOfAll; }

  // Around the compilation of the pattern of `snippet`.
  void beginCompiling();
  void endCompiling(const Snippet& snippet, bool hasCompiled);

  // Around the search for the pattern of `snippet`, and within it.
  void beginSearch();
  [[nodiscard]] bool mayGoOn(qint64 steps);
  void endSearch(const Snippet& snippet, bool hasGivenUp);

  // The snippets whose pattern was too slow.
  [[nodiscard]] std::vector<Snippet> tooSlow() const;

  // The time is used up, and no single pattern is to blame: there are too many.
  [[nodiscard]] bool isCrowded() const;

 private:
  const SteadyClock& m_clock;
  const QSet<QString> m_leftOut;
  const std::chrono::nanoseconds m_start;
  std::chrono::nanoseconds m_now;
  std::chrono::nanoseconds m_begin;  // of what is under way
  qint64 m_steps = 0;                // of the search under way
  bool m_isSlowAlone = false;        // so was that search stopped
  bool m_isStopped = false;
  bool m_hasCompiled = false;
  std::vector<Snippet> m_tooSlow;
  std::vector<Snippet> m_hardWorking;
};

// How often each pattern was too slow. After three times a pattern is left out, until the library
// has it no longer: what else changes in the library does not bring it back. Any thread.
class SlowPatterns {
 public:
  static constexpr int patience = 3;

  // Counts one more time. True for the one after which the pattern is left out.
  [[nodiscard]] bool note(const QString& pattern);

  [[nodiscard]] QSet<QString> leftOut() const;

  // Forgets the patterns that none of these snippets has.
  void keepThoseOf(const QList<Snippet>& regexes);

 private:
  mutable std::mutex m_lock;
  QHash<QString, int> m_times;  // guarded by m_lock, as is what follows
  QSet<QString> m_leftOut;
};

}  // namespace zarvy
