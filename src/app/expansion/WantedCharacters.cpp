#include "app/expansion/WantedCharacters.h"

#include <algorithm>
#include <vector>

#include <QHash>
#include <QList>

namespace zarvy {

namespace {

struct Use {
  char32_t character = 0;
  qsizetype snippetCount = 0;
  qsizetype lastSnippet = -1;  // index of the snippet counted last
};

bool isWanted(char32_t character) {
  const bool isAsciiControl = character < 0x20 || character == 0x7F;
  return !isAsciiControl && character != QChar::ReplacementCharacter;
}

// In the order of first use.
class UseCounter {
 public:
  void count(const QString& text, qsizetype snippet) {
    // A lone half comes out as U+FFFD, which is not wanted either.
    for (const char32_t character : text.toUcs4()) {
      if (isWanted(character)) count(character, snippet);
    }
  }

  [[nodiscard]] std::vector<Use> take() { return std::move(m_uses); }

 private:
  void count(char32_t character, qsizetype snippet) {
    const auto known = m_indexes.constFind(character);
    const std::size_t index = known != m_indexes.cend() ? *known : add(character);
    Use& use = m_uses[index];
    if (use.lastSnippet == snippet) return;
    use.lastSnippet = snippet;
    ++use.snippetCount;
  }

  std::size_t add(char32_t character) {
    m_indexes.insert(character, m_uses.size());
    m_uses.push_back({character});
    return m_uses.size() - 1;
  }

  QHash<char32_t, std::size_t> m_indexes;
  std::vector<Use> m_uses;
};

}  // namespace

QString wantedCharacters(const SnippetList& snippets) {
  UseCounter counter;
  qsizetype position = 0;
  for (const Snippet& snippet : snippets) counter.count(snippet.replacement, position++);
  std::vector<Use> uses = counter.take();
  std::stable_sort(uses.begin(), uses.end(),
                   [](const Use& a, const Use& b) { return a.snippetCount > b.snippetCount; });
  QString result;
  for (const Use& use : uses) result += QChar::fromUcs4(use.character);
  return result;
}

}  // namespace zarvy
