#include <gtest/gtest.h>

#include "base/UtcZone.h"
#include "base/json/JsonText.h"
#include "storage/sync/SyncHarness.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

QUuid uuid(const char* text) {
  return QUuid::fromString(QLatin1String(text));
}

TEST(SyncedData, IsWrittenAsTheDocumentsAre) {
  const QDateTime date = QDateTime::fromMSecsSinceEpoch(1768987800750, utcZone);
  const SyncedData data{
      {{uuid("0a1b2c3d-4e5f-6789-abcd-ef0123456789"), u"T"_s, u";t"_s, u"a/b\n"_s,
        uuid("00000000-0000-0000-0000-000000000001"), date, date, true}},
      {{uuid("00000000-0000-0000-0000-000000000001"), u"Email"_s, FolderColor::blue, 0}},
      {},
      {date, u"DEVICE"_s, 9007199254740993}};
  EXPECT_EQ(writeJson(data.toJson()), R"({
  "folders" : [
    {
      "color" : "blue",
      "id" : "00000000-0000-0000-0000-000000000001",
      "name" : "Email",
      "sortOrder" : 0
    }
  ],
  "globalVariables" : [

  ],
  "metadata" : {
    "dataVersion" : 9007199254740993,
    "deviceID" : "DEVICE",
    "lastSyncDate" : "2026-01-21T09:30:00Z"
  },
  "snippets" : [
    {
      "createdAt" : "2026-01-21T09:30:00Z",
      "folderID" : "00000000-0000-0000-0000-000000000001",
      "id" : "0A1B2C3D-4E5F-6789-ABCD-EF0123456789",
      "isRegexTrigger" : true,
      "modifiedAt" : "2026-01-21T09:30:00Z",
      "replacement" : "a\/b\n",
      "title" : "T",
      "trigger" : ";t"
    }
  ]
})"_ba);
}

TEST(SyncedData, ReadsWhatItWrote) {
  const LocalLibrary library = LocalLibrary::of(u"w\u00F6rd \U0001F600"_s);
  const SyncedData data{library.snippets, library.folders, library.globalVariables,
                        SyncMetadata{ManualClock().now(), u"A"_s, 3}};
  const auto json = parseJson(writeJson(data.toJson()));
  ASSERT_TRUE(json.hasValue());
  const auto again = SyncedData::fromJson(json.value());
  ASSERT_TRUE(again.hasValue());
  EXPECT_EQ(again.value(), data);
}

}  // namespace
}  // namespace zarvy
