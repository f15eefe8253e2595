#include "ui/TrayIcon.h"

#include <QGuiApplication>
#include <QIcon>
#include <QMenu>
#include <QScreen>

#include "app/expansion/ExpansionService.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

namespace {

QString fileOf(MenuBarSymbol symbol) {
  switch (symbol) {
    case MenuBarSymbol::permissionMissing:
      return u":/icons/permission-missing.svg"_s;
    case MenuBarSymbol::blocked:
      return u":/icons/blocked.svg"_s;
    case MenuBarSymbol::listening:
      return u":/icons/listening.svg"_s;
    case MenuBarSymbol::paused:
      break;
  }
  return u":/icons/paused.svg"_s;
}

QString toolTipOf(const MenuCircumstances& circumstances) {
  switch (menuBarSymbol(circumstances)) {
    case MenuBarSymbol::permissionMissing:
      return u"Zarvy: setup required"_s;
    case MenuBarSymbol::blocked:
      return u"Zarvy: blocked by "_s + circumstances.secureInputAppName.value_or(QString());
    case MenuBarSymbol::listening:
      return u"Zarvy"_s;
    case MenuBarSymbol::paused:
      break;
  }
  return u"Zarvy: paused"_s;
}

// Where a menu of that size leaves the icon to be seen; at the pointer where the desktop does not
// tell the icon's place. A panel has its menus on the side of the screen's middle.
QPoint placeBeside(const QRect& icon, const QSize& menu) {
  const QScreen* const screen = QGuiApplication::screenAt(icon.center());
  if (icon.isEmpty() || !screen) return QCursor::pos();
  const bool isAtTop = icon.center().y() < screen->geometry().center().y();
  return {icon.left(), isAtTop ? icon.bottom() + 1 : icon.top() - menu.height()};
}

}  // namespace

TrayIcon::TrayIcon(const Library& library, const ExpansionService& expansion, QMenu& menu)
    : m_library(library), m_expansion(expansion) {
  m_icon.setContextMenu(&menu);
  connect(&m_icon, &QSystemTrayIcon::activated, this,
          [this, &menu](QSystemTrayIcon::ActivationReason reason) {
            // Two clicks in quick succession are told as one and then a double one.
            const bool isClick =
                reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::DoubleClick;
            if (isClick) menu.popup(placeBeside(m_icon.geometry(), menu.sizeHint()));
          });
  for (const auto signal :
       {&ExpansionService::isPausedChanged, &ExpansionService::hasAccessibilityPermissionChanged,
        &ExpansionService::secureInputAppNameChanged}) {
    connect(&expansion, signal, this, &TrayIcon::update);
  }
  update();
}

// A tray that comes later takes the icon in. Where there is no display at all, Qt only complains.
void TrayIcon::show() {
  if (QGuiApplication::platformName() != u"offscreen") m_icon.show();
}

void TrayIcon::update() {
  const MenuCircumstances circumstances = menuCircumstancesOf(m_library, m_expansion);
  m_icon.setIcon(QIcon(fileOf(menuBarSymbol(circumstances))));
  m_icon.setToolTip(toolTipOf(circumstances));
}

}  // namespace zarvy
