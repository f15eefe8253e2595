#pragma once

#include "app/expansion/ExpansionService.h"
#include "app/library/Library.h"
#include "ui/HotKeyText.h"
#include "ui/MenuEntries.h"

namespace zarvy {

[[nodiscard]] inline MenuCircumstances menuCircumstancesOf(const Library& library,
                                                           const ExpansionService& expansion) {
  const auto& taken = expansion.takenHotKey();
  return {.hasAccessibilityPermission = expansion.hasAccessibilityPermission(),
          .secureInputAppName = expansion.secureInputAppName(),
          .snippetCount = library.snippets().size(),
          .isPaused = expansion.isPaused(),
          .takenHotKey = taken ? std::optional(hotKeyText(taken->key)) : std::nullopt};
}

}  // namespace zarvy
