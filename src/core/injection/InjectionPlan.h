#pragma once

#include <chrono>
#include <optional>
#include <variant>
#include <vector>

#include <QString>

namespace zarvy {

namespace injection {

// Most UTF-16 units in one key event that carries text.
inline constexpr qsizetype maxChunkSize = 20;

// The pauses. They set the pace that every application can follow, and with it the throughput.
inline constexpr std::chrono::microseconds charDelay{1000};  // after a chunk, Return or left arrow
inline constexpr std::chrono::microseconds backspaceDelay{2000};          // after a backspace
inline constexpr std::chrono::microseconds phaseGap{10'000};              // between two phases
inline constexpr std::chrono::microseconds activationSettleTime{50'000};  // after an activation

}  // namespace injection

// A key pressed and released, by its virtual key code.
struct KeyPress {
  quint16 keyCode = 0;
  bool operator==(const KeyPress&) const = default;
};

// A key pressed and released that carries text: one to maxChunkSize units.
struct TextRun {
  QString text;
  bool operator==(const TextRun&) const = default;
};

struct Pause {
  std::chrono::microseconds duration{0};
  bool operator==(const Pause&) const = default;
};

using InjectionAction = std::variant<KeyPress, TextRun, Pause>;
using InjectionActions = std::vector<InjectionAction>;

// What an injection does once its target is in front: the deletion, the text, the caret, one behind
// the other. All of it is pure; any thread.

// `backspaceCount` backspaces, and the gap between the phases. A negative count is a programming
// error and ends the process.
[[nodiscard]] InjectionActions planDeletion(qsizetype backspaceCount);

// `count` backspaces alone.
[[nodiscard]] InjectionActions planBackspaces(qsizetype count);

// `text` with a Return for each line feed. A text run is cut purely by its count of UTF-16 units,
// also within a surrogate pair.
[[nodiscard]] InjectionActions planText(QStringView text);

// How much of the beginning of `text` can be planned by itself: the plans of that piece and of the
// rest, one behind the other, are the plan of the whole. No more than 20,000 units, so that a text
// of any length takes little memory, and none at all once it is not to be typed any more. 0 only
// for an empty text.
[[nodiscard]] qsizetype lengthOfPiece(QStringView text);

// The gap and left arrows that put the caret `cursorOffset` characters before the end of `text`; a
// control character that is not typed takes none. Empty where there is no arrow to press.
[[nodiscard]] InjectionActions planCaret(QStringView text, std::optional<qsizetype> cursorOffset);

}  // namespace zarvy
