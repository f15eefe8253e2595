#pragma once

#include <optional>

#include <QString>
#include <QStringList>

#include "base/text/Regex.h"

namespace zarvy {

// The kinds of placeholders that can be edited in place.
enum class PlaceholderType {
  field,
  textarea,
  dropdown,
  other,  // none of them
};

// A fill-in placeholder as it stands in a text.
struct PlaceholderInfo {
  QString fullMatch;  // from "{{" to "}}"
  TextRange range;    // where it stands, in UTF-16 units
  PlaceholderType type = PlaceholderType::other;
  QString name;
  QString defaultValue;
  bool isRequired = false;
  QStringList options;  // of a dropdown, without blanks around them; an empty one stays in the list

  bool operator==(const PlaceholderInfo&) const = default;
};

// The placeholder that the UTF-16 unit at `characterIndex` belongs to, braces included; absent for
// any other place, and for one beyond the number of user-perceived characters in `text`. Of two
// that overlap a text field is taken before a text area, and that before a dropdown.
[[nodiscard]] std::optional<PlaceholderInfo> findPlaceholder(const QString& text,
                                                             qsizetype characterIndex);

}  // namespace zarvy
