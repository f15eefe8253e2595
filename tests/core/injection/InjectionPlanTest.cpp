#include <string>

#include <QStringList>

#include <gtest/gtest.h>

#include "core/injection/InjectionPlan.h"

namespace zarvy {
namespace {

using namespace Qt::Literals::StringLiterals;

// One line per plan: keys as k51, text as 'run' (a cut surrogate as <d83d>), pauses in
// microseconds.
class ActionWriter {
 public:
  QString operator()(const KeyPress& press) const { return u"k%1"_s.arg(press.keyCode); }
  QString operator()(const Pause& pause) const { return QString::number(pause.duration.count()); }
  QString operator()(const TextRun& run) const {
    QString text = run.text;
    text.replace(u'\r', u"<cr>"_s);
    if (text.back().isHighSurrogate()) text = text.chopped(1) + hex(text.back());
    if (text.front().isLowSurrogate()) text = hex(text.front()) + text.sliced(1);
    return u'\'' + text + u'\'';
  }

 private:
  static QString hex(QChar unit) { return u"<%1>"_s.arg(int{unit.unicode()}, 4, 16); }
};

QString written(const QList<InjectionActions>& plans) {
  QStringList words;
  for (const InjectionActions& actions : plans) {
    for (const InjectionAction& action : actions) words += std::visit(ActionWriter(), action);
  }
  return words.join(u' ');
}

struct PlanCase {
  const char* name;
  QString text;
  qsizetype backspaceCount;
  std::optional<qsizetype> cursorOffset;
  QString expected;
};

void PrintTo(const PlanCase& planCase, std::ostream* stream) {
  *stream << planCase.name;
}

class InjectionPlanTable : public testing::TestWithParam<PlanCase> {};

TEST_P(InjectionPlanTable, ListsTheActionsInOrder) {
  const PlanCase& row = GetParam();
  EXPECT_EQ(written({planDeletion(row.backspaceCount), planText(row.text),
                     planCaret(row.text, row.cursorOffset)})
                .toStdString(),
            row.expected.toStdString());
}

const QString twenty = u"abcdefghijklmnopqrst"_s;

INSTANTIATE_TEST_SUITE_P(
    , InjectionPlanTable,
    testing::Values(
        PlanCase{"NothingAtAll", u""_s, 0, {}, u"10000"_s},
        PlanCase{"EmptyTextStillSendsBackspaces", u""_s, 2, {}, u"k51 2000 k51 2000 10000"_s},
        PlanCase{"NoBackspaceKeepsTheGap", u"a"_s, 0, {}, u"10000 'a' 1000"_s},
        PlanCase{"OneBackspace", u"a"_s, 1, {}, u"k51 2000 10000 'a' 1000"_s},
        PlanCase{"OneLineFeedIsOneReturn", u"\n"_s, 0, {}, u"10000 k36 1000"_s},
        PlanCase{"TwoLineFeedsAreTwoReturns", u"\n\n"_s, 0, {}, u"10000 k36 1000 k36 1000"_s},
        PlanCase{"TwoLineFeedsInsideText",
                 u"a\n\nb"_s,
                 0,
                 {},
                 u"10000 'a' 1000 k36 1000 k36 1000 'b' 1000"_s},
        PlanCase{"TrailingLineFeedIsReturnedLast", u"a\n"_s, 0, {}, u"10000 'a' 1000 k36 1000"_s},
        PlanCase{"LeadingLineFeedIsReturnedFirst", u"\na"_s, 0, {}, u"10000 k36 1000 'a' 1000"_s},
        PlanCase{"CarriageReturnStaysInTheText",
                 u"a\r\nb\rc"_s,
                 0,
                 {},
                 u"10000 'a<cr>' 1000 k36 1000 'b<cr>c' 1000"_s},
        PlanCase{"OtherLineSeparatorsStayInTheText",
                 u"a\u2028b\u0085c\u000bd"_s,
                 0,
                 {},
                 u"10000 'a\u2028b\u0085c\u000bd' 1000"_s},
        PlanCase{"NineteenUnitsAreOneChunk",
                 twenty.first(19),
                 0,
                 {},
                 u"10000 'abcdefghijklmnopqrs' 1000"_s},
        PlanCase{"TwentyUnitsAreOneChunk", twenty, 0, {}, u"10000 'abcdefghijklmnopqrst' 1000"_s},
        PlanCase{"TwentyOneUnitsAreTwoChunks",
                 twenty + u'u',
                 0,
                 {},
                 u"10000 'abcdefghijklmnopqrst' 1000 'u' 1000"_s},
        PlanCase{"FortyUnitsAreTwoChunks",
                 twenty + twenty,
                 0,
                 {},
                 u"10000 'abcdefghijklmnopqrst' 1000 'abcdefghijklmnopqrst' 1000"_s},
        PlanCase{"FortyOneUnitsAreThreeChunks",
                 twenty + twenty + u'u',
                 0,
                 {},
                 u"10000 'abcdefghijklmnopqrst' 1000 'abcdefghijklmnopqrst' 1000 'u' 1000"_s},
        PlanCase{"EachLineIsChunkedAnew",
                 twenty + u"u\n"_s + twenty,
                 0,
                 {},
                 u"10000 'abcdefghijklmnopqrst' 1000 'u' 1000 k36 1000 "
                 u"'abcdefghijklmnopqrst' 1000"_s},
        PlanCase{"SurrogatePairOnUnitsTwentyAndTwentyOneIsCut",
                 twenty.first(19) + u"\U0001F600x"_s,
                 0,
                 {},
                 u"10000 'abcdefghijklmnopqrs<d83d>' 1000 '<de00>x' 1000"_s},
        PlanCase{"SurrogatePairOnUnitsNineteenAndTwentyIsWhole",
                 twenty.first(18) + u"\U0001F600x"_s,
                 0,
                 {},
                 u"10000 'abcdefghijklmnopqr\U0001F600' 1000 'x' 1000"_s},
        PlanCase{"CombiningMarkOnUnitTwentyOneIsCutOff",
                 twenty + u"\u0301"_s,
                 0,
                 {},
                 u"10000 'abcdefghijklmnopqrst' 1000 '\u0301' 1000"_s},
        PlanCase{"NulIsText", u"a\0b"_s, 0, {}, u"10000 'a\0b' 1000"_s},
        PlanCase{"CursorOffsetZeroIsAsAbsent", u"a"_s, 0, 0, u"10000 'a' 1000"_s},
        PlanCase{"NegativeCursorOffsetIsAsAbsent", u"a"_s, 0, -1, u"10000 'a' 1000"_s},
        PlanCase{"CursorOffsetOne", u"ab"_s, 0, 1, u"10000 'ab' 1000 10000 k123 1000"_s},
        PlanCase{"CursorOffsetThree", u"abc"_s, 1, 3,
                 u"k51 2000 10000 'abc' 1000 10000 k123 1000 k123 1000 k123 1000"_s},
        PlanCase{"CursorOffsetLeavesOutWhatNoKeyTypes", u"ab\u0001c\u007f\u0085"_s, 0, 5,
                 u"10000 'ab\u0001c\u007f\u0085' 1000 10000 k123 1000 k123 1000"_s},
        PlanCase{"CursorOffsetCountsWhatNoKeyTypesAheadOfTheCaretNot", u"\u0001ab"_s, 0, 1,
                 u"10000 '\u0001ab' 1000 10000 k123 1000"_s},
        PlanCase{
            "CursorOffsetCountsControlCharactersThatHaveAKey", u"a\tb\rc\r\nd"_s, 0, 7,
            u"10000 'a\tb<cr>c<cr>' 1000 k36 1000 'd' 1000 10000 k123 1000 k123 1000 k123 1000 "
            "k123 1000 k123 1000 k123 1000 k123 1000"_s},
        PlanCase{"CursorOffsetOverNothingTypedIsAsAbsent", u"a\u0001"_s, 0, 1,
                 u"10000 'a\u0001' 1000"_s},
        PlanCase{"CursorOffsetBeyondTheTextIsNotQuestioned", u""_s, 0, 2,
                 u"10000 10000 k123 1000 k123 1000"_s}),
    [](const testing::TestParamInfo<PlanCase>& row) { return std::string(row.param.name); });

TEST(InjectionPlan, TakesALongTextInPiecesThatMakeTheSamePlan) {
  const QString word = u"0123456789012345\U0001F600\U0001F600"_s;  // a run ends within a pair
  for (const QString& text :
       {QString(), u"a"_s, word.repeated(5000), word.repeated(500) + u'\n' + word.repeated(3000),
        (word + u'\n').repeated(4000), QString(20'000, u'a'), QString(20'001, u'\n'),
        QString(19'999, u'a') + u"\nb"_s, QString(20'000, u'a') + u"\nb"_s}) {
    SCOPED_TRACE(text.size());
    InjectionActions pieces;
    for (QStringView rest = text; !rest.isEmpty();) {
      const qsizetype length = lengthOfPiece(rest);
      ASSERT_GT(length, 0);
      ASSERT_LE(length, 20'000);
      const InjectionActions piece = planText(rest.first(length));
      pieces.insert(pieces.end(), piece.begin(), piece.end());
      rest = rest.sliced(length);
    }
    EXPECT_TRUE(pieces == planText(text));
  }
}

TEST(InjectionPlanDeathTest, NegativeBackspaceCountEndsTheProcessWithOneLine) {
  EXPECT_DEATH((void)planDeletion(-1), "^TextInjector: cannot press a key -1 times\n");
}

}  // namespace
}  // namespace zarvy
