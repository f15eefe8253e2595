#pragma once

#include <cstdlib>
#include <string>

namespace zarvy::e2e {

// The built program, unless ZARVY_PROGRAM in the environment names another; empty where there is
// neither.
[[nodiscard]] inline std::string programPath() {
  if (const char* path = std::getenv("ZARVY_PROGRAM"); path != nullptr) return path;
#ifdef ZARVY_E2E_PROGRAM
  return ZARVY_E2E_PROGRAM;
#else
  return {};
#endif
}

}  // namespace zarvy::e2e
