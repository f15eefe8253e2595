#pragma once

#include <utility>
#include <variant>

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

// A value read from JSON, or why it could not be read.
template <typename T>
class [[nodiscard]] JsonResult {
 public:
  JsonResult(T value) : m_content(std::in_place_index<0>, std::move(value)) {}
  JsonResult(JsonError error) : m_content(std::in_place_index<1>, std::move(error)) {}

  [[nodiscard]] bool hasValue() const { return m_content.index() == 0; }
  explicit operator bool() const { return hasValue(); }

  // Only where hasValue().
  [[nodiscard]] const T& value() const& { return std::get<0>(m_content); }
  [[nodiscard]] T&& value() && { return std::get<0>(std::move(m_content)); }

  // Only where not hasValue().
  [[nodiscard]] const JsonError& error() const { return std::get<1>(m_content); }

 private:
  std::variant<T, JsonError> m_content;
};

}  // namespace zarvy
