#include "ui/screenshots/DesktopTheme.h"

#include <QApplication>
#include <QFont>
#include <QIcon>
#include <QPalette>
#include <QStyleFactory>

namespace zarvy {
namespace {

struct Colors {
  QRgb window;
  QRgb text;
  QRgb base;
  QRgb alternate;
  QRgb button;
  QRgb accent;
};

constexpr Colors light{0xFFEFF0F1, 0xFF232629, 0xFFFFFFFF, 0xFFF7F7F7, 0xFFFCFCFC, 0xFF2980B9};
constexpr Colors dark{0xFF2A2E32, 0xFFFCFCFC, 0xFF1B1E20, 0xFF232629, 0xFF31363B, 0xFF3184BE};

QPalette paletteOf(const Colors& colors) {
  QPalette palette(QColor::fromRgba(colors.button), QColor::fromRgba(colors.window));
  const QColor text = QColor::fromRgba(colors.text);
  QColor faded = text;
  faded.setAlphaF(0.45F);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(role, text);
    palette.setColor(QPalette::Disabled, role, faded);
  }
  palette.setColor(QPalette::PlaceholderText, faded);
  palette.setColor(QPalette::Base, QColor::fromRgba(colors.base));
  palette.setColor(QPalette::AlternateBase, QColor::fromRgba(colors.alternate));
  palette.setColor(QPalette::Highlight, QColor::fromRgba(colors.accent));
  palette.setColor(QPalette::HighlightedText, Qt::white);
  return palette;
}

}  // namespace

QPalette desktopPalette(const QString& theme) {
  return paletteOf(theme == QStringLiteral("dark") ? dark : light);
}

void useDesktopFont() {
  QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
  QApplication::setFont(QFont(QStringLiteral("Noto Sans"), 10));
  QApplication::setCursorFlashTime(0);  // the caret is in every picture
  QIcon::setFallbackThemeName(QStringLiteral("breeze"));
}

void useDesktopColors(const QString& theme) {
  QApplication::setPalette(desktopPalette(theme));
  QIcon::setThemeName(theme == QStringLiteral("dark") ? QStringLiteral("breeze-dark")
                                                      : QStringLiteral("breeze"));
}

}  // namespace zarvy
