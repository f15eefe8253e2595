#pragma once

#include "core/model/ExpansionEvent.h"

namespace zarvy {

// What an expansion spared its user.

// Characters that did not have to be typed; 0 where the trigger is longer than the text. Ends the
// process where that does not fit into 64 bits.
[[nodiscard]] qint64 charactersSaved(const ExpansionEvent& event);

// At an assumed typing speed of 3.33 characters a second.
[[nodiscard]] double secondsSaved(qint64 characters);

}  // namespace zarvy
