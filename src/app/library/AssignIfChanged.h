#pragma once

#include <utility>

namespace zarvy {

// Whether `value` was something else than `property` held, which holds it now: an object that
// announces a property's changes does so then, and only then.
template <typename Value>
[[nodiscard]] bool assignIfChanged(Value& property, Value value) {
  if (property == value) return false;
  property = std::move(value);
  return true;
}

}  // namespace zarvy
