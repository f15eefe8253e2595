#pragma once

#include <optional>
#include <span>
#include <vector>

#include <QStringView>

namespace zarvy {

// How a kind of placeholder is written: one of its openers, such as "{{counter:", then an argument
// of one or more UTF-16 units without a closing brace, then "}}".
struct PlaceholderForm {
  std::span<const QStringView> openers;
  bool (*accepts)(QStringView argument) = nullptr;  // null: any argument
};

// One placeholder of a text; views into it.
struct Placeholder {
  QStringView literal;  // the whole, from "{{" to "}}"
  QStringView opener;
  QStringView argument;
};

// False where `text` holds no placeholder of any form.
[[nodiscard]] bool mayHoldPlaceholders(QStringView text);

// The next place of `literal` in `text`, for a caller who asks from left to right: no stretch of
// the text is searched twice, however often it asks. The text must outlive this.
class NextOccurrence {
 public:
  NextOccurrence(QStringView text, QStringView literal) : m_text(text), m_literal(literal) {}

  // The first place at or after `position`; the end of the text without one.
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

// Walks the placeholders of one form in a text from left to right, none overlapping. Finds exactly
// what the regular expression of the form would, `\{\{counter:([^}]+)\}\}` for instance, but in a
// time that grows with the length of the text alone, also where thousands of opening braces are
// never closed. The text must outlive the walk and what it finds.
class PlaceholderScan {
 public:
  PlaceholderScan(QStringView text, const PlaceholderForm& form)
      : m_text(text), m_form(form), m_closingBrace(text, u"}") {}

  [[nodiscard]] std::optional<Placeholder> next();

  // Goes on from `position`, in UTF-16 units, which lies further right.
  void skipTo(qsizetype position) { m_position = position; }

 private:
  [[nodiscard]] qsizetype nextOpener() const;
  [[nodiscard]] std::optional<Placeholder> placeholderAt(qsizetype start);

  QStringView m_text;
  PlaceholderForm m_form;
  qsizetype m_position = 0;
  NextOccurrence m_closingBrace;
};

[[nodiscard]] std::vector<Placeholder> findPlaceholders(QStringView text,
                                                        const PlaceholderForm& form);

}  // namespace zarvy
