#include "ui/MenuBarView.h"

#include <utility>

#include <QIcon>

#include "app/AppState.h"
#include "ui/MenuCircumstancesOf.h"
#include "ui/Scenes.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

namespace {

// An application's name may hold what a menu makes something of: the mark of a mnemonic, and the
// gap ahead of a shortcut.
QString literal(QString text) {
  return text.replace(u'&', u"&&"_s).replace(u'\t', u' ');
}

}  // namespace

MenuBarView::MenuBarView(AppState& state, std::function<void(const QString& id)> openScene,
                         std::function<void()> quit)
    : m_state(state), m_openScene(std::move(openScene)), m_quit(std::move(quit)) {
  for (const auto signal :
       {&AppState::snippetsChanged, &AppState::isPausedChanged,
        &AppState::hasAccessibilityPermissionChanged, &AppState::secureInputAppNameChanged}) {
    connect(&state, signal, this, &MenuBarView::rebuild);
  }
  rebuild();
}

void MenuBarView::rebuild() {
  const MenuCircumstances circumstances = menuCircumstancesOf(m_state);
  if (std::exchange(m_circumstances, circumstances) == circumstances) return;
  clear();
  for (const MenuEntry& entry : menuEntries(circumstances)) {
    QAction* const action = addAction(QIcon::fromTheme(entry.iconName), literal(entry.text));
    action->setShortcut(entry.shortcut);
    action->setEnabled(entry.action != MenuAction::none);
    connect(action, &QAction::triggered, this, [this, todo = entry.action] { perform(todo); });
    if (entry.hasDividerBehind) addSeparator();
  }
}

void MenuBarView::perform(MenuAction action) {
  switch (action) {
    case MenuAction::none:
      break;
    case MenuAction::openPermissionRequest:
      return m_openScene(scene::permissionRequest);
    case MenuAction::openManageSnippets:
      return m_openScene(scene::manageSnippets);
    case MenuAction::addNewSnippet:
      m_state.selection().setPendingNewSnippet(true);
      return m_openScene(scene::manageSnippets);
    case MenuAction::openSettings:
      return m_openScene(scene::settings);
    case MenuAction::openStatistics:
      return m_openScene(scene::statistics);
    case MenuAction::togglePause:
      return m_state.togglePause();
    case MenuAction::quit:
      return m_quit();
  }
}

}  // namespace zarvy
