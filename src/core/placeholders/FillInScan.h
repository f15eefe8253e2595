#pragma once

#include <vector>

#include <QStringList>
#include <QStringView>

namespace zarvy {

// The fill-in placeholders of a text, each kind from left to right and without overlaps; views into
// the text. For all that reads them: the form, the previews, the editor.

// {{field:Name:default:required}} or {{textarea:Name:default:required}}. In second place the word
// "required" is the flag, so that no default value can be this word.
struct TextInput {
  QStringView literal;  // from "{{" to "}}"
  QStringView name;
  QStringView defaultValue;  // empty where there is none
  bool isRequired = false;
};
[[nodiscard]] std::vector<TextInput> findTextFields(QStringView text);
[[nodiscard]] std::vector<TextInput> findTextAreas(QStringView text);

// {{dropdown:Name:a,b,c:required}}. The name goes to the next colon, whatever stands in between.
struct Dropdown {
  QStringView literal;
  QStringView name;
  QStringView options;  // as they stand, without the flag
  bool isRequired = false;
};
[[nodiscard]] std::vector<Dropdown> findDropdowns(QStringView text);

// The pieces between the commas, without the spaces and tabs around them. `behavior` says whether
// pieces with nothing between the commas are left out; one of blanks alone stays as an empty one.
[[nodiscard]] QStringList splitOptions(QStringView options, Qt::SplitBehavior behavior);

// {{?:Name}}content{{/?}}. The first closing mark ends the content: sections do not nest.
struct OptionalSection {
  QStringView literal;  // from the opening mark to the closing one
  QStringView name;
  QStringView content;
};
[[nodiscard]] std::vector<OptionalSection> findOptionalSections(QStringView text);

}  // namespace zarvy
