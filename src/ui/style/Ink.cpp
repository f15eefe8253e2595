#include "ui/style/Ink.h"

namespace zarvy {
namespace {

QColor textInk(TextColor color, const QPalette& palette, const QColor& background) {
  switch (color) {
    case TextColor::secondary:
      return secondaryColor(palette, background);
    case TextColor::tertiary:
      return tertiaryColor(palette, background);
    case TextColor::accent:
      return accentColor(palette, background);
    case TextColor::primary:
      break;
  }
  return activeColor(palette, QPalette::WindowText);
}

}  // namespace

QColor inkOn(const Ink& ink, const QPalette& palette, const QColor& background, double contrast) {
  if (const auto* const level = std::get_if<TextColor>(&ink)) {
    return textInk(*level, palette, background);
  }
  const QColor color = systemColor(std::get<SystemColor>(ink), palette);
  return legible(color, background, activeColor(palette, QPalette::Text), contrast);
}

}  // namespace zarvy
