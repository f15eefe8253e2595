#include "e2e/harness/TestSettings.h"

namespace zarvy::e2e {

namespace {

std::string member(const std::string& name, bool value) {
  return "  \"" + name + "\" : " + (value ? "true" : "false");
}

}  // namespace

std::string settingsDocument(const TestSettings& settings) {
  std::string document = "{\n" + member("hideDockIcon", settings.hideDockIcon) + ",\n" +
                         member("iCloudSyncEnabled", settings.iCloudSyncEnabled) + ",\n" +
                         member("launchAtLogin", false) + ",\n";
  if (settings.quickSearchModifiers) {
    document +=
        "  \"quickSearchModifiers\" : " + std::to_string(*settings.quickSearchModifiers) + ",\n";
  }
  return document + member("soundEnabled", settings.soundEnabled) + "\n}";
}

}  // namespace zarvy::e2e
