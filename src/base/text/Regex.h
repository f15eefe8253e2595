#pragma once

#include <atomic>
#include <memory>
#include <mutex>
#include <optional>
#include <variant>
#include <vector>

#include <QList>
#include <QString>

#include "base/text/RequiredCharacters.h"

struct URegularExpression;

namespace zarvy {

// A stretch of text, in UTF-16 units.
struct TextRange {
  qsizetype start = 0;
  qsizetype length = 0;

  [[nodiscard]] qsizetype end() const { return start + length; }
  bool operator==(const TextRange&) const = default;
};

// One match of an expression: the whole first, then its groups in order; a group that took no part
// is absent.
struct RegexMatch {
  std::vector<std::optional<TextRange>> groups;

  [[nodiscard]] TextRange range() const { return groups.front().value_or(TextRange{}); }
};

enum class RegexOutcome {
  matched,
  noMatch,
  gaveUp,  // matching took more time or memory than it may; the text may or may not match
};

struct RegexSearch {
  RegexOutcome outcome = RegexOutcome::noMatch;
  RegexMatch match;  // only where matched
};

// A compiled regular expression of ICU's syntax, without options: case counts unless the pattern
// says otherwise. Immutable to its users; any thread, one search at a time and the others wait.
//
// No search goes on for longer than some 20 ms: an expression that backtracks without end gives
// up. From then on it gets a tenth of that, so that it cannot slow down every key press.
class Regex {
 public:
  // The expression, or what is wrong with the pattern as one line.
  using Compilation = std::variant<std::shared_ptr<const Regex>, QString>;
  [[nodiscard]] static Compilation compile(const QString& pattern);

  ~Regex();
  Regex(const Regex&) = delete;
  Regex& operator=(const Regex&) = delete;

  [[nodiscard]] const QString& pattern() const { return m_pattern; }

  // The leftmost match in `text`.
  [[nodiscard]] RegexSearch firstMatch(QStringView text) const;

  // All matches from left to right, none overlapping; those found so far where it gives up.
  [[nodiscard]] QList<RegexMatch> allMatches(QStringView text) const;

  // The number of a named group, for RegexMatch::groups. Absent for a name the pattern has not.
  [[nodiscard]] std::optional<std::size_t> groupNumber(const QString& name) const;

  // True for the first caller only, so that giving up is reported once for an expression.
  [[nodiscard]] bool claimGivingUpReport() const { return !m_isReported.exchange(true); }

 private:
  struct Close {
    void operator()(URegularExpression* expression) const;
  };
  using Handle = std::unique_ptr<URegularExpression, Close>;

  Regex(QString pattern, Handle handle);

  [[nodiscard]] RegexSearch search(bool fromStart) const;

  const QString m_pattern;
  const RequiredCharacters m_required;
  const Handle m_handle;              // guarded by m_lock: it holds the state of the search
  mutable bool m_hasGivenUp = false;  // guarded by m_lock; the time limit is the short one
  mutable std::mutex m_lock;
  mutable std::atomic<bool> m_isReported{false};
};

}  // namespace zarvy
