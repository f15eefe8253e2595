#include "core/model/Settings.h"

#include "base/json/JsonRecord.h"

namespace zarvy {
namespace {

constexpr std::tuple settingsFields{
    jsonField(u"soundEnabled", &Settings::soundEnabled),
    jsonField(u"iCloudSyncEnabled", &Settings::iCloudSyncEnabled),
    jsonField(u"launchAtLogin", &Settings::launchAtLogin),
    jsonField(u"hideDockIcon", &Settings::hideDockIcon),
    jsonFieldWithDefault(u"quickSearchKeyCode", &Settings::quickSearchKeyCode),
    jsonFieldWithDefault(u"quickSearchModifiers", &Settings::quickSearchModifiers),
};

}  // namespace

JsonResult<Settings> Settings::fromJson(const QJsonValue& value) {
  return recordFromJson<Settings>(value, settingsFields);
}

QJsonObject Settings::toJson() const {
  return recordToJson(*this, settingsFields);
}

}  // namespace zarvy
