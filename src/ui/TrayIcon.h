#pragma once

#include <QObject>
#include <QSystemTrayIcon>

#include "ui/MenuEntries.h"

class QMenu;

namespace zarvy {

class AppState;

// The program's place in the tray: an icon that shows the state of expansion, and the menu. Where
// the desktop has no tray, nothing is to be seen.
class TrayIcon final : public QObject {
  Q_OBJECT

 public:
  // `state` and `menu` outlive this object.
  TrayIcon(AppState& state, QMenu& menu);

  void show();

 private:
  void update();

  AppState& m_state;
  QSystemTrayIcon m_icon;
};

}  // namespace zarvy
