#pragma once

#include <variant>

#include <QColor>

#include "ui/style/SystemColors.h"
#include "ui/style/Tones.h"

namespace zarvy {

// The colours of text that follow from the desktop's: its own, what steps back behind that, once
// and twice, and the accent.
enum class TextColor { primary, secondary, tertiary, accent };

// What a text or a symbol is drawn in.
using Ink = std::variant<TextColor, SystemColor>;

// `ink` on `background`, moved towards the colour of text as far as `contrast` asks: textContrast
// for texts, lineContrast for symbols.
[[nodiscard]] QColor inkOn(const Ink& ink, const QPalette& palette, const QColor& background,
                           double contrast = textContrast);

}  // namespace zarvy
