#include <functional>
#include <unordered_set>

#include <QSet>

#include <gtest/gtest.h>

#include "base/UtcZone.h"
#include "core/model/RecordJson.h"
#include "core/model/Snippet.h"
#include "fakes/ManualClock.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

const QUuid someID = QUuid::fromString(u"{0a1b2c3d-4e5f-6789-abcd-ef0123456789}");
const QUuid someFolderID = QUuid::fromString(u"{11111111-2222-3333-4444-555555555555}");

Snippet sample() {
  return {.id = someID,
          .title = u"T"_s,
          .trigger = u";t"_s,
          .replacement = u"a/b\n{{cursor}}"_s,
          .folderID = someFolderID,
          .createdAt = QDateTime(QDate(2026, 1, 21), QTime(9, 30), utcZone),
          .modifiedAt = QDateTime(QDate(2026, 1, 22), QTime(9, 30), utcZone),
          .isRegexTrigger = true};
}

TEST(Snippet, IsMadeWithAFreshIdAndTwoReadingsOfTheClock) {
  const QDateTime start(QDate(2026, 1, 21), QTime(9, 30), utcZone);
  const ManualClock clock(start, std::chrono::seconds{1});
  const Snippet first = Snippet::create(u"T"_s, u";t"_s, u"r"_s, clock);
  EXPECT_FALSE(first.id.isNull());
  EXPECT_EQ(first.title, u"T"_s);
  EXPECT_EQ(first.trigger, u";t"_s);
  EXPECT_EQ(first.replacement, u"r"_s);
  EXPECT_EQ(first.folderID, std::nullopt);
  EXPECT_EQ(first.createdAt, start);
  EXPECT_EQ(first.modifiedAt, start.addSecs(1));
  EXPECT_FALSE(first.isRegexTrigger);
  const Snippet second = Snippet::create(u"T"_s, u";t"_s, u"r"_s, clock, someFolderID);
  EXPECT_NE(second.id, first.id);
  EXPECT_EQ(second.folderID, someFolderID);
}

TEST(Snippet, IsWrittenWithEveryField) {
  EXPECT_EQ(writeJson(sample().toJson()),
            QByteArray("{\n"
                       "  \"createdAt\" : \"2026-01-21T09:30:00Z\",\n"
                       "  \"folderID\" : \"11111111-2222-3333-4444-555555555555\",\n"
                       "  \"id\" : \"0A1B2C3D-4E5F-6789-ABCD-EF0123456789\",\n"
                       "  \"isRegexTrigger\" : true,\n"
                       "  \"modifiedAt\" : \"2026-01-22T09:30:00Z\",\n"
                       "  \"replacement\" : \"a\\/b\\n{{cursor}}\",\n"
                       "  \"title\" : \"T\",\n"
                       "  \"trigger\" : \";t\"\n"
                       "}"));
}

TEST(Snippet, WritesNoFolderButAlwaysTheRegexMark) {
  Snippet snippet = sample();
  snippet.folderID.reset();
  snippet.isRegexTrigger = false;
  const QJsonObject object = snippet.toJson();
  EXPECT_FALSE(object.contains(u"folderID"));
  EXPECT_EQ(object.value(u"isRegexTrigger"), QJsonValue(false));
  const auto read = Snippet::fromJson(object);
  ASSERT_TRUE(read);
  EXPECT_EQ(read.value(), snippet);
}

TEST(Snippet, ReadsBackWhatWasWritten) {
  const auto read = Snippet::fromJson(sample().toJson());
  ASSERT_TRUE(read);
  EXPECT_EQ(read.value(), sample());
}

TEST(Snippet, ReadsEachKeyAsItsTypeOrNotAtAll) {
  const QJsonObject complete = sample().toJson();
  const KeyCase table[] = {
      {u"id"_s, QJsonValue::Undefined, false},
      {u"id"_s, QJsonValue::Null, false},
      {u"id"_s, u"x"_s, false},
      {u"id"_s, 1, false},
      {u"id"_s, u"0a1b2c3d-4e5f-6789-abcd-ef0123456789"_s, true},
      {u"title"_s, QJsonValue::Undefined, false},
      {u"title"_s, QJsonValue::Null, false},
      {u"title"_s, 1, false},
      {u"title"_s, u""_s, true},
      {u"trigger"_s, QJsonValue::Undefined, false},
      {u"trigger"_s, QJsonValue::Null, false},
      {u"trigger"_s, false, false},
      {u"replacement"_s, QJsonValue::Undefined, false},
      {u"replacement"_s, QJsonValue::Null, false},
      {u"createdAt"_s, QJsonValue::Undefined, false},
      {u"createdAt"_s, QJsonValue::Null, false},
      {u"createdAt"_s, u"2026-01-21T09:30:00.250Z"_s, false},
      {u"createdAt"_s, 790594200, false},
      {u"modifiedAt"_s, QJsonValue::Undefined, false},
      {u"modifiedAt"_s, u"2026-01-21"_s, false},
      {u"folderID"_s, QJsonValue::Undefined, true},
      {u"folderID"_s, QJsonValue::Null, true},
      {u"folderID"_s, u"x"_s, false},
      {u"folderID"_s, u""_s, false},
      {u"folderID"_s, 1, false},
      {u"isRegexTrigger"_s, QJsonValue::Undefined, true},
      {u"isRegexTrigger"_s, QJsonValue::Null, true},
      {u"isRegexTrigger"_s, u"true"_s, false},
      {u"isRegexTrigger"_s, 1, false},
      {u"unknown"_s, 1, true},
  };
  for (const KeyCase& keyCase : table) expectDecoding<Snippet>(complete, keyCase);
}

TEST(Snippet, TakesMissingAndNullKeysForTheirDefaults) {
  for (const bool isNull : {false, true}) {
    QJsonObject object = sample().toJson();
    for (const QString& key : {u"folderID"_s, u"isRegexTrigger"_s}) {
      object.remove(key);
      if (isNull) object.insert(key, QJsonValue::Null);
    }
    const auto read = Snippet::fromJson(object);
    ASSERT_TRUE(read);
    EXPECT_EQ(read.value().folderID, std::nullopt);
    EXPECT_FALSE(read.value().isRegexTrigger);
  }
}

const std::function<void(Snippet&)> changes[] = {
    [](Snippet& snippet) { snippet.id = someFolderID; },
    [](Snippet& snippet) { snippet.title += u'x'; },
    [](Snippet& snippet) { snippet.trigger += u'x'; },
    [](Snippet& snippet) { snippet.replacement += u'x'; },
    [](Snippet& snippet) { snippet.folderID.reset(); },
    [](Snippet& snippet) { snippet.folderID = someID; },
    [](Snippet& snippet) { snippet.folderID = QUuid(); },
    [](Snippet& snippet) { snippet.createdAt = snippet.createdAt.addSecs(1); },
    [](Snippet& snippet) { snippet.modifiedAt = snippet.modifiedAt.addMSecs(1); },
    [](Snippet& snippet) { snippet.isRegexTrigger = false; },
};

TEST(Snippet, DiffersWithAnyField) {
  EXPECT_EQ(sample(), sample());
  EXPECT_EQ(qHash(sample()), qHash(sample()));
  std::unordered_set<Snippet> known{sample()};
  QSet<Snippet> alsoKnown{sample()};
  for (const auto& change : changes) {
    Snippet changed = sample();
    change(changed);
    EXPECT_NE(changed, sample());
    EXPECT_NE(qHash(changed), qHash(sample()));
    EXPECT_TRUE(known.insert(changed).second);
    EXPECT_FALSE(alsoKnown.contains(changed));
    alsoKnown.insert(changed);
  }
  EXPECT_EQ(known.size(), 1 + std::size(changes));
}

TEST(Snippet, WithoutAFolderIsNotTheSameAsWithTheNullFolder) {
  Snippet absent = sample();
  absent.folderID.reset();
  Snippet null = sample();
  null.folderID = QUuid();
  EXPECT_NE(absent, null);
  EXPECT_NE(qHash(absent), qHash(null));
}

}  // namespace
}  // namespace zarvy
