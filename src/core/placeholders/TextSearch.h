#pragma once

#include <QStringView>

namespace zarvy {

// Where `literal`, which is not empty, stands first in `text` at or after `from`; -1 where it does
// not. Fast where its first character is rare.
[[nodiscard]] inline qsizetype indexOfLiteral(QStringView text, QStringView literal,
                                              qsizetype from) {
  for (qsizetype position = from; (position = text.indexOf(literal.front(), position)) >= 0;
       ++position) {
    if (text.sliced(position).startsWith(literal)) return position;
  }
  return -1;
}

// The next place of `literal` in `text`, for a caller who asks from left to right: no stretch of
// the text is searched twice, however often it asks. The text must outlive this.
class NextOccurrence {
 public:
  NextOccurrence(QStringView text, QStringView literal) : m_text(text), m_literal(literal) {}

  // The first place at or after `position`; the end of the text where there is none.
  [[nodiscard]] qsizetype from(qsizetype position) {
    if (m_found < position) {
      const qsizetype found = indexOfLiteral(m_text, m_literal, position);
      m_found = found < 0 ? m_text.size() : found;
    }
    return m_found;
  }

 private:
  QStringView m_text;
  QStringView m_literal;
  qsizetype m_found = -1;
};

}  // namespace zarvy
