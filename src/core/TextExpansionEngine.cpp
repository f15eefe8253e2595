#include "core/TextExpansionEngine.h"

#include <utility>
#include <variant>

#include "base/text/Graphemes.h"
#include "base/text/Regex.h"
#include "core/CursorMarker.h"
#include "core/placeholders/Captures.h"
#include "core/placeholders/FillInField.h"
#include "core/placeholders/FillInPlaces.h"
#include "core/placeholders/NestedSnippets.h"
#include "core/placeholders/Passes.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

// Absent where the range begins or ends inside a user-perceived character.
std::optional<QString> textOfRange(const QString& text, const TextRange& range) {
  if (!isGraphemeBoundary(text, range.start) || !isGraphemeBoundary(text, range.end())) {
    return std::nullopt;
  }
  return text.sliced(range.start, range.length);
}

QMap<QString, QString> namedCaptures(const Regex& regex, const RegexMatch& match,
                                     const QString& text) {
  QMap<QString, QString> captures;
  for (const QString& name : scanGroupNames(regex.pattern())) {
    const auto number = regex.groupNumber(name);
    if (!number) continue;
    const auto range = match.groups.at(*number);
    if (!range) continue;
    if (const auto capture = textOfRange(text, *range)) captures.insert(name, *capture);
  }
  return captures;
}

constexpr int patternsBetweenLooks = 64;

// How a line names the snippet of an expression.
QString nameOfRegex(const Snippet& snippet) {
  return u"regex for snippet '"_s + snippet.title + u"' (trigger: "_s + snippet.trigger + u')';
}

}  // namespace

TextExpansionEngine::TextExpansionEngine(LineOutput& output, const SteadyClock& clock,
                                         const PlaceholderServices& services)
    : m_output(output), m_clock(clock), m_services(services) {}

TextExpansionEngine::~TextExpansionEngine() = default;

void TextExpansionEngine::setSnippets(const SnippetList& snippets) {
  // The list that is here already, as at every start and after a pause, needs no second index.
  std::optional<TriggerLibrary> next;
  if (!this->snippets().isSharedWith(snippets)) {
    next.emplace(snippets);
    m_slowPatterns.keepThoseOf(next->regexes());
    for (const Snippet& snippet : snippets) sayIfTooLong(snippet);
  }
  // What is replaced lives to the end of this call, so that it is not taken apart under the locks.
  QHash<QUuid, CompiledRegex> replacedCache;
  const std::scoped_lock snippetsGuard(m_snippetsLock);
  const std::scoped_lock cacheGuard(m_regexCacheLock);
  if (next) std::swap(m_library, *next);
  m_regexCacheEdition = ++m_edition;
  replacedCache = std::exchange(m_regexCache, {});
}

void TextExpansionEngine::changeSnippets(const SnippetList& snippets, const ListChange& change) {
  if (change.kind == ListChange::Kind::reset) return setSnippets(snippets);
  QHash<QUuid, CompiledRegex> replacedCache;
  QList<Snippet> regexes;
  {
    const std::scoped_lock snippetsGuard(m_snippetsLock);
    const std::scoped_lock cacheGuard(m_regexCacheLock);
    m_library.follow(snippets, change);
    regexes = m_library.regexes();
    m_regexCacheEdition = ++m_edition;
    replacedCache = std::exchange(m_regexCache, {});
  }
  m_slowPatterns.keepThoseOf(regexes);
  if (change.kind == ListChange::Kind::removed) return;
  auto changed = snippets.iteratorAt(change.first);
  for (qsizetype left = change.count; left > 0; --left) sayIfTooLong(*changed++);
}

void TextExpansionEngine::sayIfTooLong(const Snippet& snippet) const {
  if (!TriggerLibrary::hasTooLongPattern(snippet)) return;
  m_output.print(u"Zarvy: Left out the regex for snippet '"_s + snippet.title +
                 u"': it is longer than "_s + QString::number(TriggerLibrary::longestPattern) +
                 u" characters"_s);
}

SnippetList TextExpansionEngine::snippets() const {
  const std::scoped_lock guard(m_snippetsLock);
  return m_library.snippets();
}

TextExpansionEngine::Edition TextExpansionEngine::edition() const {
  const std::scoped_lock guard(m_snippetsLock);
  return m_edition;
}

void TextExpansionEngine::setGlobalVariables(const QList<GlobalVariable>& globalVariables) {
  const std::scoped_lock guard(m_globalVariablesLock);
  m_globalVariables = globalVariables;
}

QList<GlobalVariable> TextExpansionEngine::globalVariables() const {
  const std::scoped_lock guard(m_globalVariablesLock);
  return m_globalVariables;
}

std::optional<TriggerMatch> TextExpansionEngine::findMatch(const QString& buffer) {
  if (!hasGraphemes(buffer, 2)) return std::nullopt;
  QList<Snippet> regexes;
  Edition edition = 0;
  {
    const std::scoped_lock guard(m_snippetsLock);
    if (const auto snippet = m_library.literalThatEnds(buffer)) {
      return TriggerMatch{*snippet, snippet->trigger, {}};
    }
    regexes = m_library.regexes();
    edition = m_edition;
  }
  if (regexes.isEmpty()) return std::nullopt;  // without a look at the clock, which takes longer
  MatchingRound round = beginRound();
  std::optional<TriggerMatch> match;
  int asked = 0;
  for (const Snippet& snippet : std::as_const(regexes)) {
    // Those that are ruled out ahead do not look at the clock, but may be many.
    if (++asked % patternsBetweenLooks == 0) round.look();
    match = matchRegex(snippet, buffer, edition, round);
    if (match || round.isOver()) break;
  }
  conclude(round);
  // Under the lock, as the list is changed in place once the library alone has it.
  const std::scoped_lock guard(m_snippetsLock);
  regexes = {};
  return match;
}

MatchingRound TextExpansionEngine::beginRound() const {
  return {m_clock, m_slowPatterns.leftOut()};
}

void TextExpansionEngine::conclude(const MatchingRound& round) {
  for (const Snippet& snippet : round.tooSlow()) {
    if (!m_slowPatterns.note(snippet.trigger)) continue;
    m_output.print(u"Zarvy: Gave up matching "_s + nameOfRegex(snippet) +
                   u": it takes too long, and is left out until it is edited"_s);
  }
  if (round.isCrowded() && ++m_crowdedRounds == SlowPatterns::patience) {
    m_output.print(u"Zarvy: Gave up matching some regexes: all of them together take too long"_s);
  }
}

TextExpansionEngine::CompiledRegex TextExpansionEngine::compiledRegex(const Snippet& snippet) {
  MatchingRound round = beginRound();
  return compiledRegex(snippet, edition(), round);
}

TextExpansionEngine::CompiledRegex TextExpansionEngine::compiledRegex(const Snippet& snippet,
                                                                      Edition edition,
                                                                      MatchingRound& round) {
  const std::scoped_lock guard(m_regexCacheLock);
  if (m_regexCacheEdition != edition) return compile(snippet, round);
  if (const auto known = m_regexCache.constFind(snippet.id); known != m_regexCache.constEnd()) {
    return *known;
  }
  CompiledRegex regex = compile(snippet, round);
  if (regex) m_regexCache.insert(snippet.id, regex);
  return regex;
}

TextExpansionEngine::CompiledRegex TextExpansionEngine::compile(const Snippet& snippet,
                                                                MatchingRound& round) const {
  round.beginCompiling();
  // Appended as it is, without a group around the trigger: "a|b" becomes "a|b$".
  Regex::Compilation compilation = Regex::compile(snippet.trigger + u'$');
  const auto* const error = std::get_if<QString>(&compilation);
  round.endCompiling(snippet, !error);
  if (error) {
    m_output.print(u"Zarvy: Failed to compile "_s + nameOfRegex(snippet) + u": "_s + *error);
    return nullptr;
  }
  return std::get<CompiledRegex>(std::move(compilation));
}

std::optional<TriggerMatch> TextExpansionEngine::matchRegex(const Snippet& snippet,
                                                            const QString& buffer) {
  MatchingRound round = beginRound();
  auto match = matchRegex(snippet, buffer, edition(), round);
  conclude(round);
  return match;
}

std::optional<TriggerMatch> TextExpansionEngine::matchRegex(const Snippet& snippet,
                                                            const QString& buffer, Edition edition,
                                                            MatchingRound& round) {
  if (round.isLeftOut(snippet)) return std::nullopt;
  const CompiledRegex regex = compiledRegex(snippet, edition, round);
  if (!regex || !regex->canMatch(buffer)) return std::nullopt;
  round.beginSearch();
  if (round.isOver()) return std::nullopt;
  const RegexSearch search =
      regex->firstMatch(buffer, [&round](qint64 steps) { return round.mayGoOn(steps); });
  round.endSearch(snippet, search.outcome == RegexOutcome::gaveUp);
  if (search.outcome != RegexOutcome::matched) return std::nullopt;
  auto matchedString = textOfRange(buffer, search.match.range());
  if (!matchedString) return std::nullopt;
  return TriggerMatch{snippet, *std::move(matchedString),
                      namedCaptures(*regex, search.match, buffer)};
}

std::optional<ExpandedText> TextExpansionEngine::processSnippet(
    const Snippet& snippet, const QMap<QString, QString>& captures) const {
  const QString text = expandNestedSnippets(applyCaptures(snippet.replacement, captures), {});
  const QList<FillInField> fields = parseFillInFields(text);
  if (fields.isEmpty()) return resolveCursorMarker(processPlaceholders(text));
  Snippet resolved = snippet;
  resolved.replacement = text;
  if (onNeedsFillIn) onNeedsFillIn(resolved, fields);
  return std::nullopt;
}

QString TextExpansionEngine::applyFillInValues(const Snippet& snippet,
                                               const QMap<QString, QString>& values) const {
  const QString text = expandNestedSnippets(snippet.replacement, {});
  return processPlaceholders(substituteFillInValues(text, parseFillInFields(text), values));
}

void TextExpansionEngine::warmUp() const {
  static_cast<void>(processPlaceholders(
      u"{{date}}{{date:short}}{{date:medium}}{{date:long}}{{time}}{{uppercase:\u00e9}}"_s));
  static_cast<void>(parseFillInFields(u"{{field:a}}{{textarea:b}}{{dropdown:c:d}}{{?:e}}{{/?}}"_s));
  static_cast<void>(expandNestedSnippets(u"{{snippet:}}"_s, {}));
}

QList<FillInField> TextExpansionEngine::parseFillInFields(const QString& text) const {
  return zarvy::parseFillInFields(text, m_services.fieldDefaults);
}

QString TextExpansionEngine::expandNestedSnippets(const QString& text,
                                                  const QSet<QString>& visited) const {
  const auto replacementOf = [this](const QString& trigger) {
    const std::scoped_lock guard(m_snippetsLock);
    return m_library.replacementOf(trigger);
  };
  return zarvy::expandNestedSnippets(text, visited, replacementOf);
}

QString TextExpansionEngine::processPlaceholders(const QString& text) const {
  return zarvy::processPlaceholders(text, globalVariables(), m_services);
}

}  // namespace zarvy
