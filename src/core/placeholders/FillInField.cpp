#include "core/placeholders/FillInField.h"

#include <optional>
#include <utility>
#include <vector>

#include <QSet>

#include "core/placeholders/Openers.h"
#include "core/placeholders/PlaceholderScan.h"
#include "core/placeholders/PlaceholderServices.h"

namespace zarvy {
namespace {

using Kind = FillInFieldType::Kind;

constexpr QStringView textFieldOpeners[] = {opener::textField};
constexpr QStringView textAreaOpeners[] = {opener::textArea};
constexpr QStringView sectionOpeners[] = {opener::section};
constexpr QStringView required = u"required";
constexpr QStringView requiredSuffix = u":required";

// {{field:Name:default:required}} and {{textarea:Name:default:required}}; views into the text.
struct TextInputArgument {
  QStringView name;
  std::optional<QStringView> second;  // a default value, or the word "required"
  bool isRequired = false;            // "required" stands in third place
};

// {{dropdown:Name:a,b,c}}. The name goes to the next colon, whatever stands in between.
struct Dropdown {
  QStringView name;
  QStringView options;  // as they stand, ":required" behind them included
};

// {{?:Name}}content{{/?}}. The first closing mark ends the content: sections do not nest.
struct OptionalSection {
  QStringView name;
  QStringView content;
};

// Absent for any other argument.
std::optional<TextInputArgument> readTextInput(QStringView argument) {
  const qsizetype nameEnd = argument.indexOf(u':');
  if (nameEnd < 0) return TextInputArgument{argument, {}, false};
  if (nameEnd == 0) return std::nullopt;
  const QStringView name = argument.first(nameEnd);
  const QStringView rest = argument.sliced(nameEnd + 1);
  const qsizetype secondEnd = rest.indexOf(u':');
  if (secondEnd < 0) return TextInputArgument{name, rest, false};
  if (rest.sliced(secondEnd + 1) != required) return std::nullopt;
  return TextInputArgument{name, rest.first(secondEnd), true};
}

bool isTextInput(QStringView argument) {
  return readTextInput(argument).has_value();
}

std::vector<Dropdown> findDropdowns(QStringView text) {
  std::vector<Dropdown> found;
  NextOccurrence colon(text, u":");
  NextOccurrence brace(text, u"}");
  for (qsizetype start = text.indexOf(opener::dropdown); start >= 0;) {
    const qsizetype name = start + opener::dropdown.size();
    const qsizetype nameEnd = colon.from(name);
    if (nameEnd == text.size()) break;
    const qsizetype options = nameEnd + 1;
    const qsizetype end = brace.from(options);
    const bool isDropdown = nameEnd > name && end > options && text.sliced(end).startsWith(u"}}");
    if (isDropdown) {
      found.push_back({text.sliced(name, nameEnd - name), text.sliced(options, end - options)});
    }
    start = text.indexOf(opener::dropdown, isDropdown ? end + 2 : start + 1);
  }
  return found;
}

std::vector<OptionalSection> findOptionalSections(QStringView text) {
  std::vector<OptionalSection> found;
  PlaceholderScan openings(text, {sectionOpeners});
  NextOccurrence closing(text, literal::sectionEnd);
  while (const auto opening = openings.next()) {
    const qsizetype content = opening->literal.utf16() - text.utf16() + opening->literal.size();
    const qsizetype end = closing.from(content);
    if (end == text.size()) break;
    found.push_back({opening->argument, text.sliced(content, end - content)});
    openings.skipTo(end + literal::sectionEnd.size());
  }
  return found;
}

QStringView trimmedBlanks(QStringView text) {
  const auto isBlank = [](QChar unit) { return unit == u' ' || unit == u'\t'; };
  while (!text.isEmpty() && isBlank(text.front())) text = text.sliced(1);
  while (!text.isEmpty() && isBlank(text.back())) text.chop(1);
  return text;
}

// Empty pieces are left out, but one of blanks alone stays as an empty option.
QStringList splitOptions(QStringView text) {
  QStringList options;
  for (const QStringView piece : text.split(u',', Qt::SkipEmptyParts)) {
    options.append(trimmedBlanks(piece).toString());
  }
  return options;
}

class FieldList {
 public:
  explicit FieldList(const FieldDefaults& defaults) : m_defaults(defaults) {}

  void addTextInput(Kind kind, const TextInputArgument& argument) {
    const QString name = argument.name.toString();
    QSet<QString>& known = kind == Kind::text ? m_textFields : m_textAreas;
    if (known.contains(name)) return;
    known.insert(name);
    // The second place does double duty, so that no default value can be this word.
    const bool isFlag = argument.second == required;
    append({.id = QUuid::createUuid(),
            .name = name,
            .type = {.kind = kind, .options = {}, .content = {}},
            .defaultValue = isFlag ? QString() : argument.second.value_or(QStringView()).toString(),
            .isRequired = isFlag || argument.isRequired,
            .value = {}});
  }

  void add(const Dropdown& dropdown) {
    const QString name = dropdown.name.toString();
    if (m_names.contains(name)) return;
    QStringView text = dropdown.options;
    const bool isRequired = text.endsWith(requiredSuffix);
    if (isRequired) text.chop(requiredSuffix.size());
    const QStringList options = splitOptions(text);
    append({.id = QUuid::createUuid(),
            .name = name,
            .type = {.kind = Kind::dropdown, .options = options, .content = {}},
            .defaultValue = options.value(0),
            .isRequired = isRequired,
            .value = {}});
  }

  void add(const OptionalSection& section) {
    const QString name = section.name.toString();
    if (m_names.contains(name)) return;
    append({.id = QUuid::createUuid(),
            .name = name,
            .type = {.kind = Kind::optional, .options = {}, .content = section.content.toString()},
            .defaultValue = {},
            .isRequired = false,
            .value = {}});
  }

  [[nodiscard]] QList<FillInField> take() { return std::move(m_fields); }

 private:
  void append(FillInField field) {
    const std::optional<QString> remembered = m_defaults.value(field.name);
    field.value = remembered.value_or(field.defaultValue);
    field.shouldRemember = remembered.has_value();
    m_names.insert(field.name);
    m_fields.append(std::move(field));
  }

  const FieldDefaults& m_defaults;
  QList<FillInField> m_fields;
  QSet<QString> m_names;  // of the fields so far, of whatever kind
  QSet<QString> m_textFields;
  QSet<QString> m_textAreas;
};

}  // namespace

QList<FillInField> parseFillInFields(const QString& text, const FieldDefaults& defaults) {
  if (!mayHoldPlaceholders(text)) return {};
  FieldList fields(defaults);
  const auto addTextInputs = [&](Kind kind, const PlaceholderForm& form) {
    for (const Placeholder& placeholder : findPlaceholders(text, form)) {
      if (const auto argument = readTextInput(placeholder.argument)) {
        fields.addTextInput(kind, *argument);
      }
    }
  };
  addTextInputs(Kind::text, {textFieldOpeners, isTextInput});
  addTextInputs(Kind::textarea, {textAreaOpeners, isTextInput});
  for (const Dropdown& dropdown : findDropdowns(text)) fields.add(dropdown);
  for (const OptionalSection& section : findOptionalSections(text)) fields.add(section);
  return fields.take();
}

}  // namespace zarvy
