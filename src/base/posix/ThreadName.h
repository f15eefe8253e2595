#pragma once

#include <string>

namespace zarvy {

// Gives the calling thread the name that debuggers and lists of threads show; the system keeps the
// first 15 bytes of it.
void nameThisThread(const std::string& name);

}  // namespace zarvy
