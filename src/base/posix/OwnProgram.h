#pragma once

#include <QString>

namespace zarvy {

// The path of the program that this process runs, whatever it was called by. Any thread.
[[nodiscard]] QString pathOfOwnProgram();

}  // namespace zarvy
