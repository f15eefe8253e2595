#pragma once

#include <algorithm>
#include <cmath>

#include <QColor>
#include <QPalette>

// Colours that follow from those of the desktop, in a light and in a dark palette alike.
namespace zarvy {

// `amount` of `over` laid on `under`, from 0 to 1. Opaque.
[[nodiscard]] inline QColor blended(const QColor& under, const QColor& over, double amount) {
  const auto mix = [amount](float a, float b) {
    return static_cast<float>(a + (b - a) * static_cast<float>(amount));
  };
  return QColor::fromRgbF(mix(under.redF(), over.redF()), mix(under.greenF(), over.greenF()),
                          mix(under.blueF(), over.blueF()));
}

[[nodiscard]] inline QColor withOpacity(QColor color, double opacity) {
  color.setAlphaF(static_cast<float>(opacity));
  return color;
}

// As in the window that has the keyboard: what is kept must not depend on which one has it.
[[nodiscard]] inline QColor activeColor(const QPalette& palette, QPalette::ColorRole role) {
  return palette.color(QPalette::Active, role);
}

[[nodiscard]] inline bool isDark(const QPalette& palette) {
  const QColor window = activeColor(palette, QPalette::Window);
  return window.lightness() < activeColor(palette, QPalette::WindowText).lightness();
}

// Lines between areas and around boxes.
[[nodiscard]] inline QColor separatorColor(const QPalette& palette) {
  return withOpacity(activeColor(palette, QPalette::WindowText), 0.18);
}

// How far apart two colours are for the eye, from 1 to 21.
[[nodiscard]] inline double contrastBetween(const QColor& a, const QColor& b) {
  const auto linear = [](double part) {
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  const auto luminance = [linear](const QColor& color) {
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
  };
  const auto [darker, lighter] = std::minmax({luminance(a), luminance(b)});
  return (lighter + 0.05) / (darker + 0.05);
}

// What a small text wants of its contrast, and what a line or a mark does.
inline constexpr double textContrast = 4.5;
inline constexpr double lineContrast = 3;

// `color` as text on `background`: moved towards `text` only as far as it takes to be read.
[[nodiscard]] inline QColor legible(const QColor& color, const QColor& background,
                                    const QColor& text, double contrast = textContrast) {
  constexpr int steps = 20;
  for (int step = 0; step < steps; ++step) {
    const QColor candidate = blended(color, text, static_cast<double>(step) / steps);
    if (contrastBetween(candidate, background) >= contrast) return candidate;
  }
  return text;
}

// As text on `background`.
[[nodiscard]] inline QColor accentColor(const QPalette& palette, const QColor& background) {
  return legible(activeColor(palette, QPalette::Highlight), background,
                 activeColor(palette, QPalette::Text));
}

// Text on `background` that steps back behind the primary one, by `amount` of that.
[[nodiscard]] inline QColor fadedColor(const QPalette& palette, const QColor& background,
                                       double amount) {
  const QColor text = activeColor(palette, QPalette::WindowText);
  return legible(blended(background, text, amount), background, text);
}
[[nodiscard]] inline QColor secondaryColor(const QPalette& palette, const QColor& background) {
  return fadedColor(palette, background, 0.68);
}
[[nodiscard]] inline QColor tertiaryColor(const QPalette& palette, const QColor& background) {
  return fadedColor(palette, background, 0.58);
}

// The outline of a control, on a window as well as on an input.
[[nodiscard]] inline QColor visibleLine(const QPalette& palette, const QColor& line) {
  const QColor text = activeColor(palette, QPalette::WindowText);
  const QColor onWindow = legible(line, activeColor(palette, QPalette::Window), text, lineContrast);
  return legible(onWindow, activeColor(palette, QPalette::Base), text, lineContrast);
}
[[nodiscard]] inline QColor outlineColor(const QPalette& palette) {
  return visibleLine(palette, blended(activeColor(palette, QPalette::Window),
                                      activeColor(palette, QPalette::WindowText), 0.4));
}
[[nodiscard]] inline QColor focusColor(const QPalette& palette) {
  return visibleLine(palette, activeColor(palette, QPalette::Highlight));
}

}  // namespace zarvy
