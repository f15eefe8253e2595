#pragma once

#include <QString>

namespace zarvy {

// Why a JSON text or value could not be read. Holds positions and keys, never the user's own text.
struct JsonError {
  QString place;  // where: "element 3, key \"trigger\""; empty for the document as a whole
  QString cause;  // what is wrong there, such as "is missing"

  // One line for the log.
  [[nodiscard]] QString description() const;

  // The same error seen from one level further out.
  [[nodiscard]] JsonError inside(const QString& outerPlace) const;

  bool operator==(const JsonError&) const = default;
};

}  // namespace zarvy
