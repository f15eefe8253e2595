#pragma once

#include <QList>
#include <QPoint>
#include <QRect>

class QScreen;

namespace zarvy {

class Workspace;

// Which of `screens` holds `place`, or else comes nearest to it; -1 where there are none. Pure.
[[nodiscard]] qsizetype screenNearest(const QList<QRect>& screens, const QPoint& place);

// The screen that the user is at: it holds the middle of the window in front, or, where no window
// is, the pointer. Main thread, with a QGuiApplication.
[[nodiscard]] QScreen& screenOfUser(const Workspace& workspace);

}  // namespace zarvy
