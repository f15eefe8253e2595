#include "fuzz/FormTargets.h"

#include <algorithm>
#include <stdexcept>
#include <vector>

#include "core/placeholders/FillInField.h"
#include "core/placeholders/FillInPlaces.h"
#include "core/placeholders/ReferenceLanguage.h"
#include "ui/preview/PreviewText.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy::fuzz {
namespace {

// Regular expressions take a time that grows with the square of it.
constexpr qsizetype longestReferenceText = 600;

constexpr QChar endMark(0xE000);
constexpr QChar answerMark(0xE001);
constexpr QChar previewMark(0xFEFF);

FakePlaceholders& rememberingNothing() {
  static FakePlaceholders fakes;
  return fakes;
}

QList<FillInField> fieldsOf(const QString& text) {
  return parseFillInFields(text, rememberingNothing().fieldDefaults);
}

QList<FillInField> withoutIds(QList<FillInField> fields) {
  for (FillInField& field : fields) field.id = QUuid();
  return fields;
}

// Absent where the reference does not know what a template means.
std::optional<QString> answeredByReference(const ReferenceLanguage& reference, const QString& text,
                                           const QMap<QString, QString>& answers) {
  try {
    return reference.withAnswers(text, answers);
  } catch (const std::runtime_error&) {
    return std::nullopt;
  }
}

// A preview, character by character with its style.
struct Shown {
  QString text;
  std::vector<PreviewRun::Kind> kinds;

  bool operator==(const Shown&) const = default;
};

Shown shownBy(const QList<PreviewRun>& runs) {
  Shown shown;
  for (const PreviewRun& run : runs) {
    require(!run.text.isEmpty(), "a run is empty");
    shown.text += run.text;
    shown.kinds.resize(static_cast<std::size_t>(shown.text.size()), run.kind);
  }
  return shown;
}

// What the form knows, with an answer for each field: the same for those that share a name.
class Form {
 public:
  explicit Form(const QStringList& texts)
      : m_fields(fieldsOf(texts.at(0))), m_answers(texts.mid(2)) {
    m_nested.trigger = u";a"_s;
    m_nested.replacement = texts.value(1);
    for (FillInField& field : m_fields) field.value = answerTo(field);
  }

  [[nodiscard]] Shown preview(const QString& text) const {
    const PreviewDates dates{u"1/21/26"_s, u"Jan 21"_s, u"January 21"_s, u"10:30"_s};
    return shownBy(previewRuns(text, m_fields, {m_nested}, dates));
  }

  // The preview looks for a field by its kind, an answer goes to every kind of its name.
  [[nodiscard]] bool hasOneKindForAName(const QString& text) const {
    return std::none_of(m_fields.begin(), m_fields.end(), [&text](const FillInField& field) {
      const bool isText = !findTextFieldsOf(text, field.name).empty();
      const bool isArea = !findTextAreasOf(text, field.name).empty();
      const bool isDropdown = !findDropdownsOf(text, field.name).empty();
      return int{isText} + int{isArea} + int{isDropdown} > 1;
    });
  }

  [[nodiscard]] QString typed(const QString& text) const {
    QMap<QString, QString> answers;
    for (const FillInField& field : m_fields) answers.insert(field.name, field.value);
    return substituteFillInValues(text, m_fields, answers);
  }

 private:
  // Never empty, and never a part of the snippet's own text.
  [[nodiscard]] QString answerTo(const FillInField& field) const {
    if (m_answers.isEmpty()) return answerMark;
    QString answer = m_answers.at(field.name.size() % m_answers.size());
    for (const QChar character : u"{}:$\\") answer.remove(character);
    return answerMark + answer;
  }

  Snippet m_nested;
  QList<FillInField> m_fields;
  QStringList m_answers;
};

// Whether answers to fields are all that settles the text.
bool isOnlyFields(const QString& text) {
  constexpr QStringView others[] = {
      u"{{?:",  u"{{snippet:", u"{{uppercase:", u"{{lowercase:", u"{{titlecase:", u"{{counter:",
      u"{{js:", u"{{date:",    u"{{time",       u"{{clipboard",  u"{{cursor"};
  return std::none_of(std::begin(others), std::end(others),
                      [&text](QStringView other) { return text.contains(other); });
}

}  // namespace

void fillIns(Bytes bytes) {
  const QStringList texts = textsOf(bytes);
  const QString text = texts.at(0).left(longestReferenceText);
  QMap<QString, QString> answers;
  for (qsizetype index = 1; index + 1 < texts.size() && index < 9; index += 2) {
    answers.insert(texts.at(index), texts.at(index + 1).left(20));
  }
  const ReferenceLanguage reference({}, {}, rememberingNothing());
  const QList<FillInField> fields = fieldsOf(text);
  require(withoutIds(fields) == reference.fields(text), "other fields are asked for");
  const auto expected = answeredByReference(reference, text, answers);
  if (!expected || expected->size() > longestReferenceText) return;
  require(substituteFillInValues(text, fields, answers) == *expected, "answers go elsewhere");
}

void preview(Bytes bytes) {
  const QStringList texts = textsOf(bytes);
  if (texts.join(QString()).contains(previewMark)) return;
  const QString& text = texts.at(0);
  const Form form(texts);
  const Shown shown = form.preview(text);
  Shown marked = form.preview(text + endMark);
  require(marked.text.endsWith(endMark), "the text behind a placeholder is lost");
  require(marked.kinds.back() == PreviewRun::Kind::plain, "plain text is highlighted");
  marked.text.chop(1);
  marked.kinds.pop_back();
  require(marked == shown, "text behind changes what is ahead of it");
  require(!shown.text.contains(previewMark), "a mark is shown");
  require(text.contains(u"{{") || shown.text == text, "plain text changed");
  const QString typed = form.typed(text);
  if (isOnlyFields(text) && isOnlyFields(typed) && form.hasOneKindForAName(text)) {
    require(shown.text == typed, "the preview shows what is not typed");
  }
}

}  // namespace zarvy::fuzz
