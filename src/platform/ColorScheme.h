#pragma once

namespace zarvy {

// What the user has told the desktop to show windows in.
enum class ColorScheme { unstated, dark, light };

}  // namespace zarvy
