#include "ui/window/UserScreen.h"

#include <algorithm>

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>

#include "platform/Workspace.h"

namespace zarvy {
namespace {

// In whole pixels; of points within it, 0.
int distanceTo(const QRect& screen, const QPoint& place) {
  const auto beyond = [](int low, int value, int high) {
    return std::max({low - value, value - high, 0});
  };
  return beyond(screen.left(), place.x(), screen.right()) +
         beyond(screen.top(), place.y(), screen.bottom());
}

// In pixels of the display: Qt scales the size of a screen, and leaves its place as it is.
QRect areaOf(const QScreen& screen) {
  return {screen.geometry().topLeft(),
          (QSizeF(screen.size()) * screen.devicePixelRatio()).toSize()};
}

}  // namespace

qsizetype screenNearest(const QList<QRect>& screens, const QPoint& place) {
  const auto nearest = std::min_element(screens.begin(), screens.end(),
                                        [&place](const QRect& one, const QRect& other) {
                                          return distanceTo(one, place) < distanceTo(other, place);
                                        });
  return nearest == screens.end() ? -1 : nearest - screens.begin();
}

QScreen& screenOfUser(const Workspace& workspace) {
  if (const auto window = workspace.frontmostWindowArea()) {
    QList<QRect> areas;
    const QList<QScreen*> screens = QGuiApplication::screens();
    for (const QScreen* screen : screens) areas.append(areaOf(*screen));
    return *screens.at(screenNearest(areas, window->center()));
  }
  QScreen* const underPointer = QGuiApplication::screenAt(QCursor::pos());
  return underPointer ? *underPointer : *QGuiApplication::primaryScreen();
}

}  // namespace zarvy
