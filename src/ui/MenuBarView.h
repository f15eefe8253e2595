#pragma once

#include <functional>
#include <vector>

#include <QMenu>

#include "ui/MenuEntries.h"
#include "ui/Scenes.h"

namespace zarvy {

class ExpansionService;
class Library;
class LibrarySelection;

// The menu behind the tray icon. Follows the state as it changes, but for as long as it is open:
// nothing moves under the pointer then. Its shortcuts work in every window of the program and in
// the menu itself.
class MenuBarView final : public QMenu {
  Q_OBJECT

 public:
  // `openScene` brings the program forward and opens that window; `quit` ends the
  // program. The others outlive this object.
  MenuBarView(const Library& library, LibrarySelection& selection, ExpansionService& expansion,
              std::function<void(Scene)> openScene, std::function<void()> quit);

  bool eventFilter(QObject* watched, QEvent* event) override;

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  // An entry, and the line behind it where it has one.
  struct Row {
    QAction* entry;
    QAction* divider;
  };

  void makeRow(const MenuEntry& entry);
  void followOpening();
  void showWhatHolds();
  void perform(MenuAction action);

  const Library& m_library;
  LibrarySelection& m_selection;
  ExpansionService& m_expansion;
  const std::function<void(Scene)> m_openScene;
  const std::function<void()> m_quit;
  std::vector<Row> m_rows;
  bool m_isOpen = false;  // also where a panel draws the menu
};

}  // namespace zarvy
