#include <gtest/gtest.h>

#include "core/placeholders/Captures.h"
#include "support/QtPrinters.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

struct Row {
  QString pattern;
  QStringList names;
};

const Row table[] = {
    {u""_s, {}},
    {u"abc$"_s, {}},
    {u"(?<word>\\w+)!$"_s, {u"word"_s}},
    {u"(?'word'\\w+)$"_s, {u"word"_s}},
    {u"(?<a>x)(y)(?<b2>z)$"_s, {u"a"_s, u"b2"_s}},
    {u"(?<a>x)|(?<a>y)$"_s, {u"a"_s, u"a"_s}},
    {u"(?<outer>(?<inner>x))$"_s, {u"outer"_s, u"inner"_s}},
    {u"(?<_x>a)$"_s, {u"_x"_s}},
    {u"(?<=a)(?<!b)(?:c)(?=d)$"_s, {}},
    {u"(?<1a>x)(?<a b>x)(?<>x)$"_s, {}},
    {u"(?<a'x)$"_s, {u"a"_s}},
    {u"\\(?<a>x$"_s, {u"a"_s}},
};

TEST(GroupNames, AreReadFromTheTextOfThePattern) {
  for (const Row& row : table) {
    SCOPED_TRACE(row.pattern.toStdString());
    EXPECT_EQ(scanGroupNames(row.pattern), row.names);
  }
}

}  // namespace
}  // namespace zarvy
