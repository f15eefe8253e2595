#include "ui/screenshots/Photograph.h"

#include <algorithm>

#include <QApplication>
#include <QPixmap>
#include <QScreen>
#include <QTest>
#include <QWidget>
#include <QWindow>

#include "ui/screenshots/DesktopTheme.h"
#include "ui/screenshots/ScreenScene.h"

namespace zarvy {
namespace {

constexpr int margin = 16;  // of the desktop around the window, in logical pixels

QWidget* openWindow() {
  const QWidgetList windows = QApplication::topLevelWidgets();
  const auto found = std::find_if(windows.begin(), windows.end(), [](const QWidget* window) {
    return window->isVisible() && !window->testAttribute(Qt::WA_DontShowOnScreen);
  });
  return found == windows.end() ? nullptr : *found;
}

// What is on its way to the screen has arrived there.
void settle() {
  QApplication::processEvents();
  QGuiApplication::sync();
  QApplication::processEvents();
  QGuiApplication::sync();
}

}  // namespace

bool photograph(const QString& name, const QString& theme, const QString& path) {
  const QList<ScreenScene> scenes = screenScenes();
  const auto scene = std::find_if(scenes.begin(), scenes.end(),
                                  [&name](const ScreenScene& each) { return each.name == name; });
  if (scene == scenes.end()) return false;
  useDesktopFont();
  useDesktopColors(QStringLiteral("light"));
  const auto keptOpen = scene->open();
  QWidget* const window = openWindow();
  if (window == nullptr || !QTest::qWaitForWindowActive(window)) return false;
  scene->prepare();
  settle();
  useDesktopColors(theme);
  settle();
  // Qt may have asked for the frame before the window manager had given it its size.
  const QRect whole = window->frameGeometry().united(window->geometry());
  const QRect frame = whole.adjusted(-margin, -margin, margin, margin);
  const QPixmap picture =
      window->screen()->grabWindow(0, frame.x(), frame.y(), frame.width(), frame.height());
  return picture.save(path, "PNG");
}

}  // namespace zarvy
