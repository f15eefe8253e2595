#include <gtest/gtest.h>

#include "base/text/ReplacementTemplate.h"
#include "support/QtPrinters.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

TEST(ReplacementTemplate, ReadsTheSignsThatMeanSomething) {
  struct Row {
    QString replacementTemplate;
    QString expected;
  };
  for (const Row& row : {Row{u""_s, u""_s}, Row{u"plain"_s, u"plain"_s}, Row{u"<$0>"_s, u"<it>"_s},
                         Row{u"$01$00"_s, u"it1it"_s}, Row{u"\\$0"_s, u"$0"_s},
                         Row{u"a\\\\b"_s, u"a\\b"_s}, Row{u"\\a\\n"_s, u"an"_s},
                         Row{u"\\u0041"_s, u"A"_s}, Row{u"\\U0001F600"_s, u"\U0001F600"_s},
                         Row{u"\\user"_s, u"user"_s}, Row{u"end\\"_s, u"end"_s},
                         Row{u"\\\U0001F600"_s, u"\U0001F600"_s}, Row{u"$\u0660"_s, u"it"_s}}) {
    EXPECT_EQ(expandTemplate(row.replacementTemplate, u"it"), row.expected)
        << testing::PrintToString(row.replacementTemplate);
  }
}

TEST(ReplacementTemplate, RefusesWhatIcuRefuses) {
  for (const QString& text : {u"$"_s, u"5 $"_s, u"$ 5"_s, u"$1"_s, u"$9"_s, u"$$0"_s, u"${a}"_s,
                              u"${"_s, u"${}"_s, u"$x"_s}) {
    EXPECT_EQ(expandTemplate(text, u"it"), std::nullopt) << testing::PrintToString(text);
  }
}

TEST(ReplacementTemplate, TakesTheMatchedTextAsItIs) {
  const QString odd = u"$1 \\ \r\n\0"_s + QChar(0xD83D);
  EXPECT_EQ(expandTemplate(u"$0$0"_s, odd), odd + odd);
  EXPECT_EQ(expandTemplate(u"<$0>"_s, {}), u"<>"_s);
  const QString large(1'000'000, u'x');
  EXPECT_EQ(expandTemplate(u"$0"_s, large), large);
}

TEST(ReplacementTemplate, RefusesAResultOfManyMillions) {
  EXPECT_EQ(expandTemplate(u"$0"_s.repeated(100), QString(1'000'000, u'x')), std::nullopt);
}

TEST(ReplacementTemplate, KnowsTheGroupsOfAnExpression) {
  const char* const whole = "\\A<(.*)>";
  EXPECT_EQ(expandTemplate(u"$1, $0, \\$1"_s, u"<a>", whole), u"a, <a>, $1"_s);
  EXPECT_EQ(expandTemplate(u"$2"_s, u"<a>", whole), std::nullopt);
}

}  // namespace
}  // namespace zarvy
