#include "ui/MenuEntries.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

QList<MenuEntry> menuEntries(const MenuCircumstances& circumstances) {
  QList<MenuEntry> entries;
  if (!circumstances.hasAccessibilityPermission) {
    entries.append({.text = u"Setup Required..."_s,
                    .action = MenuAction::openPermissionRequest,
                    .iconName = u"dialog-warning"_s,
                    .shortcut = {},
                    .hasDividerBehind = true});
  }
  if (circumstances.secureInputAppName) {
    entries.append({.text = u"Blocked by "_s + *circumstances.secureInputAppName,
                    .action = MenuAction::none,
                    .iconName = u"object-locked"_s,
                    .shortcut = {},
                    .hasDividerBehind = true});
  }
  const auto plain = [&entries](const QString& text, MenuAction action,
                                const QKeySequence& shortcut = {}) {
    entries.append({.text = text, .action = action, .iconName = {}, .shortcut = shortcut});
  };
  const auto divide = [&entries] { entries.back().hasDividerBehind = true; };
  plain(QString::number(circumstances.snippetCount) + u" snippets"_s, MenuAction::none);
  divide();
  plain(u"Manage Snippets..."_s, MenuAction::openManageSnippets);
  plain(u"Add New Snippet..."_s, MenuAction::addNewSnippet, Qt::CTRL | Qt::SHIFT | Qt::Key_N);
  plain(u"Settings..."_s, MenuAction::openSettings, Qt::CTRL | Qt::Key_Comma);
  plain(u"Statistics..."_s, MenuAction::openStatistics);
  divide();
  if (circumstances.hasAccessibilityPermission) {
    plain(circumstances.isPaused ? u"Resume Expansion"_s : u"Pause Expansion"_s,
          MenuAction::togglePause, Qt::CTRL | Qt::SHIFT | Qt::Key_P);
    divide();
  }
  plain(u"Quit Zarvy"_s, MenuAction::quit, Qt::CTRL | Qt::Key_Q);
  return entries;
}

MenuBarSymbol menuBarSymbol(const MenuCircumstances& circumstances) {
  if (!circumstances.hasAccessibilityPermission) return MenuBarSymbol::permissionMissing;
  if (circumstances.secureInputAppName) return MenuBarSymbol::blocked;
  return circumstances.isPaused ? MenuBarSymbol::paused : MenuBarSymbol::listening;
}

}  // namespace zarvy
