#pragma once

#include <optional>
#include <vector>

#include <QStringView>

#include "core/placeholders/PlaceholderScan.h"

namespace zarvy {

// {{field:Name:default:required}} and {{textarea:Name:default:required}}; views into the text.
struct TextInputArgument {
  QStringView name;
  std::optional<QStringView> second;  // a default value, or the word "required"
  bool isRequired = false;            // "required" stands in third place
};

extern const PlaceholderForm textFieldForm;
extern const PlaceholderForm textAreaForm;

// The parts of the argument of a placeholder of one of these forms; absent for any other argument.
[[nodiscard]] std::optional<TextInputArgument> readTextInput(QStringView argument);

// {{dropdown:Name:a,b,c}}. The name goes to the next colon, whatever stands in between.
struct Dropdown {
  QStringView name;
  QStringView options;  // as they stand, ":required" behind them included
};
[[nodiscard]] std::vector<Dropdown> findDropdowns(QStringView text);

// {{?:Name}}content{{/?}}. The first closing mark ends the content: sections do not nest.
struct OptionalSection {
  QStringView name;
  QStringView content;
};
[[nodiscard]] std::vector<OptionalSection> findOptionalSections(QStringView text);

}  // namespace zarvy
