#pragma once

#include <QObject>
#include <QSystemTrayIcon>

#include "ui/MenuEntries.h"

class QMenu;

namespace zarvy {

class ExpansionService;
class Library;

// The program's place in the tray: an icon that shows the state of expansion, and the menu. Where
// the desktop has no tray, nothing is to be seen.
class TrayIcon final : public QObject {
  Q_OBJECT

 public:
  // All of it outlives this object.
  TrayIcon(const Library& library, const ExpansionService& expansion, QMenu& menu);

  void show();

 private:
  void update();

  const Library& m_library;
  const ExpansionService& m_expansion;
  QSystemTrayIcon m_icon;
};

}  // namespace zarvy
