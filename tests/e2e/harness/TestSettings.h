#pragma once

#include <optional>
#include <string>

namespace zarvy::e2e {

// What the tests choose of the settings that the program under test is started with.
struct TestSettings {
  bool hideDockIcon = false;
  bool iCloudSyncEnabled = false;
  bool soundEnabled = false;
  std::optional<unsigned> quickSearchModifiers = {};  // the program's own where absent
};

// The program's document of settings.
[[nodiscard]] std::string settingsDocument(const TestSettings& settings);

}  // namespace zarvy::e2e
