#pragma once

#include <QFont>

namespace zarvy {

// A kind of text, in relation to the desktop's own.
struct TextStyle {
  double scale = 1;
  QFont::Weight weight = QFont::Normal;
  bool isMonospaced = false;
};

namespace lettering {

inline constexpr TextStyle title{1.3, QFont::DemiBold};            // of a window that explains
inline constexpr TextStyle heading{15.0 / 13.0, QFont::DemiBold};  // of a form
inline constexpr TextStyle headline{1, QFont::DemiBold};
inline constexpr TextStyle body{};
inline constexpr TextStyle emphasized{1, QFont::Medium};
inline constexpr TextStyle subheadline{0.92};
inline constexpr TextStyle caption{0.85};
inline constexpr TextStyle search{18.0 / 13.0};  // of a field that a window is about
inline constexpr TextStyle trigger{12.0 / 13.0, QFont::Normal, true};  // below a title
inline constexpr TextStyle badge{0.85, QFont::Medium, true};

}  // namespace lettering

// `font` in `scale` times its size, in whole pixels where it has such.
[[nodiscard]] QFont scaledFont(QFont font, double scale);

// `font` in the desktop's family of fixed width.
[[nodiscard]] QFont monospaced(QFont font);

[[nodiscard]] QFont styledFont(const QFont& font, const TextStyle& style);

}  // namespace zarvy
