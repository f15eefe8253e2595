#pragma once

#include <JavaScriptCore/JavaScript.h>
#include <memory>
#include <string_view>

namespace zarvy {

struct ReleaseEngineText {
  void operator()(JSStringRef text) const { JSStringRelease(text); }
};

// A text of the engine's. Null where the engine gave none.
using EngineText = std::unique_ptr<OpaqueJSString, ReleaseEngineText>;

// Any units: a NUL and half a surrogate pair are units like others.
[[nodiscard]] inline EngineText engineText(std::u16string_view units) {
  static_assert(sizeof(JSChar) == sizeof(char16_t));
  return EngineText(
      JSStringCreateWithCharacters(reinterpret_cast<const JSChar*>(units.data()), units.size()));
}

// Valid as long as `text`; empty for none.
[[nodiscard]] inline std::u16string_view unitsOf(const EngineText& text) {
  if (!text) return {};
  return {reinterpret_cast<const char16_t*>(JSStringGetCharactersPtr(text.get())),
          JSStringGetLength(text.get())};
}

}  // namespace zarvy
