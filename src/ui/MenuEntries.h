#pragma once

#include <optional>

#include <QKeySequence>
#include <QList>
#include <QString>

#include "ui/symbols/Symbol.h"

namespace zarvy {

class ExpansionService;
class Library;

// What the menu behind the tray icon depends on.
struct MenuCircumstances {
  bool hasAccessibilityPermission = false;
  std::optional<QString> secureInputAppName;
  qsizetype snippetCount = 0;
  bool isPaused = false;
  std::optional<QString> takenHotKey = std::nullopt;  // in words

  bool operator==(const MenuCircumstances&) const = default;
};

[[nodiscard]] MenuCircumstances menuCircumstancesOf(const Library& library,
                                                    const ExpansionService& expansion);

enum class MenuAction {
  none,  // a line that only tells something
  openPermissionRequest,
  openManageSnippets,
  addNewSnippet,
  openSettings,
  openStatistics,
  togglePause,
  quit,
};

struct MenuEntry {
  QString text;
  MenuAction action = MenuAction::none;
  std::optional<Symbol> symbol;
  QKeySequence shortcut;
  bool hasDividerBehind = false;
  bool isVisible = true;
};

// Every entry in its order, those that are not to be seen included: an entry is in the same place
// of the list whatever holds. Pure.
[[nodiscard]] QList<MenuEntry> menuEntries(const MenuCircumstances& circumstances);

// The state that the icon shows: the first that holds, in this order.
enum class MenuBarSymbol { permissionMissing, blocked, listening, paused };
[[nodiscard]] MenuBarSymbol menuBarSymbol(const MenuCircumstances& circumstances);

}  // namespace zarvy
