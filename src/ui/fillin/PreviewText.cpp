#include "ui/fillin/PreviewText.h"

#include <memory>
#include <utility>
#include <variant>

#include "base/text/CaseMapping.h"
#include "base/text/Graphemes.h"
#include "base/text/Regex.h"
#include "core/placeholders/FillInPlaces.h"
#include "core/placeholders/RelativeDate.h"
#include "ui/fillin/PreviewMarks.h"
#include "ui/fillin/PreviewNesting.h"
#include "ui/fillin/ReplaceEach.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

constexpr QStringView upper = u"{{uppercase:";
constexpr QStringView lower = u"{{lowercase:";
constexpr QStringView letterCaseOpeners[] = {upper, lower, u"{{titlecase:"};
constexpr QStringView counterOpeners[] = {u"{{counter:"};
constexpr QStringView scriptOpeners[] = {u"{{js:"};
constexpr QStringView dateOpeners[] = {u"{{date:"};
constexpr QStringView timeOpeners[] = {u"{{time:"};
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
  const qsizetype opener = QStringView(u"{{?:}}").size() + field.name.size();
  const qsizetype closer = QStringView(u"{{/?}}").size();
  const QString content = sections.front().sliced(opener).chopped(closer).toString();
  return withSectionContent(text, sections, field.isChecked ? content : QString());
}

QString withField(const QString& text, const FillInField& field) {
  FillIns places;
  switch (field.type.kind) {
    case FillInFieldType::Kind::text:
      places = findTextFieldsOf(text, field.name);
      break;
    case FillInFieldType::Kind::textarea:
      places = findTextAreasOf(text, field.name);
      break;
    case FillInFieldType::Kind::dropdown:
      places = findDropdownsOf(text, field.name);
      break;
    case FillInFieldType::Kind::optional:
      return withSection(text, field);
  }
  return places.empty() ? text : withAnswer(text, places, shownValue(field));
}

QString withLetterCases(const QString& text) {
  return replaceEach(text, {letterCaseOpeners}, [](const Placeholder& placeholder) {
    const QString argument = withoutMarks(placeholder.argument.toString());
    if (placeholder.opener == upper) return regular(upperCased(argument));
    if (placeholder.opener == lower) return regular(lowerCased(argument));
    return regular(capitalized(argument));
  });
}

QString withCounters(const QString& text) {
  return replaceEach(text, {counterOpeners}, [](const Placeholder& placeholder) {
    const QString argument = withoutMarks(placeholder.argument.toString());
    return regular(u"[#"_s + argument.section(u':', 0, 0) + u']');
  });
}

QString withScripts(const QString& text) {
  return replaceEach(text, {scriptOpeners}, [](const Placeholder& placeholder) {
    const QString script = withoutMarks(placeholder.argument.toString());
    QString shown = firstGraphemes(script, shownScriptLength).toString();
    if (shown.size() < script.size()) shown += u"..."_s;
    return regular(u"[js:"_s + shown + u']');
  });
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
  return regular(u'[' + (colon < 0 ? argument : argument.first(colon)).toString() + u']');
}

QString withOffsets(const QString& text) {
  return replaceEach(replaceEach(text, {dateOpeners, isOffsetDate}, offset),
                     {timeOpeners, isOffsetTime}, offset);
}

// The last six rows have been taken as offsets before.
QString withFixedTexts(QString text, const PreviewDates& dates) {
  const std::pair<QString, QString> table[] = {
      {u"{{date:short}}"_s, dates.shortDate}, {u"{{date:medium}}"_s, dates.mediumDate},
      {u"{{date:long}}"_s, dates.longDate},   {u"{{time}}"_s, dates.time},
      {u"{{clipboard}}"_s, u"[clipboard]"_s}, {u"{{cursor}}"_s, u"[cursor]"_s},
      {u"{{date:+1d}}"_s, u"[tomorrow]"_s},   {u"{{date:-1d}}"_s, u"[yesterday]"_s},
      {u"{{date:+7d}}"_s, u"[+7 days]"_s},    {u"{{date:+1m}}"_s, u"[+1 month]"_s},
      {u"{{time:+1h}}"_s, u"[+1 hour]"_s},    {u"{{time:+30M}}"_s, u"[+30 min]"_s},
  };
  for (const auto& [literal, shown] : table) text.replace(literal, regular(shown));
  return text;
}

}  // namespace

QList<PreviewRun> previewRuns(const QString& replacement, const QList<FillInField>& fields,
                              const SnippetList& snippets, const PreviewDates& dates) {
  QString text = withNestedSnippets(replacement, snippets);
  for (const FillInField& field : fields) text = withField(text, field);
  text = withScripts(withCounters(withLetterCases(text)));
  return splitAtMarks(withFixedTexts(withOffsets(text), dates));
}

}  // namespace zarvy
