#include "core/placeholders/FillInScan.h"

#include "core/placeholders/NextOccurrence.h"

namespace zarvy {
namespace {

constexpr QStringView textFieldOpeners[] = {u"{{field:"};
constexpr QStringView textAreaOpeners[] = {u"{{textarea:"};
constexpr QStringView sectionOpeners[] = {u"{{?:"};
constexpr QStringView sectionEnd = u"{{/?}}";

bool isTextInput(QStringView argument) {
  return readTextInput(argument).has_value();
}

}  // namespace

const PlaceholderForm textFieldForm{textFieldOpeners, isTextInput};
const PlaceholderForm textAreaForm{textAreaOpeners, isTextInput};

std::optional<TextInputArgument> readTextInput(QStringView argument) {
  const qsizetype nameEnd = argument.indexOf(u':');
  if (nameEnd < 0) return TextInputArgument{argument, {}, false};
  if (nameEnd == 0) return std::nullopt;
  const QStringView name = argument.first(nameEnd);
  const QStringView rest = argument.sliced(nameEnd + 1);
  const qsizetype secondEnd = rest.indexOf(u':');
  if (secondEnd < 0) return TextInputArgument{name, rest, false};
  if (rest.sliced(secondEnd + 1) != u"required") return std::nullopt;
  return TextInputArgument{name, rest.first(secondEnd), true};
}

std::vector<Dropdown> findDropdowns(QStringView text) {
  constexpr QStringView opener = u"{{dropdown:";
  std::vector<Dropdown> found;
  NextOccurrence colon(text, u":");
  NextOccurrence brace(text, u"}");
  for (qsizetype start = text.indexOf(opener); start >= 0;) {
    const qsizetype name = start + opener.size();
    const qsizetype nameEnd = colon.from(name);
    if (nameEnd == text.size()) break;
    const qsizetype options = nameEnd + 1;
    const qsizetype end = brace.from(options);
    const bool isDropdown = nameEnd > name && end > options && text.sliced(end).startsWith(u"}}");
    if (isDropdown) {
      found.push_back({text.sliced(name, nameEnd - name), text.sliced(options, end - options)});
    }
    start = text.indexOf(opener, isDropdown ? end + 2 : start + 1);
  }
  return found;
}

std::vector<OptionalSection> findOptionalSections(QStringView text) {
  std::vector<OptionalSection> found;
  PlaceholderScan openings(text, {sectionOpeners});
  NextOccurrence closing(text, sectionEnd);
  while (const auto opening = openings.next()) {
    const qsizetype content = opening->literal.utf16() - text.utf16() + opening->literal.size();
    const qsizetype end = closing.from(content);
    if (end == text.size()) break;
    found.push_back({opening->argument, text.sliced(content, end - content)});
    openings.skipTo(end + sectionEnd.size());
  }
  return found;
}

}  // namespace zarvy
