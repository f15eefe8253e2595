#include "ui/editor/PlaceholderSpans.h"

#include "core/placeholders/Openers.h"
#include "core/placeholders/PlaceholderScan.h"

namespace zarvy {
namespace {

constexpr QStringView variables[] = {opener::variable};
constexpr QStringView textFields[] = {opener::textField};
constexpr QStringView textAreas[] = {opener::textArea};
constexpr QStringView dropdowns[] = {opener::dropdown};
constexpr QStringView sections[] = {opener::section};
constexpr QStringView dates[] = {opener::date};
constexpr QStringView times[] = {opener::time};
constexpr QStringView letterCases[] = {opener::uppercase, opener::lowercase, opener::titlecase};
constexpr QStringView counters[] = {opener::counter};
constexpr QStringView snippets[] = {opener::snippet};
constexpr QStringView scripts[] = {opener::script};

// What begins with one of `openers`, and what is `literal`.
struct ColoredKind {
  std::span<const QStringView> openers;
  QStringView literal;
  SystemColor color;
};

// A later row overwrites an earlier one where they meet.
constexpr ColoredKind coloredKinds[] = {
    {variables, {}, SystemColor::teal},
    {textFields, {}, SystemColor::blue},
    {textAreas, {}, SystemColor::blue},
    {dropdowns, {}, SystemColor::purple},
    {sections, {}, SystemColor::pink},
    {{}, literal::sectionEnd, SystemColor::pink},
    {dates, {}, SystemColor::green},
    {times, literal::time, SystemColor::green},
    {{}, literal::clipboard, SystemColor::orange},
    {letterCases, {}, SystemColor::cyan},
    {counters, {}, SystemColor::yellow},
    {snippets, {}, SystemColor::indigo},
    {scripts, {}, SystemColor::red},
    {{}, literal::cursor, SystemColor::mint},
};

}  // namespace

std::vector<TextSpan> placeholderSpans(QStringView text) {
  std::vector<TextSpan> spans;
  if (!mayHoldPlaceholders(text)) return spans;
  for (const ColoredKind& kind : coloredKinds) {
    const SpanLook look{kind.color, kind.color};
    if (!kind.openers.empty()) {
      PlaceholderScan scan(text, {kind.openers});
      while (const auto placeholder = scan.next()) {
        const QStringView whole = placeholder->literal;
        spans.push_back({{whole.utf16() - text.utf16(), whole.size()}, look});
      }
    }
    if (kind.literal.isEmpty()) continue;
    for (qsizetype start = text.indexOf(kind.literal); start >= 0;
         start = text.indexOf(kind.literal, start + kind.literal.size())) {
      spans.push_back({{start, kind.literal.size()}, look});
    }
  }
  return spans;
}

}  // namespace zarvy
