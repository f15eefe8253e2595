#pragma once

#include <vector>

#include <QColor>
#include <QImage>
#include <QString>

class QWidget;

namespace zarvy {

// A text as it was drawn.
struct PaintedText {
  QString text;
  QColor color;

  // The least contrast with any colour that a good part of its ground had when it was drawn: a
  // selection draws its own ground and text over those of before.
  double contrast = 0;
};

// All that a window shows, taken apart into its texts and the picture without them.
struct PaintedWindow {
  QImage ground;
  std::vector<PaintedText> texts;
};

// `window` is laid out, and need not be on the screen.
[[nodiscard]] PaintedWindow paintedWindow(QWidget& window);

}  // namespace zarvy
