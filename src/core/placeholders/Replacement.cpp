#include "core/placeholders/Replacement.h"

#include <algorithm>
#include <utility>
#include <vector>

#include <QHash>

namespace zarvy {
namespace {

std::vector<qsizetype> occurrences(QStringView text, QStringView literal) {
  std::vector<qsizetype> positions;
  for (qsizetype position = text.indexOf(literal); position >= 0;
       position = text.indexOf(literal, position + literal.size())) {
    positions.push_back(position);
  }
  return positions;
}

bool holdsOpener(QStringView text, const PlaceholderForm& form) {
  return std::any_of(form.openers.begin(), form.openers.end(),
                     [text](QStringView opener) { return text.contains(opener); });
}

bool endsInPartOf(QStringView text, QStringView opener) {
  qsizetype length = std::min(text.size(), opener.size() - 1);
  while (length > 0 && !text.endsWith(opener.first(length))) --length;
  return length > 0;
}

// Whether a placeholder could begin in `text` that ends behind it.
bool canBegin(QStringView text, const PlaceholderForm& form) {
  return holdsOpener(text, form) ||
         std::any_of(form.openers.begin(), form.openers.end(),
                     [text](QStringView opener) { return endsInPartOf(text, opener); });
}

// One kind of placeholder in one text, with the values.
class Replacing {
 public:
  Replacing(const QString& text, const PlaceholderForm& form, const ValueOfPlaceholder& valueOf)
      : m_text(text), m_form(form), m_placeholders(findPlaceholders(text, form)) {
    m_values.reserve(m_placeholders.size());
    for (const Placeholder& placeholder : m_placeholders) keep(placeholder, valueOf(placeholder));
  }

  [[nodiscard]] QString result(ExpansionLimit& limit) const {
    if (m_placeholders.empty()) return m_text;
    if (m_placeholders.size() > 1 && arePlacesFixed()) {
      if (QString text = inOneSweep(); !text.isNull()) return text;
    }
    return oneAfterTheOther(limit);
  }

 private:
  // Values that fit into no text are not kept, or a thousand large ones would fill the memory.
  void keep(const Placeholder& placeholder, QString value) {
    const bool fits = m_lengthOfValues + value.size() <= ExpansionLimit::longestText;
    if (!fits) value = placeholder.literal.toString();
    m_lengthOfValues += value.size();
    m_values.push_back(std::move(value));
  }

  [[nodiscard]] QString oneAfterTheOther(ExpansionLimit& limit) const {
    QString text = m_text;
    for (std::size_t index = 0; index < m_placeholders.size(); ++index) {
      if (!replaceLiteral(text, m_placeholders[index].literal, m_values[index], limit)) break;
    }
    return text;
  }

  // Whether each placeholder occurs only where it was found, whatever is replaced before it. Then
  // one sweep gives what a search of the whole text for each of them would. It is so where no
  // placeholder can begin inside another, inside a value, or before a value that completes it.
  [[nodiscard]] bool arePlacesFixed() const {
    qsizetype end = 0;
    for (std::size_t index = 0; index < m_placeholders.size(); ++index) {
      const QStringView literal = m_placeholders[index].literal;
      const qsizetype start = startOf(literal);
      const QStringView before = QStringView(m_text).sliced(end, start - end);
      // One that ends the gap may become the first half of a "}}".
      const qsizetype lastBrace = before.chopped(before.endsWith(u'}') ? 1 : 0).lastIndexOf(u'}');
      if (canBegin(before.sliced(lastBrace + 1), m_form)) return false;
      if (holdsOpener(literal.sliced(1), m_form) || canBegin(m_values[index], m_form)) return false;
      end = start + literal.size();
    }
    return true;
  }

  // Null where the text would become too long.
  [[nodiscard]] QString inOneSweep() const {
    QHash<QStringView, std::size_t> firsts;  // of several equal ones, the first gives the value
    QString text;
    qsizetype end = 0;
    for (std::size_t index = 0; index < m_placeholders.size(); ++index) {
      const QStringView literal = m_placeholders[index].literal;
      const qsizetype start = startOf(literal);
      auto first = firsts.constFind(literal);
      if (first == firsts.constEnd()) first = firsts.insert(literal, index);
      text += QStringView(m_text).sliced(end, start - end);
      text += m_values[*first];
      end = start + literal.size();
      if (text.size() + m_text.size() - end > ExpansionLimit::longestText) return {};
    }
    return text += QStringView(m_text).sliced(end);
  }

  [[nodiscard]] qsizetype startOf(QStringView literal) const {
    return literal.utf16() - QStringView(m_text).utf16();
  }

  const QString& m_text;
  const PlaceholderForm& m_form;
  std::vector<Placeholder> m_placeholders;
  std::vector<QString> m_values;
  qsizetype m_lengthOfValues = 0;
};

}  // namespace

bool replaceLiteral(QString& text, QStringView literal, QStringView value, ExpansionLimit& limit) {
  if (value == literal) return true;
  if (!limit.spend(text.size())) return false;
  const std::vector<qsizetype> positions = occurrences(text, literal);
  if (positions.empty()) return true;
  const qsizetype growth =
      (value.size() - literal.size()) * static_cast<qsizetype>(positions.size());
  if (growth > 0 && text.size() + growth > ExpansionLimit::longestText) return true;
  QString result;
  result.reserve(text.size() + growth);
  qsizetype end = 0;
  for (const qsizetype position : positions) {
    result += QStringView(text).sliced(end, position - end);
    result += value;
    end = position + literal.size();
  }
  result += QStringView(text).sliced(end);
  text = std::move(result);
  return true;
}

QString replacePlaceholders(const QString& text, const PlaceholderForm& form,
                            const ValueOfPlaceholder& valueOf, ExpansionLimit& limit) {
  return Replacing(text, form, valueOf).result(limit);
}

}  // namespace zarvy
