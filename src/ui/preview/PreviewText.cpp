#include "ui/preview/PreviewText.h"

#include <memory>
#include <utility>
#include <variant>

#include "base/text/CaseMapping.h"
#include "base/text/Graphemes.h"
#include "base/text/Regex.h"
#include "core/placeholders/FillInPlaces.h"
#include "core/placeholders/Openers.h"
#include "core/placeholders/RelativeDate.h"
#include "ui/preview/PreviewMarks.h"
#include "ui/preview/PreviewNesting.h"
#include "ui/preview/ReplaceEach.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

constexpr QStringView letterCaseOpeners[] = {opener::uppercase, opener::lowercase,
                                             opener::titlecase};
constexpr QStringView counterOpeners[] = {opener::counter};
constexpr QStringView scriptOpeners[] = {opener::script};
constexpr QStringView dateOpeners[] = {opener::date};
constexpr QStringView timeOpeners[] = {opener::time};
constexpr qsizetype shownScriptLength = 15;  // in user-perceived characters

QString regular(const QString& text) {
  return marked(text, PreviewRun::Kind::regular);
}

QString shownValue(const FillInField& field) {
  const QString text = field.value.isEmpty() ? u'[' + field.name + u']' : field.value;
  return marked(text, field.isRequired ? PreviewRun::Kind::required : PreviewRun::Kind::regular);
}

// Every section of the name shows the content of the first, or nothing.
QString withSection(const QString& text, const FillInField& field) {
  const FillIns sections = findSectionsOf(text, field.name);
  if (sections.empty()) return text;
  const qsizetype beginning =
      opener::section.size() + field.name.size() + QStringView(u"}}").size();
  const QString content =
      sections.front().sliced(beginning).chopped(literal::sectionEnd.size()).toString();
  return withSectionContent(text, sections, field.isChecked ? content : QString());
}

struct InputKind {
  FillInFieldType::Kind kind = FillInFieldType::Kind::text;
  FillIns (*findPlaces)(QStringView text, const QString& name) = nullptr;
};

constexpr InputKind inputKinds[] = {
    {FillInFieldType::Kind::text, findTextFieldsOf},
    {FillInFieldType::Kind::textarea, findTextAreasOf},
    {FillInFieldType::Kind::dropdown, findDropdownsOf},
};

QString withField(const QString& text, const FillInField& field) {
  for (const InputKind& input : inputKinds) {
    if (input.kind != field.type.kind) continue;
    const FillIns places = input.findPlaces(text, field.name);
    return places.empty() ? text : withAnswer(text, places, shownValue(field));
  }
  return withSection(text, field);
}

QString inLetterCase(const Placeholder& placeholder) {
  const QString argument = withoutMarks(placeholder.argument.toString());
  if (placeholder.opener == opener::uppercase) return upperCased(argument);
  if (placeholder.opener == opener::lowercase) return lowerCased(argument);
  return capitalized(argument);
}

QString counterName(const Placeholder& placeholder) {
  const QString argument = withoutMarks(placeholder.argument.toString());
  return u"[#"_s + argument.section(u':', 0, 0) + u']';
}

QString scriptBeginning(const Placeholder& placeholder) {
  const QString script = withoutMarks(placeholder.argument.toString());
  QString shown = firstGraphemes(script, shownScriptLength).toString();
  if (shown.size() < script.size()) shown += u"..."_s;
  return u"[js:"_s + shown + u']';
}

bool isWord(QStringView text) {
  const auto word = Regex::compile(u"\\A\\w+\\z"_s);
  const auto* const regex = std::get_if<std::shared_ptr<const Regex>>(&word);
  return regex && (*regex)->firstMatch(text).outcome == RegexOutcome::matched;
}

bool isOffsetDate(QStringView argument) {
  const auto date = readRelativeDate(argument, u"dwmy");
  return date && (!date->format || isWord(*date->format));
}

bool isOffsetTime(QStringView argument) {
  return readRelativeTime(argument, u"hM").has_value();
}

QString offset(const Placeholder& placeholder) {
  const QStringView argument = placeholder.argument;
  const qsizetype colon = argument.indexOf(u':');
  return u'[' + (colon < 0 ? argument : argument.first(colon)).toString() + u']';
}

// What is not worked out, and what stands for it. In this order: a kind finds also what those
// before it have put in.
struct ShownKind {
  PlaceholderForm form;
  QString (*shownFor)(const Placeholder& placeholder) = nullptr;
};

constexpr ShownKind shownKinds[] = {
    {{letterCaseOpeners}, inLetterCase},   {{counterOpeners}, counterName},
    {{scriptOpeners}, scriptBeginning},    {{dateOpeners, isOffsetDate}, offset},
    {{timeOpeners, isOffsetTime}, offset},
};

QString withShownKinds(QString text) {
  for (const ShownKind& kind : shownKinds) {
    text = replaceEach(text, kind.form, [&kind](const Placeholder& placeholder) {
      return regular(kind.shownFor(placeholder));
    });
  }
  return text;
}

// The last six rows have been taken as offsets before.
QString withFixedTexts(QString text, const PreviewDates& dates) {
  const std::pair<QStringView, QString> table[] = {
      {literal::shortDate, dates.shortDate},  {literal::mediumDate, dates.mediumDate},
      {literal::longDate, dates.longDate},    {literal::time, dates.time},
      {literal::clipboard, u"[clipboard]"_s}, {literal::cursor, u"[cursor]"_s},
      {u"{{date:+1d}}", u"[tomorrow]"_s},     {u"{{date:-1d}}", u"[yesterday]"_s},
      {u"{{date:+7d}}", u"[+7 days]"_s},      {u"{{date:+1m}}", u"[+1 month]"_s},
      {u"{{time:+1h}}", u"[+1 hour]"_s},      {u"{{time:+30M}}", u"[+30 min]"_s},
  };
  for (const auto& [fixed, shown] : table) text.replace(fixed.toString(), regular(shown));
  return text;
}

}  // namespace

QList<PreviewRun> previewRuns(const QString& replacement, const QList<FillInField>& fields,
                              const SnippetList& snippets, const PreviewDates& dates) {
  QString text = withNestedSnippets(replacement, snippets);
  for (const FillInField& field : fields) text = withField(text, field);
  return splitAtMarks(withFixedTexts(withShownKinds(text), dates));
}

}  // namespace zarvy
