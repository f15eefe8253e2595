#pragma once

#include <optional>

#include <QString>

namespace zarvy {

// The texts that the user asked to have remembered for the fields of forms, by the field's name
// alone, with its case: one text serves the fields of that name in all snippets. Any thread.
class FieldDefaults {
 public:
  virtual ~FieldDefaults() = default;

  // Absent where nothing is remembered; an empty text can be.
  [[nodiscard]] virtual std::optional<QString> value(const QString& name) const = 0;
};

}  // namespace zarvy
