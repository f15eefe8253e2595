#pragma once

#include <utility>
#include <variant>

#include "base/json/JsonError.h"

namespace zarvy {

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
