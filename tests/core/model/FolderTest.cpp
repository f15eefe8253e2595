#include <functional>
#include <limits>
#include <unordered_set>

#include <gtest/gtest.h>

#include "core/model/Folder.h"
#include "core/model/RecordJson.h"
#include "core/model/Snippet.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

Folder sample() {
  return {QUuid::fromString(u"{0a1b2c3d-4e5f-6789-abcd-ef0123456789}"), u"Email"_s,
          FolderColor::purple, 9007199254740993};
}

TEST(Folder, IsWrittenWithEveryField) {
  EXPECT_EQ(writeJson(sample().toJson()),
            QByteArray("{\n"
                       "  \"color\" : \"purple\",\n"
                       "  \"id\" : \"0A1B2C3D-4E5F-6789-ABCD-EF0123456789\",\n"
                       "  \"name\" : \"Email\",\n"
                       "  \"sortOrder\" : 9007199254740993\n"
                       "}"));
}

TEST(Folder, ReadsBackWhatWasWritten) {
  for (const qint64 sortOrder : {qint64{0}, qint64{-7}, std::numeric_limits<qint64>::max(),
                                 std::numeric_limits<qint64>::min()}) {
    for (const FolderColor color : allFolderColors) {
      Folder folder = sample();
      folder.color = color;
      folder.sortOrder = sortOrder;
      const auto text = parseJson(writeJson(folder.toJson()));
      ASSERT_TRUE(text);
      const auto read = Folder::fromJson(text.value());
      ASSERT_TRUE(read);
      EXPECT_EQ(read.value(), folder);
    }
  }
}

TEST(Folder, ReadsEachKeyAsItsTypeOrNotAtAll) {
  const QJsonObject complete = sample().toJson();
  const KeyCase table[] = {
      {u"id"_s, QJsonValue::Undefined, false},
      {u"id"_s, QJsonValue::Null, false},
      {u"id"_s, u"{0}"_s, false},
      {u"name"_s, QJsonValue::Undefined, false},
      {u"name"_s, QJsonValue::Null, false},
      {u"name"_s, 3, false},
      {u"name"_s, u""_s, true},
      {u"color"_s, QJsonValue::Undefined, false},
      {u"color"_s, QJsonValue::Null, false},
      {u"color"_s, u"teal"_s, false},
      {u"color"_s, u"Red"_s, false},
      {u"color"_s, 0, false},
      {u"color"_s, u"gray"_s, true},
      {u"sortOrder"_s, QJsonValue::Undefined, false},
      {u"sortOrder"_s, QJsonValue::Null, false},
      {u"sortOrder"_s, u"1"_s, false},
      {u"sortOrder"_s, 1.5, false},
      {u"sortOrder"_s, 1e19, false},
      {u"sortOrder"_s, -1, true},
      {u"unknown"_s, 1, true},
  };
  for (const KeyCase& keyCase : table) expectDecoding<Folder>(complete, keyCase);
}

TEST(Folder, DiffersWithAnyField) {
  const std::function<void(Folder&)> changes[] = {
      [](Folder& folder) { folder.id = QUuid(); },
      [](Folder& folder) { folder.name += u'x'; },
      [](Folder& folder) { folder.color = FolderColor::pink; },
      [](Folder& folder) { ++folder.sortOrder; },
  };
  std::unordered_set<Folder> known{sample()};
  EXPECT_EQ(known.count(sample()), 1U);
  for (const auto& change : changes) {
    Folder changed = sample();
    change(changed);
    EXPECT_NE(changed, sample());
    EXPECT_NE(qHash(changed), qHash(sample()));
    EXPECT_TRUE(known.insert(changed).second);
  }
}

TEST(Folder, GivesItsColourToItsSnippets) {
  Folder other = sample();
  other.id = QUuid::createUuid();
  other.color = FolderColor::red;
  const QList<Folder> folders{other, sample()};
  Snippet snippet;
  EXPECT_EQ(folderColorOf(snippet, folders), FolderColor::gray);
  snippet.folderID = sample().id;
  EXPECT_EQ(folderColorOf(snippet, folders), FolderColor::purple);
  snippet.folderID = QUuid::createUuid();
  EXPECT_EQ(folderColorOf(snippet, folders), FolderColor::gray);
}

}  // namespace
}  // namespace zarvy
