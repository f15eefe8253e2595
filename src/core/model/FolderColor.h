#pragma once

#include <array>
#include <optional>

#include <QHashFunctions>
#include <QString>

namespace zarvy {

// The colours that a folder can have. The order is that of every colour picker.
enum class FolderColor { red, orange, yellow, green, blue, purple, pink, gray };

inline constexpr std::array allFolderColors{
    FolderColor::red,  FolderColor::orange, FolderColor::yellow, FolderColor::green,
    FolderColor::blue, FolderColor::purple, FolderColor::pink,   FolderColor::gray,
};

// The name under which the colour is stored, such as "red".
[[nodiscard]] QString rawText(FolderColor color);

// Absent for any text but the eight raw texts, letter for letter.
[[nodiscard]] std::optional<FolderColor> folderColorFromRawText(QStringView text);

// That of the raw text.
[[nodiscard]] size_t qHash(FolderColor color, size_t seed = 0) noexcept;

enum class TextShade { white, black };

// What text laid over a badge of `color` is written in; an absent colour stands for any colour
// outside the list.
[[nodiscard]] TextShade contrastingTextColor(std::optional<FolderColor> color);

}  // namespace zarvy

template <>
struct std::hash<zarvy::FolderColor> {
  std::size_t operator()(zarvy::FolderColor color) const noexcept { return qHash(color); }
};
