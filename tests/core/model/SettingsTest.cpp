#include <gtest/gtest.h>

#include "core/model/RecordJson.h"
#include "core/model/Settings.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

TEST(Settings, BeginWithTheDefaults) {
  const Settings settings;
  EXPECT_TRUE(settings.soundEnabled);
  EXPECT_FALSE(settings.iCloudSyncEnabled);
  EXPECT_FALSE(settings.launchAtLogin);
  EXPECT_FALSE(settings.hideDockIcon);
  EXPECT_EQ(settings.quickSearchKeyCode, 49);
  EXPECT_EQ(settings.quickSearchModifiers, 524288U);
}

TEST(Settings, AreWrittenWithEveryField) {
  EXPECT_EQ(writeJson(Settings().toJson()), QByteArray("{\n"
                                                       "  \"hideDockIcon\" : false,\n"
                                                       "  \"iCloudSyncEnabled\" : false,\n"
                                                       "  \"launchAtLogin\" : false,\n"
                                                       "  \"quickSearchKeyCode\" : 49,\n"
                                                       "  \"quickSearchModifiers\" : 524288,\n"
                                                       "  \"soundEnabled\" : true\n"
                                                       "}"));
}

TEST(Settings, KeepEveryModifierMask) {
  for (const QByteArray mask : {"9223372036854775808", "9223372036854775809",
                                "18446744073709551614", "18446744073709551615"}) {
    const auto text = parseJson(
        "{\"soundEnabled\":false,\"iCloudSyncEnabled\":true,\"launchAtLogin\":true,"
        "\"hideDockIcon\":true,\"quickSearchModifiers\":" +
        mask + "}");
    ASSERT_TRUE(text);
    const auto read = Settings::fromJson(text.value());
    ASSERT_TRUE(read) << read.error().description().toStdString();
    EXPECT_EQ(read.value().quickSearchModifiers, mask.toULongLong());
    EXPECT_TRUE(writeJson(read.value().toJson()).contains(": " + mask + ','));
  }
}

TEST(Settings, ReadBackWhatWasWritten) {
  Settings settings;
  settings.soundEnabled = false;
  settings.iCloudSyncEnabled = true;
  settings.launchAtLogin = true;
  settings.hideDockIcon = true;
  settings.quickSearchKeyCode = 65535;
  settings.quickSearchModifiers = 9007199254740993;
  const auto text = parseJson(writeJson(settings.toJson()));
  ASSERT_TRUE(text);
  const auto read = Settings::fromJson(text.value());
  ASSERT_TRUE(read);
  EXPECT_EQ(read.value().toJson(), settings.toJson());
  EXPECT_EQ(read.value().quickSearchModifiers, 9007199254740993U);
}

TEST(Settings, OfTheFourBooleansAloneHaveTheDefaultHotKey) {
  const auto text = parseJson(
      "{\"soundEnabled\":false,\"iCloudSyncEnabled\":true,\"launchAtLogin\":true,"
      "\"hideDockIcon\":true}");
  ASSERT_TRUE(text);
  const auto read = Settings::fromJson(text.value());
  ASSERT_TRUE(read);
  EXPECT_FALSE(read.value().soundEnabled);
  EXPECT_TRUE(read.value().iCloudSyncEnabled);
  EXPECT_TRUE(read.value().launchAtLogin);
  EXPECT_TRUE(read.value().hideDockIcon);
  EXPECT_EQ(read.value().quickSearchKeyCode, 49);
  EXPECT_EQ(read.value().quickSearchModifiers, 524288U);
}

TEST(Settings, ReadEachKeyAsItsTypeOrNotAtAll) {
  const QJsonObject complete = Settings().toJson();
  for (const QString& key :
       {u"soundEnabled"_s, u"iCloudSyncEnabled"_s, u"launchAtLogin"_s, u"hideDockIcon"_s}) {
    expectDecoding<Settings>(complete, {key, QJsonValue::Undefined, false});
    expectDecoding<Settings>(complete, {key, QJsonValue::Null, false});
    expectDecoding<Settings>(complete, {key, 1, false});
    expectDecoding<Settings>(complete, {key, true, true});
  }
  for (const QString& key : {u"quickSearchKeyCode"_s, u"quickSearchModifiers"_s}) {
    expectDecoding<Settings>(complete, {key, QJsonValue::Undefined, true});
    expectDecoding<Settings>(complete, {key, QJsonValue::Null, true});
    expectDecoding<Settings>(complete, {key, u"1"_s, false});
    expectDecoding<Settings>(complete, {key, true, false});
    expectDecoding<Settings>(complete, {key, -1, false});
    expectDecoding<Settings>(complete, {key, 1.5, false});
    expectDecoding<Settings>(complete, {key, 1e20, false});
    expectDecoding<Settings>(complete, {key, 65535, true});
  }
  expectDecoding<Settings>(complete, {u"quickSearchKeyCode"_s, 65536, false});
  expectDecoding<Settings>(complete, {u"quickSearchModifiers"_s, 65536, true});
}

}  // namespace
}  // namespace zarvy
