#pragma once

#include <array>

#include <QPalette>

namespace zarvy {

// The colours of a desktop as its programs are given them by Qt 6.4.
struct RealPalette {
  const char* name = "";
  QRgb window = 0;
  QRgb windowText = 0;
  QRgb base = 0;
  QRgb text = 0;
  QRgb button = 0;
  QRgb buttonText = 0;
  QRgb highlight = 0;
  QRgb highlightedText = 0;
  QRgb placeholder = 0;  // with its opacity
  QRgb disabledText = 0;
};

inline constexpr std::array realPalettes{
    RealPalette{"KDE Breeze", 0xFFEFF0F1, 0xFF232629, 0xFFFFFFFF, 0xFF232629, 0xFFFCFCFC,
                0xFF232629, 0xFF3DAEE9, 0xFFFFFFFF, 0x80000000, 0xFF7E7E7E},
    // A placeholder keeps the colour of a light desktop there.
    RealPalette{"KDE Breeze Dark", 0xFF2A2E32, 0xFFFCFCFC, 0xFF1B1E20, 0xFFFCFCFC, 0xFF31363B,
                0xFFFCFCFC, 0xFF3DAEE9, 0xFFFCFCFC, 0x80000000, 0xFF626C76},
    RealPalette{"Fusion", 0xFFEFEFEF, 0xFF000000, 0xFFFFFFFF, 0xFF000000, 0xFFEFEFEF, 0xFF000000,
                0xFF308CC6, 0xFFFFFFFF, 0x80000000, 0xFFBEBEBE},
    RealPalette{"Fusion dark", 0xFF323232, 0xFFF0F0F0, 0xFF242424, 0xFFF0F0F0, 0xFF323232,
                0xFFF0F0F0, 0xFF308CC6, 0xFFF0F0F0, 0x80F0F0F0, 0xFF828282},
    RealPalette{"Adwaita", 0xFFF6F5F4, 0xFF2E3436, 0xFFFFFFFF, 0xFF000000, 0xFFF6F5F4, 0xFF2E3436,
                0xFF3584E4, 0xFFFFFFFF, 0x80000000, 0xFF8B8E8F},
    RealPalette{"Adwaita dark", 0xFF353535, 0xFFEEEEEC, 0xFF2D2D2D, 0xFFFFFFFF, 0xFF353535,
                0xFFEEEEEC, 0xFF15539E, 0xFFFFFFFF, 0x80FFFFFF, 0xFF919190},
    RealPalette{"High contrast", 0xFFFFFFFF, 0xFF000000, 0xFFFFFFFF, 0xFF000000, 0xFFFFFFFF,
                0xFF000000, 0xFF000000, 0xFFFFFFFF, 0x80000000, 0xFF888888},
    RealPalette{"High contrast inverse", 0xFF000000, 0xFFFFFFFF, 0xFF000000, 0xFFFFFFFF, 0xFF000000,
                0xFFFFFFFF, 0xFFFFFFFF, 0xFF000000, 0x80FFFFFF, 0xFF777777},
};

[[nodiscard]] inline QPalette paletteOf(const RealPalette& colors) {
  QPalette palette(QColor::fromRgb(colors.button), QColor::fromRgb(colors.window));
  const auto set = [&palette](QPalette::ColorRole role, QRgb color) {
    palette.setColor(role, QColor::fromRgba(color));
  };
  set(QPalette::WindowText, colors.windowText);
  set(QPalette::Base, colors.base);
  set(QPalette::Text, colors.text);
  set(QPalette::ButtonText, colors.buttonText);
  set(QPalette::Highlight, colors.highlight);
  set(QPalette::HighlightedText, colors.highlightedText);
  set(QPalette::PlaceholderText, colors.placeholder);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(QPalette::Disabled, role, QColor::fromRgb(colors.disabledText));
  }
  return palette;
}

}  // namespace zarvy
