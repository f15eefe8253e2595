#include "ui/style/Fonts.h"

#include <cmath>

#include <QFontDatabase>
#include <QStringList>

namespace zarvy {

QFont scaledFont(QFont font, double scale) {
  if (font.pixelSize() > 0) {
    font.setPixelSize(static_cast<int>(std::lround(font.pixelSize() * scale)));
  } else {
    font.setPointSizeF(font.pointSizeF() * scale);
  }
  return font;
}

QFont monospaced(QFont font) {
  font.setFamilies({QFontDatabase::systemFont(QFontDatabase::FixedFont).family()});
  font.setStyleHint(QFont::Monospace);
  return font;
}

QFont styledFont(const QFont& font, const TextStyle& style) {
  QFont styled = scaledFont(style.isMonospaced ? monospaced(font) : font, style.scale);
  styled.setWeight(style.weight);
  return styled;
}

}  // namespace zarvy
