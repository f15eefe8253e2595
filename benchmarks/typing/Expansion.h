#pragma once

#include <QString>

#include "e2e/harness/Stage.h"
#include "typing/KeyObserver.h"
#include "typing/Statistics.h"

namespace zarvy::benchmarks {

// How long one expansion took, as a client of the display saw it.
struct ExpansionTimes {
  Milliseconds reaction{};  // from the trigger's last key to the first one of the program's
  Milliseconds posting{};   // from the program's first key to its last
};

// Has the person type the trigger into the emptied target, and returns when the target holds the
// replacement, of which each character is to be one key, and nothing else. Throws
// std::runtime_error where it does not come to that.
[[nodiscard]] ExpansionTimes measureExpansion(e2e::Stage& stage, KeyObserver& observer,
                                              const e2e::TestSnippet& snippet, e2e::Body body);

// The pauses that lie between the first and the last key of that expansion by design: what it takes
// if nothing but the pauses takes time.
[[nodiscard]] Milliseconds pausesOf(const e2e::TestSnippet& snippet);

}  // namespace zarvy::benchmarks
