#pragma once

#include <QStringView>

namespace zarvy {

// The next place of `literal` in `text`, for a caller who asks from left to right: no stretch of
// the text is searched twice, however often it asks. The text must outlive this.
class NextOccurrence {
 public:
  NextOccurrence(QStringView text, QStringView literal) : m_text(text), m_literal(literal) {}

  // The first place at or after `position`; the end of the text if there is none.
  [[nodiscard]] qsizetype from(qsizetype position) {
    if (m_found < position) {
      const qsizetype found = m_text.indexOf(m_literal, position);
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
