#include "core/placeholders/PlaceholderScan.h"

namespace zarvy {

std::optional<Placeholder> PlaceholderScan::next() {
  while (true) {
    const qsizetype start = nextOpener();
    if (start < 0) return std::nullopt;
    if (auto placeholder = placeholderAt(start)) {
      m_position = start + placeholder->literal.size();
      return placeholder;
    }
    m_position = start + 1;
  }
}

// Where one may stand, that is.
qsizetype PlaceholderScan::nextOpener() const {
  if (m_form.openers.size() == 1) return m_text.indexOf(m_form.openers.front(), m_position);
  return m_text.indexOf(u'{', m_position);
}

std::optional<Placeholder> PlaceholderScan::placeholderAt(qsizetype start) {
  const QStringView rest = m_text.sliced(start);
  for (const QStringView opener : m_form.openers) {
    if (!rest.startsWith(opener)) continue;
    // No opener holds a closing brace: one that was found from further right is the right one too.
    const qsizetype end = m_closingBrace.from(start + opener.size());
    const qsizetype length = end - start - opener.size();
    if (length < 1 || end + 1 >= m_text.size() || m_text[end + 1] != u'}') return std::nullopt;
    const QStringView argument = rest.sliced(opener.size(), length);
    if (m_form.accepts != nullptr && !m_form.accepts(argument)) return std::nullopt;
    return Placeholder{rest.first(end + 2 - start), opener, argument};
  }
  return std::nullopt;
}

// By single characters, for which a search is many times faster than for two.
bool mayHoldPlaceholders(QStringView text) {
  for (qsizetype brace = text.indexOf(u'{'); brace >= 0; brace = text.indexOf(u'{', brace + 1)) {
    if (text.sliced(brace).startsWith(u"{{")) return true;
  }
  return false;
}

std::vector<Placeholder> findPlaceholders(QStringView text, const PlaceholderForm& form) {
  std::vector<Placeholder> found;
  PlaceholderScan scan(text, form);
  while (const auto placeholder = scan.next()) found.push_back(*placeholder);
  return found;
}

}  // namespace zarvy
