#include "ui/style/LegiblePalette.h"

#include "ui/style/Tones.h"

namespace zarvy {
namespace {

// On an input as well as on a window.
QColor placeholderColor(const QPalette& desktop) {
  const QColor text = activeColor(desktop, QPalette::Text);
  const QColor onInput = tertiaryColor(desktop, activeColor(desktop, QPalette::Base));
  return legible(onInput, activeColor(desktop, QPalette::Window), text);
}

// Moved away from its text, which is what a desktop has that cannot be read: white on its accent.
QColor selectionColor(const QPalette& desktop) {
  const QColor text = activeColor(desktop, QPalette::HighlightedText);
  const bool isLightText = contrastBetween(Qt::black, text) > contrastBetween(Qt::white, text);
  return legible(activeColor(desktop, QPalette::Highlight), text,
                 isLightText ? Qt::black : Qt::white);
}

}  // namespace

QPalette legibleRoles(const QPalette& desktop) {
  QPalette mended;
  for (const auto group : {QPalette::Active, QPalette::Inactive}) {
    mended.setColor(group, QPalette::PlaceholderText, placeholderColor(desktop));
    mended.setColor(group, QPalette::Highlight, selectionColor(desktop));
    mended.setColor(group, QPalette::HighlightedText,
                    activeColor(desktop, QPalette::HighlightedText));
  }
  return mended;
}

}  // namespace zarvy
