#include "core/model/Settings.h"

#include "base/json/JsonObjectReader.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

JsonResult<Settings> Settings::fromJson(const QJsonValue& value) {
  JsonObjectReader reader(value);
  Settings settings;
  settings.soundEnabled = reader.boolean(u"soundEnabled");
  settings.iCloudSyncEnabled = reader.boolean(u"iCloudSyncEnabled");
  settings.launchAtLogin = reader.boolean(u"launchAtLogin");
  settings.hideDockIcon = reader.boolean(u"hideDockIcon");
  settings.quickSearchKeyCode =
      reader.unsigned16(u"quickSearchKeyCode", settings.quickSearchKeyCode);
  settings.quickSearchModifiers =
      reader.unsigned64(u"quickSearchModifiers", settings.quickSearchModifiers);
  return reader.result(settings);
}

QJsonObject Settings::toJson() const {
  return {{u"soundEnabled"_s, soundEnabled},
          {u"iCloudSyncEnabled"_s, iCloudSyncEnabled},
          {u"launchAtLogin"_s, launchAtLogin},
          {u"hideDockIcon"_s, hideDockIcon},
          {u"quickSearchKeyCode"_s, quickSearchKeyCode},
          {u"quickSearchModifiers"_s, jsonNumber(quickSearchModifiers)}};
}

}  // namespace zarvy
