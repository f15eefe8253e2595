#pragma once

#include "app/AppState.h"
#include "ui/MenuEntries.h"

namespace zarvy {

[[nodiscard]] inline MenuCircumstances menuCircumstancesOf(const AppState& state) {
  return {.hasAccessibilityPermission = state.hasAccessibilityPermission(),
          .secureInputAppName = state.secureInputAppName(),
          .snippetCount = state.snippets().size(),
          .isPaused = state.isPaused()};
}

}  // namespace zarvy
