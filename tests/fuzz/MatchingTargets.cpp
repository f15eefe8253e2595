#include "fuzz/MatchingTargets.h"

#include <algorithm>
#include <memory>
#include <variant>

#include "base/text/Graphemes.h"
#include "base/text/Regex.h"
#include "base/text/RequiredCharacters.h"
#include "core/RollingBuffer.h"
#include "core/TextExpansionEngine.h"
#include "core/matching/NaiveMatcher.h"
#include "fakes/FakePlaceholders.h"
#include "fakes/ManualSteadyClock.h"
#include "fakes/RecordingLineOutput.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy::fuzz {
namespace {

// As long as what is typed is kept, and short enough for an expression that backtracks.
constexpr qsizetype longestText = 60;

// So many that a buffer rolls on; each key is a walk over what is kept.
constexpr std::size_t mostKeys = 200;

// Of the pattern itself: what it asks for literally is most likely to be found there.
QString withoutSyntax(const QString& pattern) {
  QString text;
  for (const QChar character : pattern) {
    if (!u"\\()[]{}|*+?.^$"_s.contains(character)) text += character;
  }
  return text;
}

QStringList textsFor(const QStringList& texts) {
  const QString literal = withoutSyntax(texts.at(0));
  QStringList all = texts.sliced(1, std::min<qsizetype>(texts.size() - 1, 6));
  all << QString() << literal << literal.toUpper() << literal.toLower() << texts.at(0);
  for (QString& text : all) text.truncate(longestText);
  return all;
}

Snippet snippetFor(const QString& trigger) {
  Snippet snippet;
  snippet.id = QUuid::createUuid();
  snippet.isRegexTrigger = trigger.startsWith(u'/');
  snippet.trigger = snippet.isRegexTrigger ? trigger.sliced(1) : trigger;
  return snippet;
}

// Matching asks for nothing that placeholders are made from.
FakePlaceholders& unusedFakes() {
  static FakePlaceholders fakes;
  return fakes;
}

// No more than a few milliseconds.
bool mayGoOn(qint64 steps) {
  return steps < 100'000;
}

// Whether each expression of the library comes to an end on `text` at once. What gives up matches
// nothing.
bool isSearchedQuickly(const QList<Snippet>& library, const QString& text) {
  return std::all_of(library.begin(), library.end(), [&](const Snippet& snippet) {
    if (!snippet.isRegexTrigger) return true;
    const auto compiled = Regex::compile(snippet.trigger + u'$');
    const auto* const regex = std::get_if<std::shared_ptr<const Regex>>(&compiled);
    return !regex || (*regex)->firstMatch(text, mayGoOn).outcome != RegexOutcome::gaveUp;
  });
}

// What RollingBuffer promises, one character at a time.
class PlainBuffer {
 public:
  explicit PlainBuffer(qsizetype length) : m_length(length) {}

  void append(const QString& character) {
    m_text += character;
    while (graphemeCount(m_text) > m_length) m_text.remove(0, graphemes(m_text).front().size());
  }

  void removeLast() {
    if (!m_text.isEmpty()) m_text.chop(graphemes(m_text).back().size());
  }

  void clear() { m_text.clear(); }

  [[nodiscard]] const QString& text() const { return m_text; }

 private:
  const qsizetype m_length;
  QString m_text;
};

}  // namespace

void requiredCharacters(Bytes bytes) {
  const QStringList texts = textsOf(bytes);
  const auto compiled = Regex::compile(texts.at(0));
  const auto* const regex = std::get_if<std::shared_ptr<const Regex>>(&compiled);
  if (!regex) return require(!std::get<QString>(compiled).isEmpty(), "an error says nothing");
  const RequiredCharacters required(texts.at(0));
  for (const QString& text : textsFor(texts)) {
    // Does not look at the characters first.
    const RegexSearch search = (*regex)->firstMatch(text, mayGoOn);
    if (search.outcome != RegexOutcome::matched) continue;
    require(required.arePresentIn(text), "a text that matches is ruled out");
    const TextRange range = search.match.range();
    require(range.start >= 0 && range.end() <= text.size(), "the match is outside of the text");
  }
}

void findMatch(Bytes bytes) {
  QStringList texts = textsOf(bytes);
  const QString typed = texts.takeFirst().right(longestText);
  QList<Snippet> library;
  for (const QString& text : texts) library.append(snippetFor(text));
  if (!isSearchedQuickly(library, typed)) return;

  RecordingLineOutput output;
  const ManualSteadyClock clock;
  TextExpansionEngine engine(output, clock, unusedFakes().services());
  engine.setSnippets(library);
  const auto expected = NaiveMatcher(library).findMatch(typed);
  const auto found = engine.findMatch(typed);
  require(found.has_value() == expected.has_value(), "one finds a trigger, the other does not");
  if (!found) return;
  require(found->snippet == library.at(expected->position), "another snippet is found");
  require(found->matchedString == expected->matchedString, "another text has matched");
  require(engine.findMatch(typed) == found, "the second search finds something else");
}

void rollingBuffer(Bytes bytes) {
  if (bytes.empty()) return;
  const qsizetype length = 1 + bytes.front() % 12;
  RollingBuffer buffer(length);
  PlainBuffer expected(length);
  for (const std::uint8_t byte : bytes.subspan(1, std::min(bytes.size() - 1, mostKeys))) {
    if (byte == 0x08) {
      buffer.removeLast();
      expected.removeLast();
    } else if (byte == 0x1B) {
      buffer.clear();
      expected.clear();
    } else {
      const QString character = textOf({&byte, 1});
      expected.append(character);
      require(buffer.append(character) == expected.text(), "another text is typed");
    }
    require(buffer.text() == expected.text(), "another text is kept");
  }
}

}  // namespace zarvy::fuzz
