#pragma once

#include <QFont>
#include <QSize>
#include <QString>

#include "ui/style/SystemColors.h"

class QPainter;
class QRect;
class QRectF;

namespace zarvy {

// The name of a folder on a faint ground of its colour, as a row of a list shows it.
struct FolderLabel {
  QString name;
  SystemColor color = SystemColor::gray;

  // Beside a text in `font`.
  [[nodiscard]] QSize sizeHint(const QFont& font) const;

  // Into `area`, which lies on `ground`. A name that has no room is cut short.
  void draw(QPainter& painter, const QRect& area, const QFont& font, const QPalette& palette,
            const QColor& ground) const;
};

// A round spot of a folder's colour that fills `area`.
void drawColorDot(QPainter& painter, const QRectF& area, SystemColor color,
                  const QPalette& palette);

}  // namespace zarvy
