#pragma once

#include <QString>

namespace zarvy {

// What the system says of an error, given as errno has it: in the user's language, but for the most
// usual ones, which stand in English in the same lines as those that QFile gives. Any thread.
[[nodiscard]] QString textOfError(int error);

}  // namespace zarvy
