#include "ui/MenuBarView.h"

#include <cstddef>
#include <utility>

#include <QCoreApplication>
#include <QEvent>
#include <QKeyEvent>

#include "app/expansion/ExpansionService.h"
#include "app/library/Library.h"
#include "app/library/LibrarySelection.h"
#include "ui/style/QuietEntries.h"
#include "ui/symbols/SymbolIcon.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

namespace {

// An application's name may hold what a menu makes something of: the mark of a mnemonic, and the
// gap ahead of a shortcut.
QString literal(QString text) {
  return text.replace(u'&', u"&&"_s).replace(u'\t', u' ');
}

}  // namespace

MenuBarView::MenuBarView(const Library& library, LibrarySelection& selection,
                         ExpansionService& expansion, std::function<void(Scene)> openScene,
                         std::function<void()> quit)
    : m_library(library),
      m_selection(selection),
      m_expansion(expansion),
      m_openScene(std::move(openScene)),
      m_quit(std::move(quit)) {
  connect(&library, &Library::snippetsChanged, this, &MenuBarView::showWhatHolds);
  for (const auto signal :
       {&ExpansionService::isPausedChanged, &ExpansionService::hasAccessibilityPermissionChanged,
        &ExpansionService::secureInputAppNameChanged, &ExpansionService::takenHotKeyChanged}) {
    connect(&expansion, signal, this, &MenuBarView::showWhatHolds);
  }
  new QuietEntries(*this);
  for (const MenuEntry& entry : menuEntries(menuCircumstancesOf(library, expansion)))
    makeRow(entry);
  followOpening();
  showWhatHolds();
  QCoreApplication::instance()->installEventFilter(this);
}

// A shortcut works where the widget that has its action is to be seen, and the menu is not.
bool MenuBarView::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::Show || !watched->isWidgetType()) return false;
  auto* const widget = static_cast<QWidget*>(watched);
  const bool isPopup = widget->windowType() == Qt::Popup || widget->windowType() == Qt::ToolTip;
  if (widget->isWindow() && !isPopup) widget->addActions(actions());
  return false;
}

// The toolkit leaves the keys in an open menu to the menu.
void MenuBarView::keyPressEvent(QKeyEvent* event) {
  const QKeySequence pressed(event->keyCombination());
  for (const Row& row : m_rows) {
    if (row.entry->shortcut() == pressed && row.entry->isEnabled()) return row.entry->trigger();
  }
  QMenu::keyPressEvent(event);
}

// The actions stay for good: a panel that draws the menu itself tells of a click by its entry, and
// may do so after it has told that the menu has closed.
void MenuBarView::makeRow(const MenuEntry& entry) {
  const QIcon icon = entry.symbol ? symbolIcon(*entry.symbol) : QIcon();
  QAction* const action = addAction(icon, QString());
  action->setShortcut(entry.shortcut);
  action->setAutoRepeat(false);
  action->setEnabled(entry.action != MenuAction::none);
  connect(action, &QAction::triggered, this, [this, todo = entry.action] {
    close();  // as after a click, where it was a shortcut
    perform(todo);
  });
  m_rows.push_back({action, entry.hasDividerBehind ? addSeparator() : nullptr});
}

// A panel may not tell of the end: then the menu is as it should be when it opens the next time.
void MenuBarView::followOpening() {
  connect(this, &QMenu::aboutToShow, this, [this] {
    m_isOpen = false;
    showWhatHolds();
    m_isOpen = true;
  });
  connect(this, &QMenu::aboutToHide, this, [this] {
    m_isOpen = false;
    showWhatHolds();
  });
}

void MenuBarView::showWhatHolds() {
  if (m_isOpen) return;
  const QList<MenuEntry> entries = menuEntries(menuCircumstancesOf(m_library, m_expansion));
  for (std::size_t i = 0; i < m_rows.size(); ++i) {
    const MenuEntry& entry = entries[static_cast<qsizetype>(i)];
    m_rows[i].entry->setText(literal(entry.text));
    m_rows[i].entry->setVisible(entry.isVisible);
    if (m_rows[i].divider) m_rows[i].divider->setVisible(entry.isVisible);
  }
}

void MenuBarView::perform(MenuAction action) {
  switch (action) {
    case MenuAction::none:
      break;
    case MenuAction::openPermissionRequest:
      return m_openScene(Scene::permissionRequest);
    case MenuAction::openManageSnippets:
      return m_openScene(Scene::manageSnippets);
    case MenuAction::addNewSnippet:
      m_selection.setPendingNewSnippet(true);
      return m_openScene(Scene::manageSnippets);
    case MenuAction::openSettings:
      return m_openScene(Scene::settings);
    case MenuAction::openStatistics:
      return m_openScene(Scene::statistics);
    case MenuAction::togglePause:
      return m_expansion.togglePause();
    case MenuAction::quit:
      return m_quit();
  }
}

}  // namespace zarvy
