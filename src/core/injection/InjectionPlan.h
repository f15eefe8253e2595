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

struct InjectionPlan {
  InjectionActions deletion;
  InjectionActions typing;
};

// What an injection does once its target is in front. First the deletion: `backspaceCount`
// backspaces. Then the typing: the text with a Return for each line feed, and left arrows that put
// the caret `cursorOffset` characters before the end; a control character that is not typed takes
// none. A text run is cut purely by its count of UTF-16 units, also within a surrogate pair. A
// negative `backspaceCount` is a programming error and ends the process. Pure; any thread.
[[nodiscard]] InjectionPlan planInjection(const QString& text, qsizetype backspaceCount,
                                          std::optional<qsizetype> cursorOffset);

// `count` backspaces, and `text` with a Return for each line feed. Pure; any thread.
[[nodiscard]] InjectionActions planBackspaces(qsizetype count);
[[nodiscard]] InjectionActions planText(const QString& text);

}  // namespace zarvy
