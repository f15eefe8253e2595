#include <QSet>

#include <gtest/gtest.h>

#include "base/UtcZone.h"
#include "core/model/FirstRunContent.h"
#include "fakes/ManualClock.h"
#include "support/QtPrinters.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

QUuid folderID(int lastDigit) {
  return QUuid::fromString(u"00000000-0000-0000-0000-00000000000"_s + QString::number(lastDigit));
}

TEST(FirstRunContent, HasThreeFoldersWithFixedIds) {
  const QList<Folder> expected{{folderID(1), u"Email"_s, FolderColor::blue, 0},
                               {folderID(2), u"Code"_s, FolderColor::green, 1},
                               {folderID(3), u"Personal"_s, FolderColor::purple, 2}};
  const ManualClock clock;
  EXPECT_EQ(FirstRunContent::make(clock).folders, expected);
  EXPECT_EQ(FirstRunContent::make(clock).folders.front().toJson().value(u"id").toString(),
            u"00000000-0000-0000-0000-000000000001"_s);
}

struct Row {
  QString title;
  QString trigger;
  int folder;  // the last digit of the folder's id; 0 for none
  QString replacement;
};

const Row table[] = {
    {u"Email Signature"_s, u";sig"_s, 1,
     u"Best regards,\n{{field:Your Name}}\n{{field:Your Title}}"_s},
    {u"Quick Thank You"_s, u";ty"_s, 1,
     u"Thank you for your email. I'll get back to you shortly."_s},
    {u"Meeting Request"_s, u";meet"_s, 1,
     u"Hi {{field:Name}},\n\nI'd like to schedule a meeting to discuss {{field:Topic}}.\n\nWould {{dropdown:Day:Monday,Tuesday,Wednesday,Thursday,Friday}} at {{dropdown:Time:9:00 AM,10:00 AM,11:00 AM,2:00 PM,3:00 PM}} work for you?\n\nBest,"_s},
    {u"Swift Function"_s, u";func"_s, 2,
     u"func {{field:functionName}}({{field:parameters}}) -> {{field:ReturnType}} {\n    {{field:// implementation}}\n}"_s},
    {u"TODO Comment"_s, u";todo"_s, 2, u"// TODO: {{field:description}} - {{date:short}}"_s},
    {u"Guard Statement"_s, u";guard"_s, 2,
     u"guard let {{field:variable}} = {{field:optional}} else {\n    return\n}"_s},
    {u"Home Address"_s, u";addr"_s, 3,
     u"{{field:Street Address}}\n{{field:City}}, {{field:State}} {{field:ZIP}}"_s},
    {u"Phone Number"_s, u";phone"_s, 3, u"{{field:Phone Number}}"_s},
    {u"Current Date"_s, u";date"_s, 0, u"{{date:long}}"_s},
    {u"Current Time"_s, u";time"_s, 0, u"{{time}}"_s},
};

TEST(FirstRunContent, HasTenSnippets) {
  const QDateTime now(QDate(2026, 1, 21), QTime(9, 30), utcZone);
  const FirstRunContent content = FirstRunContent::make(ManualClock(now));
  ASSERT_EQ(content.snippets.size(), std::ssize(table));
  for (std::size_t index = 0; index < std::size(table); ++index) {
    const Row& row = table[index];
    const Snippet& snippet = content.snippets.at(static_cast<qsizetype>(index));
    EXPECT_EQ(snippet.title, row.title);
    EXPECT_EQ(snippet.trigger, row.trigger);
    EXPECT_EQ(snippet.replacement, row.replacement);
    EXPECT_EQ(snippet.folderID.has_value(), row.folder != 0);
    EXPECT_EQ(snippet.folderID.value_or(folderID(0)), folderID(row.folder));
    EXPECT_EQ(snippet.createdAt, now);
    EXPECT_EQ(snippet.modifiedAt, now);
    EXPECT_FALSE(snippet.isRegexTrigger);
  }
}

TEST(FirstRunContent, HasNewSnippetIdsEachTime) {
  const ManualClock clock;
  const FirstRunContent first = FirstRunContent::make(clock);
  const FirstRunContent second = FirstRunContent::make(clock);
  QSet<QUuid> ids;
  for (const Snippet& snippet : first.snippets + second.snippets) ids.insert(snippet.id);
  EXPECT_EQ(ids.size(), first.snippets.size() + second.snippets.size());
}

}  // namespace
}  // namespace zarvy
