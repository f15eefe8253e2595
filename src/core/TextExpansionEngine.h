#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>

#include <QHash>
#include <QList>
#include <QMap>
#include <QSet>
#include <QString>
#include <QUuid>

#include "base/Clock.h"
#include "base/LineOutput.h"
#include "core/CursorMarker.h"
#include "core/matching/MatchingRound.h"
#include "core/matching/TriggerLibrary.h"
#include "core/model/GlobalVariable.h"
#include "core/model/Snippet.h"
#include "core/placeholders/PlaceholderServices.h"

namespace zarvy {

struct FillInField;
class Regex;

// The snippet whose trigger ends the typed text.
struct TriggerMatch {
  Snippet snippet;
  // What the match consumed; its length in user-perceived characters is what gets deleted.
  QString matchedString;
  // The named groups of a regular-expression trigger that took part; empty for a literal one.
  QMap<QString, QString> captures;

  bool operator==(const TriggerMatch&) const = default;
};

// Decides whether the text just typed ends in a trigger, and turns the snippet's replacement into
// the text to type. Any thread, unless said otherwise; in practice the main one.
class TextExpansionEngine {
 public:
  using CompiledRegex = std::shared_ptr<const Regex>;

  // `clock` measures what matching takes, on the thread that does it.
  TextExpansionEngine(LineOutput& output, const SteadyClock& clock,
                      const PlaceholderServices& services);
  ~TextExpansionEngine();
  TextExpansionEngine(const TextExpansionEngine&) = delete;
  TextExpansionEngine& operator=(const TextExpansionEngine&) = delete;

  // A replacement needs values from the user first. Set and called on the thread that expands.
  std::function<void(const Snippet&, const QList<FillInField>&)> onNeedsFillIn;

  // For a listener; nothing calls it.
  std::function<void(const Snippet&, const QString&, qint64)> onExpand;

  // The library, in its own order. Setting it discards every compiled expression. What matching
  // needs is worked out before the lock is taken, so that a match never waits for it. Prints a line
  // for each expression of more than 10,000 UTF-16 units; findMatch() never asks those.
  void setSnippets(const SnippetList& snippets);

  // The same where `change` is what has become of the library that was set last; what is added
  // stands behind all others. Quick also among very many snippets, so it works under the lock.
  // Prints a line for the changed ones alone.
  void changeSnippets(const SnippetList& snippets, const ListChange& change);

  [[nodiscard]] SnippetList snippets() const;

  void setGlobalVariables(const QList<GlobalVariable>& globalVariables);
  [[nodiscard]] QList<GlobalVariable> globalVariables() const;

  // The snippet whose trigger ends `buffer`: the first literal one in the library's order, else
  // the first regular expression. Called for every character typed; what it costs does not grow
  // with the number of literal triggers, and expressions have 50 ms together: those behind are not
  // asked then. Prints a line for each expression that does not compile. One that was too slow
  // three times is left out, after a line, until it is edited.
  [[nodiscard]] std::optional<TriggerMatch> findMatch(const QString& buffer);

  // The expression of `snippet` with "$" behind it, compiled once and kept until the library is
  // set again. Null, after a line of output, where it does not compile.
  [[nodiscard]] CompiledRegex compiledRegex(const Snippet& snippet);

  // The leftmost match of the expression of `snippet` in `buffer`. Absent too where the match
  // begins or ends inside a user-perceived character, and where matching took too long, now or
  // three times before.
  [[nodiscard]] std::optional<TriggerMatch> matchRegex(const Snippet& snippet,
                                                       const QString& buffer);

  // What is to be typed for `snippet`; `captures` are the named groups of its match. Absent where
  // the values of a form are needed first: onNeedsFillIn has then been called with the fields and
  // with a copy of `snippet` whose replacement has its captures and nested snippets in place.
  // Waits for the evaluators, at most 5 seconds for a command and 1 for a script.
  [[nodiscard]] std::optional<ExpandedText> processSnippet(
      const Snippet& snippet, const QMap<QString, QString>& captures) const;

  // The text for `snippet` with the answers of its form, by the name of the field. "{{cursor}}" is
  // left in it. Waits as processSnippet() does.
  [[nodiscard]] QString applyFillInValues(const Snippet& snippet,
                                          const QMap<QString, QString>& values) const;

  // The inputs that `text` asks for; empty where it asks for none.
  [[nodiscard]] QList<FillInField> parseFillInFields(const QString& text) const;

  // The steps that the two above share. `visited` holds the triggers on the way to `text`.
  [[nodiscard]] QString expandNestedSnippets(const QString& text,
                                             const QSet<QString>& visited) const;
  [[nodiscard]] QString processPlaceholders(const QString& text) const;

  // Makes what is made at the first use and then kept: rules of text, formatters of dates. Expands
  // nothing, and has no visible effect.
  void warmUp() const;

 private:
  // Which setting of the library something belongs to.
  using Edition = quint64;

  void sayIfTooLong(const Snippet& snippet) const;
  [[nodiscard]] Edition edition() const;
  [[nodiscard]] MatchingRound beginRound() const;
  void conclude(const MatchingRound& round);
  [[nodiscard]] CompiledRegex compiledRegex(const Snippet& snippet, Edition edition,
                                            MatchingRound& round);
  [[nodiscard]] CompiledRegex compile(const Snippet& snippet, MatchingRound& round) const;
  [[nodiscard]] std::optional<TriggerMatch> matchRegex(const Snippet& snippet,
                                                       const QString& buffer, Edition edition,
                                                       MatchingRound& round);

  LineOutput& m_output;
  const SteadyClock& m_clock;
  const PlaceholderServices m_services;
  SlowPatterns m_slowPatterns;
  std::atomic<int> m_crowdedRounds = 0;

  // Taken together only where the library is set or changed, in this order; every other road holds
  // one at a time.
  mutable std::mutex m_snippetsLock;
  mutable std::mutex m_regexCacheLock;

  TriggerLibrary m_library;  // guarded by m_snippetsLock
  Edition m_edition = 0;     // of m_library; guarded by m_snippetsLock

  // Guarded by m_regexCacheLock: expressions by Snippet::id, and the edition of the library that
  // they belong to. A match that is still at work on an earlier one neither reads nor fills the
  // cache.
  QHash<QUuid, CompiledRegex> m_regexCache;
  Edition m_regexCacheEdition = 0;

  mutable std::mutex m_globalVariablesLock;
  QList<GlobalVariable> m_globalVariables;  // guarded by m_globalVariablesLock
};

}  // namespace zarvy
