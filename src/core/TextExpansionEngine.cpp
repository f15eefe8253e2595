#include "core/TextExpansionEngine.h"

#include <utility>
#include <variant>

#include "base/text/Graphemes.h"
#include "base/text/Regex.h"
#include "core/CursorMarker.h"
#include "core/matching/GroupNames.h"
#include "core/matching/MatchingRound.h"
#include "core/matching/TriggerLibrary.h"
#include "core/placeholders/Captures.h"
#include "core/placeholders/FillInField.h"
#include "core/placeholders/FillInFields.h"
#include "core/placeholders/FillInValues.h"
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
    : m_output(output),
      m_clock(clock),
      m_services(services),
      m_library(std::make_shared<TriggerLibrary>()),
      m_regexCacheLibrary(m_library) {}

TextExpansionEngine::~TextExpansionEngine() = default;

void TextExpansionEngine::setSnippets(const QList<Snippet>& snippets) {
  Library library = this->library();
  // The list that is here already, as at every start and after a pause, needs no second index.
  if (!library->snippets().isSharedWith(snippets)) {
    library = std::make_shared<TriggerLibrary>(snippets);
    m_slowPatterns.keepThoseOf(*library);
    sayWhichAreTooLong(*library);
  }
  // What is replaced lives to the end of this call, so that it is not taken apart under the locks.
  Library replacedLibrary;
  Library replacedCacheLibrary;
  QHash<QUuid, CompiledRegex> replacedCache;
  const std::scoped_lock snippetsGuard(m_snippetsLock);
  const std::scoped_lock cacheGuard(m_regexCacheLock);
  replacedLibrary = std::exchange(m_library, library);
  replacedCacheLibrary = std::exchange(m_regexCacheLibrary, std::move(library));
  replacedCache = std::exchange(m_regexCache, {});
}

void TextExpansionEngine::sayWhichAreTooLong(const TriggerLibrary& library) const {
  for (const qsizetype position : library.tooLongPatterns()) {
    m_output.print(u"Zarvy: Left out the regex for snippet '"_s +
                   library.snippets().at(position).title + u"': it is longer than "_s +
                   QString::number(TriggerLibrary::longestPattern) + u" characters"_s);
  }
}

QList<Snippet> TextExpansionEngine::snippets() const {
  return library()->snippets();
}

void TextExpansionEngine::setGlobalVariables(const QList<GlobalVariable>& globalVariables) {
  const std::scoped_lock guard(m_globalVariablesLock);
  m_globalVariables = globalVariables;
}

QList<GlobalVariable> TextExpansionEngine::globalVariables() const {
  const std::scoped_lock guard(m_globalVariablesLock);
  return m_globalVariables;
}

TextExpansionEngine::Library TextExpansionEngine::library() const {
  const std::scoped_lock guard(m_snippetsLock);
  return m_library;
}

std::optional<TriggerMatch> TextExpansionEngine::findMatch(const QString& buffer) {
  if (!hasGraphemes(buffer, 2)) return std::nullopt;
  const Library current = library();
  if (const auto position = current->literals().find(buffer)) {
    const Snippet& snippet = current->snippets().at(*position);
    return TriggerMatch{snippet, snippet.trigger, {}};
  }
  MatchingRound round = beginRound();
  std::optional<TriggerMatch> match;
  int asked = 0;
  for (const qsizetype position : current->regexPositions()) {
    // Those that are ruled out ahead do not look at the clock, but may be many.
    if (++asked % patternsBetweenLooks == 0) round.look();
    match = matchRegex(current->snippets().at(position), buffer, current, round);
    if (match || round.isOver()) break;
  }
  conclude(round);
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
  return compiledRegex(snippet, library(), round);
}

TextExpansionEngine::CompiledRegex TextExpansionEngine::compiledRegex(const Snippet& snippet,
                                                                      const Library& library,
                                                                      MatchingRound& round) {
  const std::scoped_lock guard(m_regexCacheLock);
  if (m_regexCacheLibrary != library) return compile(snippet, round);
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
  auto match = matchRegex(snippet, buffer, library(), round);
  conclude(round);
  return match;
}

std::optional<TriggerMatch> TextExpansionEngine::matchRegex(const Snippet& snippet,
                                                            const QString& buffer,
                                                            const Library& library,
                                                            MatchingRound& round) {
  if (round.isLeftOut(snippet)) return std::nullopt;
  const CompiledRegex regex = compiledRegex(snippet, library, round);
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
  const auto replacementOf = [current = library()](const QString& trigger) {
    return current->replacementOf(trigger);
  };
  return zarvy::expandNestedSnippets(text, visited, replacementOf);
}

QString TextExpansionEngine::processPlaceholders(const QString& text) const {
  return zarvy::processPlaceholders(text, globalVariables(), m_services);
}

}  // namespace zarvy
