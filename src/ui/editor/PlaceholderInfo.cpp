#include "ui/editor/PlaceholderInfo.h"

#include <algorithm>
#include <vector>

#include "base/text/Graphemes.h"
#include "core/placeholders/FillInScan.h"

namespace zarvy {
namespace {

TextRange rangeOf(QStringView part, QStringView text) {
  return {part.utf16() - text.utf16(), part.size()};
}

template <typename FillIn>
const FillIn* fillInAt(qsizetype index, const std::vector<FillIn>& fillIns, QStringView text) {
  const auto found = std::find_if(fillIns.begin(), fillIns.end(), [&](const FillIn& fillIn) {
    const TextRange range = rangeOf(fillIn.literal, text);
    return range.start <= index && index < range.end();
  });
  return found == fillIns.end() ? nullptr : &*found;
}

PlaceholderInfo infoOf(const TextInput& input, PlaceholderType type, QStringView text) {
  return {.fullMatch = input.literal.toString(),
          .range = rangeOf(input.literal, text),
          .type = type,
          .name = input.name.toString(),
          .defaultValue = input.defaultValue.toString(),
          .isRequired = input.isRequired,
          .options = {}};
}

PlaceholderInfo infoOf(const Dropdown& dropdown, QStringView text) {
  return {.fullMatch = dropdown.literal.toString(),
          .range = rangeOf(dropdown.literal, text),
          .type = PlaceholderType::dropdown,
          .name = dropdown.name.toString(),
          .defaultValue = {},
          .isRequired = dropdown.isRequired,
          .options = splitOptions(dropdown.options, Qt::KeepEmptyParts)};
}

}  // namespace

std::optional<PlaceholderInfo> findPlaceholder(const QString& text, qsizetype characterIndex) {
  if (text.isEmpty() || characterIndex < 0 || !hasGraphemes(text, characterIndex)) return {};
  const auto fields = findTextFields(text);
  if (const auto* const field = fillInAt(characterIndex, fields, text))
    return infoOf(*field, PlaceholderType::field, text);
  const auto areas = findTextAreas(text);
  if (const auto* const area = fillInAt(characterIndex, areas, text))
    return infoOf(*area, PlaceholderType::textarea, text);
  const auto dropdowns = findDropdowns(text);
  if (const auto* const dropdown = fillInAt(characterIndex, dropdowns, text))
    return infoOf(*dropdown, text);
  return {};
}

}  // namespace zarvy
