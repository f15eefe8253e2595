#pragma once

#include <QString>

#include "platform/HotKeys.h"

namespace zarvy {

// The words for a key and its modifiers, such as "Ctrl+Alt+Space". Pure.
[[nodiscard]] QString hotKeyText(const HotKey& key);

}  // namespace zarvy
