#pragma once

#include <map>
#include <memory>
#include <optional>
#include <vector>

#include <QList>
#include <QString>

#include <unicode/brkiter.h>
#include <unicode/normalizer2.h>
#include <unicode/regex.h>
#include <unicode/unistr.h>

#include "core/model/Snippet.h"

namespace zarvy {

// Which snippet matches, told in the plainest way: two walks over the whole library. Stands on
// ICU's C++ classes alone and shares no code with what it checks.
class NaiveMatcher {
 public:
  struct Match {
    qsizetype position = 0;
    QString matchedString;
    bool operator==(const Match&) const = default;
  };

  explicit NaiveMatcher(const QList<Snippet>& snippets) : m_snippets(snippets) {
    UErrorCode status = U_ZERO_ERROR;
    m_breaks.reset(icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    m_decomposer = icu::Normalizer2::getNFDInstance(status);
    for (const Snippet& snippet : snippets) m_triggers.push_back(characters(snippet.trigger));
  }

  [[nodiscard]] std::optional<Match> findMatch(const QString& buffer) {
    const Characters typed = characters(buffer);
    if (typed.size() < 2) return std::nullopt;
    for (qsizetype position = 0; position < m_snippets.size(); ++position) {
      const Snippet& snippet = m_snippets.at(position);
      const Characters& trigger = m_triggers[static_cast<std::size_t>(position)];
      if (snippet.isRegexTrigger || trigger.size() < 2 || trigger.size() > typed.size()) continue;
      if (std::equal(trigger.rbegin(), trigger.rend(), typed.rbegin())) {
        return Match{position, snippet.trigger};
      }
    }
    for (qsizetype position = 0; position < m_snippets.size(); ++position) {
      if (!m_snippets.at(position).isRegexTrigger) continue;
      if (const auto text = matchRegex(m_snippets.at(position).trigger, buffer)) {
        return Match{position, *text};
      }
    }
    return std::nullopt;
  }

 private:
  using Characters = std::vector<icu::UnicodeString>;  // in canonical decomposition

  static icu::UnicodeString fromQt(const QString& text) {
    return icu::UnicodeString(reinterpret_cast<const char16_t*>(text.utf16()),
                              static_cast<int32_t>(text.size()));
  }

  std::vector<int32_t> boundaries(const icu::UnicodeString& text) {
    m_breaks->setText(text);
    std::vector<int32_t> result;
    for (int32_t at = m_breaks->first(); at != icu::BreakIterator::DONE; at = m_breaks->next()) {
      result.push_back(at);
    }
    return result;
  }

  Characters characters(const QString& text) {
    const icu::UnicodeString content = fromQt(text);
    const std::vector<int32_t> at = boundaries(content);
    Characters result;
    for (std::size_t index = 1; index < at.size(); ++index) {
      UErrorCode status = U_ZERO_ERROR;
      result.push_back(
          m_decomposer->normalize(content.tempSubStringBetween(at[index - 1], at[index]), status));
    }
    return result;
  }

  std::optional<QString> matchRegex(const QString& trigger, const QString& buffer) {
    UErrorCode status = U_ZERO_ERROR;
    auto& pattern = m_patterns[trigger];
    if (!pattern) {
      pattern.reset(icu::RegexPattern::compile(fromQt(trigger + u'$'), 0, status));
      if (U_FAILURE(status)) return std::nullopt;
    }
    const icu::UnicodeString content = fromQt(buffer);
    const std::unique_ptr<icu::RegexMatcher> matcher(pattern->matcher(content, status));
    if (!matcher->find()) return std::nullopt;
    const std::vector<int32_t> at = boundaries(content);
    const int32_t start = matcher->start(status);
    const int32_t end = matcher->end(status);
    if (std::find(at.begin(), at.end(), start) == at.end()) return std::nullopt;
    if (std::find(at.begin(), at.end(), end) == at.end()) return std::nullopt;
    return buffer.sliced(start, end - start);
  }

  QList<Snippet> m_snippets;
  std::unique_ptr<icu::BreakIterator> m_breaks;
  const icu::Normalizer2* m_decomposer = nullptr;
  std::vector<Characters> m_triggers;
  std::map<QString, std::unique_ptr<icu::RegexPattern>> m_patterns;
};

}  // namespace zarvy
