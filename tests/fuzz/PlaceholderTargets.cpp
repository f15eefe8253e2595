#include "fuzz/PlaceholderTargets.h"

#include <algorithm>
#include <memory>

#include "base/Clock.h"
#include "base/text/Graphemes.h"
#include "core/TextExpansionEngine.h"
#include "core/placeholders/FillInField.h"
#include "fakes/FakePlaceholders.h"
#include "fakes/RecordingLineOutput.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy::fuzz {
namespace {

// Nothing in the language begins or ends with it, and no closing brace stands behind it: whatever
// comes of the text before, it must come out as it went in.
constexpr QChar mark(0xE000);

// Formatting dates is ICU's work: many of them take their time and tell nothing new.
bool hasMoreDates(const QStringList& texts, qsizetype count) {
  const QString all = texts.join(QChar::LineFeed);
  const qsizetype begun = all.count(u"{{date:"_s) + all.count(u"{{time:"_s);
  return std::min(begun, all.count(u"}}"_s)) > count;
}

Snippet snippetOf(const QString& trigger, const QString& replacement) {
  Snippet snippet;
  snippet.trigger = trigger;
  snippet.replacement = replacement;
  return snippet;
}

// Date formatters are expensive to make, and those of a fuzzer's patterns pile up.
FakePlaceholders& freshFakes() {
  static std::unique_ptr<FakePlaceholders> fakes;
  static int uses = 0;
  if (uses++ % 200 == 0) fakes = std::make_unique<FakePlaceholders>();
  fakes->counters.values.clear();
  fakes->shell.asked.clear();
  fakes->javaScript.asked.clear();
  return *fakes;
}

// The engine with what the texts behind the first one say. One at a time.
class Desk {
 public:
  explicit Desk(const QStringList& texts) : m_fakes(freshFakes()) {
    m_fakes.pasteboard.content = texts.value(1);
    m_engine.setGlobalVariables({{QUuid(), u"a"_s, texts.value(2), {}, {}}});
    m_engine.setSnippets({snippetOf(u";a"_s, texts.value(3))});
    if (texts.size() > 4) m_captures.insert(u"a"_s, texts.at(4));
    m_engine.onNeedsFillIn = [this](const Snippet& resolved, const QList<FillInField>& asked) {
      form = resolved.replacement;
      fieldCount = asked.size();
    };
  }

  [[nodiscard]] std::optional<ExpandedText> expand(const QString& text) {
    return m_engine.processSnippet(snippetOf(u"t"_s, text), m_captures);
  }

  [[nodiscard]] QList<FillInField> parse(const QString& text) const {
    return m_engine.parseFillInFields(text);
  }

  [[nodiscard]] QString answer(const QString& text, const QMap<QString, QString>& answers) const {
    return m_engine.applyFillInValues(snippetOf(u"t"_s, text), answers);
  }

  QString form;
  qsizetype fieldCount = 0;

 private:
  FakePlaceholders& m_fakes;
  RecordingLineOutput m_output;
  ThreadTimeClock m_matchingClock;
  TextExpansionEngine m_engine{m_output, m_matchingClock, m_fakes.services()};
  QMap<QString, QString> m_captures;
};

// What is to be typed, or what the form is for.
struct Outcome {
  bool isForm = false;
  QString text;
  std::optional<qsizetype> cursorOffset;
};

Outcome outcomeOf(const QString& text, const QStringList& texts) {
  Desk desk(texts);
  const auto expanded = desk.expand(text);
  require(expanded.has_value() == (desk.fieldCount == 0), "a form comes exactly where fields are");
  if (!expanded) return {true, desk.form, std::nullopt};
  return {false, expanded->text, expanded->cursorOffset};
}

bool haveSameShape(const QList<FillInField>& one, const QList<FillInField>& other) {
  if (one.size() != other.size()) return false;
  for (qsizetype index = 0; index < one.size(); ++index) {
    FillInField field = other.at(index);
    field.id = one.at(index).id;
    if (!(field == one.at(index))) return false;
  }
  return true;
}

}  // namespace

void pipeline(Bytes bytes) {
  const QStringList texts = textsOf(bytes);
  // A variable that multiplies itself runs into the limit, which takes its time and has its tests.
  if (hasMoreDates(texts, 6) || texts.value(2).count(u"{{#") > 1) return;
  const QString text = texts.at(0);
  const Outcome plain = outcomeOf(text, texts);
  const Outcome marked = outcomeOf(text + mark, texts);
  require(plain.isForm == marked.isForm, "a mark makes a form");
  require(marked.text == plain.text + mark, "the text behind a placeholder is lost");
  if (plain.cursorOffset) {
    const qsizetype moved = marked.cursorOffset.value_or(0) - *plain.cursorOffset;
    const bool joinsTheMark = !isGraphemeBoundary(marked.text, plain.text.size());
    require(moved == 1 || (moved == 0 && joinsTheMark), "the caret moved");
  }
  require(text.contains(u"{{") || texts.size() > 1 || plain.text == text, "plain text changed");
}

void parseFillInFields(Bytes bytes) {
  const QString text = textOf(bytes);
  if (hasMoreDates({text}, 1)) return;
  const Desk desk({text});
  const QList<FillInField> fields = desk.parse(text);
  require(haveSameShape(fields, desk.parse(text + mark)), "a mark changes the fields");
  for (const FillInField& field : fields) {
    require(!field.name.isEmpty() && text.contains(field.name), "a name that the text has not");
    require(text.contains(field.defaultValue), "a default that the text has not");
    require(text.contains(field.type.content), "a content that the text has not");
  }
  const QString once = desk.answer(text, {});
  require(!fields.isEmpty() || text.contains(u"{{") || once == text, "plain text changed");
}

void applyFillInValues(Bytes bytes) {
  const QStringList texts = textsOf(bytes);
  if (hasMoreDates(texts, 1)) return;
  QMap<QString, QString> answers;
  for (qsizetype index = 1; index + 1 < texts.size(); index += 2) {
    answers.insert(texts.at(index), texts.at(index + 1));
  }
  const QString text = texts.at(0);
  const QString answered = Desk({text}).answer(text, answers);
  require(Desk({text}).answer(text + mark, answers) == answered + mark,
          "the text behind a field is lost");
  require(text.contains(u"{{") || answered == text, "a text without fields changed");
}

}  // namespace zarvy::fuzz
