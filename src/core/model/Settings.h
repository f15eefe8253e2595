#pragma once

#include <QJsonObject>

#include "base/json/JsonResult.h"

namespace zarvy {

// The user's preferences. A default-made record is the one that stands where none was saved.
struct Settings {
  bool soundEnabled = true;
  bool iCloudSyncEnabled = false;
  bool launchAtLogin = false;
  bool hideDockIcon = false;
  quint16 quickSearchKeyCode = 49;         // a virtual key code; 49 is the Space bar
  quint64 quickSearchModifiers = 0x80000;  // a modifier mask; 0x80000 is Option

  [[nodiscard]] static JsonResult<Settings> fromJson(const QJsonValue& value);
  [[nodiscard]] QJsonObject toJson() const;
};

}  // namespace zarvy
