#include <gtest/gtest.h>

#include "core/matching/SlowPatterns.h"
#include "core/matching/TriggerLibrary.h"
#include "support/QtPrinters.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

Snippet snippetWith(const QString& trigger, bool isRegexTrigger = true) {
  Snippet snippet;
  snippet.id = QUuid::createUuid();
  snippet.trigger = trigger;
  snippet.isRegexTrigger = isRegexTrigger;
  return snippet;
}

class SlowPatternsTest : public testing::Test {
 protected:
  // Whether one of so many times was the one that was too many.
  bool note(const QString& pattern, int times) {
    bool isTooMany = false;
    for (int time = 0; time < times; ++time) isTooMany |= m_patterns.note(pattern);
    return isTooMany;
  }

  void handOver(const QList<Snippet>& snippets) {
    m_patterns.keepThoseOf(TriggerLibrary(snippets).regexes());
  }

  SlowPatterns m_patterns;
};

TEST_F(SlowPatternsTest, LeavesAPatternOutAfterTheThirdTimeAndSaysSoOnce) {
  EXPECT_FALSE(note(u"a+"_s, 2));
  EXPECT_FALSE(note(u"b+"_s, 2));
  EXPECT_EQ(m_patterns.leftOut(), QSet<QString>());
  EXPECT_TRUE(note(u"a+"_s, 1));
  EXPECT_EQ(m_patterns.leftOut(), QSet<QString>{u"a+"_s});
  EXPECT_FALSE(note(u"a+"_s, 3));
}

TEST_F(SlowPatternsTest, CountsOnOverChangesElsewhere) {
  note(u"a+"_s, 2);
  handOver({snippetWith(u"x"_s), snippetWith(u"a+"_s)});
  EXPECT_TRUE(note(u"a+"_s, 1));
  handOver({snippetWith(u"a+"_s), snippetWith(u"y"_s, false)});
  EXPECT_EQ(m_patterns.leftOut(), QSet<QString>{u"a+"_s});
}

TEST_F(SlowPatternsTest, ForgetsAPatternThatIsEdited) {
  note(u"a+"_s, 3);
  note(u"b+"_s, 2);
  handOver({snippetWith(u"a+!"_s), snippetWith(u"b+"_s, false)});
  EXPECT_EQ(m_patterns.leftOut(), QSet<QString>());
  EXPECT_FALSE(note(u"a+"_s, 2));
  EXPECT_FALSE(note(u"b+"_s, 2)) << "a literal trigger is no pattern";
}

}  // namespace
}  // namespace zarvy
