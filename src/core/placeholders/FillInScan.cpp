#include "core/placeholders/FillInScan.h"

#include <optional>
#include <span>

#include "core/placeholders/Openers.h"
#include "core/placeholders/PlaceholderScan.h"

namespace zarvy {
namespace {

constexpr QStringView textFieldOpeners[] = {opener::textField};
constexpr QStringView textAreaOpeners[] = {opener::textArea};
constexpr QStringView sectionOpeners[] = {opener::section};
constexpr QStringView required = u"required";
constexpr QStringView requiredSuffix = u":required";

// Absent where `argument` is none of a text input.
std::optional<TextInput> readTextInput(QStringView literal, QStringView argument) {
  const qsizetype nameEnd = argument.indexOf(u':');
  if (nameEnd < 0) return TextInput{literal, argument, {}, false};
  if (nameEnd == 0) return std::nullopt;
  const QStringView name = argument.first(nameEnd);
  const QStringView rest = argument.sliced(nameEnd + 1);
  if (rest == required) return TextInput{literal, name, {}, true};
  const qsizetype secondEnd = rest.indexOf(u':');
  if (secondEnd < 0) return TextInput{literal, name, rest, false};
  if (rest.sliced(secondEnd + 1) != required) return std::nullopt;
  const QStringView second = rest.first(secondEnd);
  return TextInput{literal, name, second == required ? QStringView() : second, true};
}

bool isTextInput(QStringView argument) {
  return readTextInput({}, argument).has_value();
}

std::vector<TextInput> findTextInputs(QStringView text, std::span<const QStringView> openers) {
  std::vector<TextInput> found;
  PlaceholderScan scan(text, {openers, isTextInput});
  while (const auto placeholder = scan.next()) {
    found.push_back(*readTextInput(placeholder->literal, placeholder->argument));
  }
  return found;
}

QStringView trimmedBlanks(QStringView text) {
  const auto isBlank = [](QChar unit) { return unit == u' ' || unit == u'\t'; };
  while (!text.isEmpty() && isBlank(text.front())) text = text.sliced(1);
  while (!text.isEmpty() && isBlank(text.back())) text.chop(1);
  return text;
}

}  // namespace

std::vector<TextInput> findTextFields(QStringView text) {
  return findTextInputs(text, textFieldOpeners);
}

std::vector<TextInput> findTextAreas(QStringView text) {
  return findTextInputs(text, textAreaOpeners);
}

std::vector<Dropdown> findDropdowns(QStringView text) {
  constexpr QStringView closer = u"}}";
  std::vector<Dropdown> found;
  NextOccurrence colon(text, u":");
  NextOccurrence brace(text, u"}");
  for (qsizetype start = text.indexOf(opener::dropdown); start >= 0;) {
    const qsizetype name = start + opener::dropdown.size();
    const qsizetype nameEnd = colon.from(name);
    if (nameEnd == text.size()) break;
    const qsizetype options = nameEnd + 1;
    const qsizetype optionsEnd = brace.from(options);
    const qsizetype end = optionsEnd + closer.size();
    const bool isDropdown =
        nameEnd > name && optionsEnd > options && text.sliced(optionsEnd).startsWith(closer);
    if (isDropdown) {
      Dropdown dropdown{text.sliced(start, end - start), text.sliced(name, nameEnd - name),
                        text.sliced(options, optionsEnd - options)};
      dropdown.isRequired = dropdown.options.endsWith(requiredSuffix);
      if (dropdown.isRequired) dropdown.options.chop(requiredSuffix.size());
      found.push_back(dropdown);
    }
    start = text.indexOf(opener::dropdown, isDropdown ? end : start + 1);
  }
  return found;
}

QStringList splitOptions(QStringView options, Qt::SplitBehavior behavior) {
  QStringList pieces;
  for (const QStringView piece : options.split(u',', behavior)) {
    pieces.append(trimmedBlanks(piece).toString());
  }
  return pieces;
}

std::vector<OptionalSection> findOptionalSections(QStringView text) {
  std::vector<OptionalSection> found;
  PlaceholderScan openings(text, {sectionOpeners});
  NextOccurrence closing(text, literal::sectionEnd);
  while (const auto opening = openings.next()) {
    const qsizetype start = opening->literal.utf16() - text.utf16();
    const qsizetype content = start + opening->literal.size();
    const qsizetype contentEnd = closing.from(content);
    if (contentEnd == text.size()) break;
    const qsizetype end = contentEnd + literal::sectionEnd.size();
    found.push_back({text.sliced(start, end - start), opening->argument,
                     text.sliced(content, contentEnd - content)});
    openings.skipTo(end);
  }
  return found;
}

}  // namespace zarvy
