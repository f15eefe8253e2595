#include <gtest/gtest.h>

#include "core/CursorMarker.h"
#include "support/QtPrinters.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

struct Row {
  QString text;
  QString expected;
  std::optional<qsizetype> cursorOffset;
};

const Row table[] = {
    {u""_s, u""_s, std::nullopt},
    {u"no marker"_s, u"no marker"_s, std::nullopt},
    {u"{{Cursor}} {cursor} {{cursor }}"_s, u"{{Cursor}} {cursor} {{cursor }}"_s, std::nullopt},
    {u"{{cursor}}"_s, u""_s, 0},
    {u"a{{cursor}}"_s, u"a"_s, 0},
    {u"{{cursor}}abc"_s, u"abc"_s, 3},
    {u"a({{cursor}})"_s, u"a()"_s, 1},
    {u"a{{cursor}}b{{cursor}}c"_s, u"abc"_s, 12},
    {u"{{cursor}}{{cursor}}"_s, u""_s, 10},
    {u"{{cursor}}e\u0301\U0001F468\u200D\U0001F469\u200D\U0001F467\r\n"_s,
     u"e\u0301\U0001F468\u200D\U0001F469\u200D\U0001F467\r\n"_s, 3},
    {u"x{{cur{{cursor}}sor}}y"_s, u"x{{cursor}}y"_s, 6},  // what the removal makes stays
    {u"{{{cursor}}}"_s, u"{}"_s, 1},
};

TEST(CursorMarker, IsTakenOutAndSaysWhereTheCaretGoes) {
  for (const Row& row : table) {
    SCOPED_TRACE(row.text.toStdString());
    const ExpandedText result = resolveCursorMarker(row.text);
    EXPECT_EQ(result.text, row.expected);
    EXPECT_EQ(result.cursorOffset, row.cursorOffset);
  }
}

}  // namespace
}  // namespace zarvy
