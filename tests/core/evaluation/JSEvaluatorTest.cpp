#include <QElapsedTimer>

#include <gtest/gtest.h>

#include "base/posix/Processes.h"
#include "core/evaluation/JSEvaluator.h"
#include "fakes/RecordingLineOutput.h"
#include "support/QtPrinters.h"

namespace zarvy {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace processes;

constexpr std::chrono::milliseconds shortLimit{300};

const auto timeoutMark = u"[JS Timeout]"_s;
const auto errorMark = u"[JS Error]"_s;
const auto loopMark = u"[JS Error: Infinite loop detected]"_s;
const auto invalidMark = u"[JS Error: Invalid result]"_s;

struct Row {
  const char* name;
  QString expression;
  QString expected;
  QStringList lines = {};
};

const Row rows[] = {
    {"ASum", u"1+1"_s, u"2"_s},
    {"ALongFraction", u"0.1+0.2"_s, u"0.30000000000000004"_s},
    {"AHugeNumber", u"1e21"_s, u"1e+21"_s},
    {"NegativeZero", u"-0"_s, u"0"_s},
    {"NoNumber", u"0/0"_s, u"NaN"_s},
    {"ABigInteger", u"2n**70n"_s, u"1180591620717411303424"_s},
    {"AString", u"'a' + \"b\""_s, u"ab"_s},
    {"ATemplate", u"`a${1+1}b`"_s, u"a2b"_s},
    {"TheLastOfSeveral", u"var a = 2; a *= 3; 'x'; a"_s, u"6"_s},
    {"SeveralLines", u"1\n+\r\n2 // three\n"_s, u"3"_s},
    {"ABoolean", u"1 < 2"_s, u"true"_s},
    {"AList", u"[1,[2,3]]"_s, u"1,2,3"_s},
    {"AnObject", u"({})"_s, u"[object Object]"_s},
    {"AnObjectWithAText", u"({toString() { return 'own' }})"_s, u"own"_s},
    {"AnEmptyText", u"''"_s, u""_s},
    {"Undefined", u"undefined"_s, u""_s},
    {"Null", u"null"_s, u""_s},
    {"Nothing", u""_s, u""_s},
    {"ADeclaration", u"var declared = 1"_s, u""_s},
    {"AComment", u"// nothing"_s, u""_s},
    {"APromise", u"Promise.resolve(1)"_s, u"[object Promise]"_s},
    {"ALanguageOfToday", u"[3,1,2].toSorted().at(-1) ?? Object.groupBy([1], x => x)"_s, u"3"_s},
    {"AnExpressionWithLookBehind", u"'price: $42'.replace(/(?<=\\$)(?<n>\\d+)/u, '$<n>.00')"_s,
     u"price: $42.00"_s},
    {"NumbersAsPeopleWriteThem", u"new Intl.NumberFormat('de-DE').format(1234567.5)"_s,
     u"1.234.567,5"_s},
    {"CanonicalForms", u"'e\\u0301'.normalize('NFC')"_s, u"\u00e9"_s},
    {"Graphemes", u"[...new Intl.Segmenter().segment('\\u0928\\u093f!')].length"_s, u"2"_s},
    {"OtherPlanes", u"'\U0001F600' + '\U0001F600'.length"_s, u"\U0001F600\u0032"_s},
    {"ANulOnTheWayIn", u"'a\0b'.length"_s, u"3"_s},
    {"ANulOnTheWayOut", u"'a\\0b'"_s, u"a\0b"_s},
    {"ALoneSurrogateOnTheWayIn", u"'<"_s + QChar(0xD83D) + u">'.charCodeAt(1)"_s, u"55357"_s},
    {"ALoneSurrogateOnTheWayOut", u"'<\\uDE00>'"_s, u"<"_s + QChar(0xDE00) + u">"_s},
    {"NoTimers",
     u"[typeof setTimeout, typeof setInterval, typeof clearTimeout, typeof clearInterval]"_s,
     u"undefined,undefined,undefined,undefined"_s},
    {"NoConsole", u"typeof console"_s, u"undefined"_s},
    {"NoWebAssembly", u"typeof WebAssembly"_s, u"undefined"_s},
    {"NoCompilerFlags", u"typeof $vm + typeof require + typeof load + typeof process"_s,
     u"undefinedundefinedundefinedundefined"_s},

    {"AnUnknownName",
     u"noSuchName"_s,
     u""_s,
     {u"JS Exception: ReferenceError: Can't find variable: noSuchName"_s}},
    {"AnErrorOfTheScript",
     u"throw new RangeError('too far')"_s,
     u""_s,
     {u"JS Exception: RangeError: too far"_s}},
    {"AThrownText", u"throw 'text'"_s, u""_s, {u"JS Exception: text"_s}},
    {"AThrownUndefined", u"throw undefined"_s, u""_s, {u"JS Exception: undefined"_s}},
    {"AThrownSymbol", u"throw Symbol()"_s, u""_s, {u"JS Exception: "_s}},
    {"AThrownObjectWithoutText", u"throw {toString() { throw 1 }}"_s, u""_s, {u"JS Exception: "_s}},
    {"AThrownTextOfAnyUnits",
     u"throw 'a\\0\\uDE00'"_s,
     u""_s,
     {u"JS Exception: a\0"_s + QChar(0xDE00)}},
    {"HalfAnExpression",
     u"(1"_s,
     u""_s,
     {u"JS Exception: SyntaxError: Unexpected end of script"_s}},
    {"EndlessRecursion",
     u"(function f() { return f() + 1 })()"_s,
     u""_s,
     {u"JS Exception: RangeError: Maximum call stack size exceeded."_s}},
    {"AnArrayThatIsTooLarge",
     u"try { new Uint8Array(1e15) } catch (e) { throw e.constructor('too large') }"_s,
     u""_s,
     {u"JS Exception: RangeError: too large"_s}},
    {"ASymbol",
     u"Symbol('s')"_s,
     invalidMark,
     {u"JS Exception: TypeError: Cannot convert a symbol to a string"_s}},
    {"AnObjectThatRefuses",
     u"({toString() { throw new Error('no') }})"_s,
     invalidMark,
     {u"JS Exception: Error: no"_s}},
    {"AnObjectWithoutAnyText",
     u"Object.create(null)"_s,
     invalidMark,
     {u"JS Exception: TypeError: No default value"_s}},
    {"ARejectedPromise", u"Promise.reject('why'); 'text'"_s, u"text"_s},

    {"ALoopAsWritten", u"while(true) {}"_s, loopMark},
    {"ALoopWithABlank", u"while (true) {}"_s, loopMark},
    {"AnEmptyForLoop", u"for(;;);"_s, loopMark},
    {"AnEmptyForLoopWithABlank", u"for (;;);"_s, loopMark},
    {"ALoopInAnyCase", u"While (TRUE)"_s, loopMark},
    {"ALoopInAString", u"'while(true)'.length"_s, loopMark},
    {"ALoopInAComment", u"1 // never for(;;)"_s, loopMark},
    {"ALoopThatEnds", u"var n = 0; while (n < 5) n++; n"_s, u"5"_s},
    {"OtherBlanksThanTheOnesLookedFor", u"'while  (true)' + 'for( ;;)'"_s,
     u"while  (true)for( ;;)"_s},
};

class ScriptText : public testing::TestWithParam<Row> {};

TEST_P(ScriptText, IsAsExpectedAndLeavesTheContextInOrder) {
  RecordingLineOutput output;
  ChildReaper reaper;
  JSEvaluator evaluator(output, reaper, ScriptWorkerCommand::besideThisProgram(),
                        {patience, patience});
  EXPECT_EQ(evaluator.evaluate(u"var before = 'still here'"_s), u""_s);
  EXPECT_EQ(evaluator.evaluate(GetParam().expression), GetParam().expected);
  EXPECT_EQ(output.takeLines(), GetParam().lines);
  EXPECT_EQ(evaluator.evaluate(u"before"_s), u"still here"_s);
  EXPECT_EQ(output.takeLines(), QStringList());
}

INSTANTIATE_TEST_SUITE_P(, ScriptText, testing::ValuesIn(rows),
                         [](const auto& test) { return test.param.name; });

struct BadScript {
  const char* name;
  QString expression;
  QString expected;
  std::chrono::milliseconds limit;
};

// Each of them takes its process with it. Where it is the memory that ends it, it has all the time
// that it wants.
const BadScript badScripts[] = {
    {"AForLoopInAnotherSpelling", u"for (var i = 0; ; ) ;"_s, timeoutMark, shortLimit},
    {"AWhileLoopInAnotherSpelling", u"while(1);"_s, timeoutMark, shortLimit},
    {"AnExpressionThatTracksBack", u"/(a+)+$/.test('a'.repeat(40) + 'b')"_s, timeoutMark,
     shortLimit},
    {"ALoopOfPromises", u"(function f() { Promise.resolve().then(f) })()"_s, timeoutMark,
     shortLimit},
    {"AnEndlessText", u"({toString() { for (;1;) ; }})"_s, timeoutMark, shortLimit},
    {"AnEndlessDescription", u"throw {toString() { for (;1;) ; }}"_s, timeoutMark, shortLimit},
    {"AListThatDoubles", u"var a = [1]; for (;1;) a = a.concat(a)"_s, errorMark, patience},
    {"ATextThatGrows", u"var s = []; for (var i = 0; ; i++) s.push(('x' + i).repeat(1e5))"_s,
     errorMark, patience},
    {"GigabytesOfTypedArrays", u"var a = []; for (;1;) a.push(new Uint8Array(1 << 30).fill(1))"_s,
     errorMark, patience},
    {"ObjectsWithoutEnd", u"var a = null; for (;1;) a = {next: a}"_s, errorMark, patience},
    {"TenMegabytesOfText", u"'x'.repeat(10e6)"_s, errorMark, patience},
};

class AfterABadScript : public testing::TestWithParam<BadScript> {};

TEST_P(AfterABadScript, EverythingGoesOn) {
  const BadScript& bad = GetParam();
  RecordingLineOutput output;
  ChildReaper reaper;
  const auto before = openDescriptors();
  {
    JSEvaluator evaluator(output, reaper, ScriptWorkerCommand::besideThisProgram(),
                          {bad.limit, patience});
    for (int round = 0; round < 2; ++round) {
      EXPECT_EQ(evaluator.evaluate(bad.expression), bad.expected);
      EXPECT_EQ(evaluator.evaluate(u"1+1"_s), u"2"_s);
    }
  }
  EXPECT_EQ(output.lines(), QStringList());
  EXPECT_TRUE(eventually([] { return !hasChildren(); }));
  EXPECT_TRUE(eventually([&] { return openDescriptors() == before; }));
}

INSTANTIATE_TEST_SUITE_P(, AfterABadScript, testing::ValuesIn(badScripts),
                         [](const auto& test) { return test.param.name; });

class Scripts : public testing::Test {
 protected:
  RecordingLineOutput m_output;
  ChildReaper m_reaper;
  JSEvaluator m_evaluator{m_output, m_reaper, ScriptWorkerCommand::besideThisProgram(),
                          ScriptLimits{patience, patience}};
};

TEST_F(Scripts, FindWhatEarlierOnesLeftBehind) {
  EXPECT_EQ(m_evaluator.evaluate(u"var a = 1; globalThis.b = 2; c = 3"_s), u"3"_s);
  EXPECT_EQ(m_evaluator.evaluate(u"a++ + b + c"_s), u"6"_s);
  EXPECT_EQ(m_evaluator.evaluate(u"throw a"_s), u""_s);
  EXPECT_EQ(m_evaluator.evaluate(u"a"_s), u"2"_s);
}

TEST_F(Scripts, FindNothingOfEarlierOnesAfterATimeout) {
  JSEvaluator evaluator(m_output, m_reaper, ScriptWorkerCommand::besideThisProgram(),
                        {shortLimit, patience});
  EXPECT_EQ(evaluator.evaluate(u"var a = 1; a"_s), u"1"_s);
  EXPECT_EQ(evaluator.evaluate(u"for (var i = 0; ; ) ;"_s), timeoutMark);
  EXPECT_EQ(evaluator.evaluate(u"typeof a + typeof i + typeof uuid + typeof setTimeout"_s),
            u"undefinedundefinedfunctionundefined"_s);
}

TEST_F(Scripts, KeepTheirGlobalsWhereALoopIsRefusedOnSight) {
  EXPECT_EQ(m_evaluator.evaluate(u"var a = 1; a"_s), u"1"_s);
  EXPECT_EQ(m_evaluator.evaluate(u"for(;;);"_s), loopMark);
  EXPECT_EQ(m_evaluator.evaluate(u"a"_s), u"1"_s);
}

TEST_F(Scripts, KeepTheirGlobalsWhereATextIsTooLong) {
  EXPECT_EQ(m_evaluator.evaluate(u"var a = 1; a"_s), u"1"_s);
  EXPECT_EQ(m_evaluator.evaluate(u"'x'.repeat(40e6)"_s), errorMark);
  EXPECT_EQ(m_evaluator.evaluate(u"a"_s), u"1"_s);
}

TEST_F(Scripts, RunTheirPromisesBeforeTheNextOne) {
  EXPECT_EQ(m_evaluator.evaluate(u"var seen = 'no'; Promise.resolve().then(() => { seen = 'yes' });"
                                 u" seen"_s),
            u"no"_s);
  EXPECT_EQ(m_evaluator.evaluate(u"seen"_s), u"yes"_s);
}

TEST_F(Scripts, GiveTextsOfMegabytes) {
  EXPECT_EQ(m_evaluator.evaluate(u"'x'.repeat(8 * 1024 * 1024)"_s), QString(8 * 1024 * 1024, u'x'));
  EXPECT_EQ(m_evaluator.evaluate(u"'\\uD83D\\uDE00'.repeat(2e6)"_s).size(), 4'000'000);
  EXPECT_EQ(m_evaluator.evaluate(u"'after'"_s), u"after"_s);
}

TEST_F(Scripts, MayBeMegabytesLong) {
  const QString text(3'000'000, QChar(0x20AC));
  EXPECT_EQ(m_evaluator.evaluate(u'"' + text + u'"'), text);
  EXPECT_EQ(m_evaluator.evaluate(QString(1'000'000, u'{') + QString(1'000'000, u'}')).size(), 0);
  EXPECT_EQ(m_evaluator.evaluate(u"'after'"_s), u"after"_s);
}

TEST_F(Scripts, MayNotBeLongerThanWhatCrosses) {
  EXPECT_EQ(m_evaluator.evaluate(QString(scriptwire::longestText + 1, u' ')), errorMark);
  EXPECT_EQ(runningChildren(), std::vector<pid_t>());
  EXPECT_EQ(m_evaluator.evaluate(QString(scriptwire::longestText - 1, u' ') + u'1'), u"1"_s);
}

TEST_F(Scripts, RunInOneProcessThatStartsWithTheFirstOfThem) {
  EXPECT_EQ(m_evaluator.evaluate(u"while(true);"_s), loopMark);
  EXPECT_EQ(runningChildren(), std::vector<pid_t>());
  EXPECT_EQ(m_evaluator.evaluate(u"1"_s), u"1"_s);
  const auto worker = runningChildren();
  EXPECT_EQ(worker.size(), 1U);
  for (int round = 0; round < 200; ++round) {
    ASSERT_EQ(m_evaluator.evaluate(QString::number(round)), QString::number(round));
  }
  EXPECT_EQ(runningChildren(), worker);
}

TEST_F(Scripts, MayUseMuchMemoryOneAfterTheOther) {
  EXPECT_EQ(m_evaluator.evaluate(u"var kept = 1; kept"_s), u"1"_s);
  for (int round = 0; round < 10; ++round) {
    ASSERT_EQ(m_evaluator.evaluate(u"(() => new Uint8Array(60e6).fill(1).length)()"_s),
              u"60000000"_s);
  }
  EXPECT_EQ(m_evaluator.evaluate(u"kept"_s), u"1"_s);
}

TEST_F(Scripts, HaveOneSecond) {
  JSEvaluator evaluator(m_output, m_reaper);
  EXPECT_EQ(evaluator.evaluate(u"1"_s), u"1"_s);
  QElapsedTimer time;
  time.start();
  EXPECT_EQ(evaluator.evaluate(u"for (var i = 0; ; ) ;"_s), timeoutMark);
  EXPECT_GE(time.elapsed(), 1000);
  EXPECT_EQ(m_output.lines(), QStringList());
}

}  // namespace
}  // namespace zarvy
