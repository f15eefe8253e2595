#pragma once

#include <functional>
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
  gaveUp,  // it was not to go on, or took too much memory; the text may or may not match
};

struct RegexSearch {
  RegexOutcome outcome = RegexOutcome::noMatch;
  RegexMatch match;  // only where matched
};

// A compiled regular expression of ICU's syntax, without options: case counts unless the pattern
// says otherwise. Immutable to its users; any thread, one search at a time and the others wait.
class Regex {
 public:
  // Asked now and then while a search is under way, whether it may go on. `steps` says what the
  // search has cost so far, some 20 ns each; fewer than 10,000 pass without a question.
  using MayGoOn = std::function<bool(qint64 steps)>;

  // The expression, or what is wrong with the pattern as one line.
  using Compilation = std::variant<std::shared_ptr<const Regex>, QString>;
  [[nodiscard]] static Compilation compile(const QString& pattern);

  ~Regex();
  Regex(const Regex&) = delete;
  Regex& operator=(const Regex&) = delete;

  [[nodiscard]] const QString& pattern() const { return m_pattern; }

  // False where no part of `text` can match. A look at the text tells it, before any search.
  [[nodiscard]] bool canMatch(QStringView text) const { return m_required.arePresentIn(text); }

  // The leftmost match in `text`. Without `mayGoOn` it is sought to the end, which may never come:
  // only for a pattern of the program's own.
  [[nodiscard]] RegexSearch firstMatch(QStringView text, const MayGoOn& mayGoOn = {}) const;

  // All matches from left to right, none overlapping; without end, as above.
  [[nodiscard]] QList<RegexMatch> allMatches(QStringView text) const;

  // The number of a named group, for RegexMatch::groups. Absent for a name the pattern has not.
  [[nodiscard]] std::optional<std::size_t> groupNumber(const QString& name) const;

 private:
  struct Close {
    void operator()(URegularExpression* expression) const;
  };
  using Handle = std::unique_ptr<URegularExpression, Close>;
  struct Watch;

  Regex(QString pattern, Handle handle, std::unique_ptr<Watch> watch);

  [[nodiscard]] RegexSearch search(bool fromStart) const;

  const QString m_pattern;
  const RequiredCharacters m_required;
  const std::unique_ptr<Watch> m_watch;  // guarded by m_lock, as is what follows
  const Handle m_handle;                 // holds the state of the search
  mutable std::mutex m_lock;
};

// What `replacementTemplate` gives as the replacement of `matched`, by ICU's rules for the regular
// expression `whole`, which matches all of it and says by its groups what "$1" and the like are. By
// default there are none. "$0" is the matched text, and a backslash makes the next character
// literal and disappears, but for "\u" and "\U" with a code point behind them. Absent where ICU
// refuses the template, a "$" with neither a group's number nor an escape for instance. Any thread.
[[nodiscard]] std::optional<QString> expandTemplate(const QString& replacementTemplate,
                                                    QStringView matched,
                                                    const char* whole = "\\A[\\s\\S]*");

}  // namespace zarvy
