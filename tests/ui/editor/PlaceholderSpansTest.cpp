#include <gtest/gtest.h>

#include "base/text/Regex.h"
#include "core/placeholders/RandomText.h"
#include "ui/editor/PlaceholderSpans.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

// The kinds as expressions, in their order.
struct Row {
  QString pattern;
  SystemColor color;
};

const Row rows[] = {
    {uR"(\{\{#[^}]+\}\})"_s, SystemColor::teal},
    {uR"(\{\{field:[^}]+\}\})"_s, SystemColor::blue},
    {uR"(\{\{textarea:[^}]+\}\})"_s, SystemColor::blue},
    {uR"(\{\{dropdown:[^}]+\}\})"_s, SystemColor::purple},
    {uR"(\{\{\?:[^}]+\}\})"_s, SystemColor::pink},
    {uR"(\{\{/\?\}\})"_s, SystemColor::pink},
    {uR"(\{\{date:[^}]+\}\})"_s, SystemColor::green},
    {uR"(\{\{time(?::[^}]+)?\}\})"_s, SystemColor::green},
    {uR"(\{\{clipboard\}\})"_s, SystemColor::orange},
    {uR"(\{\{(uppercase|lowercase|titlecase):[^}]+\}\})"_s, SystemColor::cyan},
    {uR"(\{\{counter:[^}]+\}\})"_s, SystemColor::yellow},
    {uR"(\{\{snippet:[^}]+\}\})"_s, SystemColor::indigo},
    {uR"(\{\{js:[^}]+\}\})"_s, SystemColor::red},
    {uR"(\{\{cursor\}\})"_s, SystemColor::mint},
};

std::vector<TextSpan> byTheExpressions(const QString& text) {
  std::vector<TextSpan> spans;
  for (const Row& row : rows) {
    const auto regex = std::get<std::shared_ptr<const Regex>>(Regex::compile(row.pattern));
    for (const RegexMatch& match : regex->allMatches(text)) {
      spans.push_back({match.range(), {row.color, row.color}});
    }
  }
  return spans;
}

TEST(PlaceholderSpans, HaveTheColoursOfTheirKinds) {
  const QString text =
      u"{{#N}}{{field:A}}{{textarea:A}}{{dropdown:A:b}}{{?:A}}b{{/?}}{{date:short}}{{time}}"
      "{{time:+1h}}{{clipboard}}{{lowercase:A}}{{counter:A}}{{snippet:;a}}{{js:1}}{{cursor}}"_s;
  EXPECT_EQ(withoutOverlaps(placeholderSpans(text)), withoutOverlaps(byTheExpressions(text)));
  EXPECT_EQ(placeholderSpans(text).size(), 15U);
}

TEST(PlaceholderSpans, LeaveOtherTextAsItIs) {
  for (const QString& text : {u""_s, u"{{shell:date}}"_s, u"{{#}}"_s, u"{{date}}"_s,
                              u"{{field:a}"_s, u"{{Name}}"_s, u"{{clipboard }}"_s}) {
    EXPECT_TRUE(placeholderSpans(text).empty()) << text.toStdString();
  }
}

TEST(PlaceholderSpans, AreThoseOfTheExpressions) {
  RandomText random(
      {u"{{#"_s, u"{{field:"_s, u"{{time"_s, u"{{js:"_s, u"{{titlecase:"_s, u":"_s, u"}"_s, u"}}"_s,
       u"{{"_s, u"{{time}}"_s, u"{{/?}}"_s, u"{{cursor}}"_s, u"a"_s, u"\n"_s},
      20261123);
  std::size_t found = 0;
  for (int round = 0; round < 2000; ++round) {
    const QString text = random.next(14);
    const auto spans = withoutOverlaps(placeholderSpans(text));
    ASSERT_EQ(spans, withoutOverlaps(byTheExpressions(text))) << text.toStdString();
    found += spans.size();
  }
  EXPECT_GT(found, 1000U);
}

}  // namespace
}  // namespace zarvy
