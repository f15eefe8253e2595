#include "e2e/harness/Environment.h"

#include <cstdlib>
#include <filesystem>
#include <sys/stat.h>

namespace zarvy::e2e {

Environment environmentWithHome(const std::string& home) {
  const std::string runtime = home + "/run";
  std::filesystem::create_directories(runtime);
  ::chmod(runtime.c_str(), S_IRWXU);
  const char* path = std::getenv("PATH");
  return {
      {"PATH", path != nullptr ? path : "/usr/bin:/bin"},
      {"LANG", "C.UTF-8"},
      {"LC_ALL", "C.UTF-8"},
      {"HOME", home},
      {"XDG_CONFIG_HOME", home + "/.config"},
      {"XDG_DATA_HOME", home + "/.local/share"},
      {"XDG_CACHE_HOME", home + "/.cache"},
      {"XDG_RUNTIME_DIR", runtime},
      {"GSETTINGS_BACKEND", "memory"},
      {"QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1"},
      {"QT_QPA_PLATFORM", "xcb"},
  };
}

}  // namespace zarvy::e2e
