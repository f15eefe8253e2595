#pragma once

#include <QIcon>

#include "ui/style/Ink.h"
#include "ui/symbols/Symbol.h"

namespace zarvy {

// `symbol` for a button, an entry of a menu and whatever else of Qt's takes an icon. It follows the
// palette of the desktop, and is faint where it is disabled.
[[nodiscard]] QIcon symbolIcon(Symbol symbol, const Ink& ink = TextColor::primary);

// In `color` alone, for a button that has a text of that colour.
[[nodiscard]] QIcon symbolIcon(Symbol symbol, const QColor& color);

}  // namespace zarvy
