#include "ui/MenuEntries.h"

#include "app/expansion/ExpansionService.h"
#include "app/library/Library.h"
#include "ui/HotKeyText.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

MenuCircumstances menuCircumstancesOf(const Library& library, const ExpansionService& expansion) {
  const auto& taken = expansion.takenHotKey();
  return {.hasAccessibilityPermission = expansion.hasAccessibilityPermission(),
          .secureInputAppName = expansion.secureInputAppName(),
          .snippetCount = library.snippets().size(),
          .isPaused = expansion.isPaused(),
          .takenHotKey = taken ? std::optional(hotKeyText(taken->key)) : std::nullopt};
}

QList<MenuEntry> menuEntries(const MenuCircumstances& circumstances) {
  const auto& blocker = circumstances.secureInputAppName;
  return {
      {.text = u"Setup Required..."_s,
       .action = MenuAction::openPermissionRequest,
       .symbol = Symbol::exclamationmarkTriangle,
       .shortcut = {},
       .hasDividerBehind = true,
       .isVisible = !circumstances.hasAccessibilityPermission},
      {.text = u"Blocked by "_s + blocker.value_or(QString()),
       .action = MenuAction::none,
       .symbol = Symbol::lockFill,
       .shortcut = {},
       .hasDividerBehind = true,
       .isVisible = blocker.has_value()},
      {.text =
           circumstances.takenHotKey.value_or(QString()) + u" Is Taken: Choose Another Key..."_s,
       .action = MenuAction::openSettings,
       .symbol = Symbol::exclamationmarkTriangle,
       .shortcut = {},
       .hasDividerBehind = true,
       .isVisible = circumstances.takenHotKey.has_value()},
      {.text = QString::number(circumstances.snippetCount) + u" snippets"_s,
       .action = MenuAction::none,
       .symbol = {},
       .shortcut = {},
       .hasDividerBehind = true},
      {.text = u"Manage Snippets..."_s,
       .action = MenuAction::openManageSnippets,
       .symbol = {},
       .shortcut = {}},
      {.text = u"Add New Snippet..."_s,
       .action = MenuAction::addNewSnippet,
       .symbol = {},
       .shortcut = Qt::CTRL | Qt::SHIFT | Qt::Key_N},
      {.text = u"Settings..."_s,
       .action = MenuAction::openSettings,
       .symbol = {},
       .shortcut = Qt::CTRL | Qt::Key_Comma},
      {.text = u"Statistics..."_s,
       .action = MenuAction::openStatistics,
       .symbol = {},
       .shortcut = {},
       .hasDividerBehind = true},
      {.text = circumstances.isPaused ? u"Resume Expansion"_s : u"Pause Expansion"_s,
       .action = MenuAction::togglePause,
       .symbol = {},
       .shortcut = Qt::CTRL | Qt::SHIFT | Qt::Key_P,
       .hasDividerBehind = true,
       .isVisible = circumstances.hasAccessibilityPermission},
      {.text = u"Quit Zarvy"_s,
       .action = MenuAction::quit,
       .symbol = {},
       .shortcut = Qt::CTRL | Qt::Key_Q},
  };
}

MenuBarSymbol menuBarSymbol(const MenuCircumstances& circumstances) {
  if (!circumstances.hasAccessibilityPermission) return MenuBarSymbol::permissionMissing;
  if (circumstances.secureInputAppName) return MenuBarSymbol::blocked;
  return circumstances.isPaused ? MenuBarSymbol::paused : MenuBarSymbol::listening;
}

}  // namespace zarvy
