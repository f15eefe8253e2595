#include "typing/Expansion.h"

#include <algorithm>
#include <stdexcept>

namespace zarvy::benchmarks {

namespace {

constexpr auto patience = std::chrono::seconds(30);

// The program's part of a record begins at the first backspace: the person presses none.
KeyRecord::const_iterator programsFirst(const KeyRecord& record, std::uint8_t backspace) {
  return std::find_if(record.begin(), record.end(),
                      [&](const KeyDown& key) { return key.keycode == backspace; });
}

}  // namespace

ExpansionTimes measureExpansion(e2e::Stage& stage, KeyObserver& observer,
                                const e2e::TestSnippet& snippet, e2e::Body body) {
  stage.target().clear();
  observer.forget();
  stage.person().type(snippet.trigger, {.body = body});
  const auto keys = snippet.trigger.size() + snippet.replacement.size();
  const KeyRecord record = observer.waitFor([&](const KeyRecord& soFar) {
    return soFar.end() - programsFirst(soFar, observer.backspaceKey()) >= keys;
  });
  const e2e::EditorState wanted{.text = snippet.replacement, .caret = snippet.replacement.size()};
  if (!stage.target().waitForState(wanted, patience)) {
    throw std::runtime_error("the target does not hold what was to be typed");
  }
  const auto first = programsFirst(record, observer.backspaceKey());
  if (first == record.begin()) throw std::runtime_error("no key of the trigger was seen");
  return {.reaction = first->arrival - std::prev(first)->arrival,
          .posting = record.back().arrival - first->arrival};
}

Milliseconds pausesOf(const e2e::TestSnippet& snippet) {
  constexpr Milliseconds afterBackspace(2);
  constexpr Milliseconds beforeText(10);
  constexpr Milliseconds afterChunk(1);
  constexpr qsizetype unitsOfChunk = 20;
  const qsizetype chunks = (snippet.replacement.size() + unitsOfChunk - 1) / unitsOfChunk;
  const auto backspaces = static_cast<double>(snippet.trigger.size());
  // No key comes behind the last chunk's pause.
  return afterBackspace * backspaces + beforeText + afterChunk * static_cast<double>(chunks - 1);
}

}  // namespace zarvy::benchmarks
