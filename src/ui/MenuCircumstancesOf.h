#pragma once

#include "app/AppState.h"
#include "ui/HotKeyText.h"
#include "ui/MenuEntries.h"

namespace zarvy {

[[nodiscard]] inline MenuCircumstances menuCircumstancesOf(const AppState& state) {
  const auto& taken = state.takenHotKey();
  return {.hasAccessibilityPermission = state.hasAccessibilityPermission(),
          .secureInputAppName = state.secureInputAppName(),
          .snippetCount = state.snippets().size(),
          .isPaused = state.isPaused(),
          .takenHotKey = taken ? std::optional(hotKeyText(taken->key)) : std::nullopt};
}

}  // namespace zarvy
