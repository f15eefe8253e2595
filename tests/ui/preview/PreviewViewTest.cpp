#include <random>

#include <QApplication>
#include <QClipboard>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextDocument>

#include <gtest/gtest.h>

#include "support/QtPrinters.h"
#include "ui/preview/PreviewView.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

using Kind = PreviewRun::Kind;

// What the document holds, as runs: a highlighted one is told by its background.
QList<PreviewRun> runsIn(const PreviewView& view) {
  QList<PreviewRun> runs;
  const auto append = [&runs](Kind kind, const QString& text) {
    if (!runs.isEmpty() && runs.back().kind == kind) {
      runs.back().text += text;
    } else {
      runs.append({kind, text});
    }
  };
  for (QTextBlock block = view.document()->begin(); block.isValid(); block = block.next()) {
    if (block != view.document()->begin()) append(Kind::plain, u"\n"_s);
    for (auto part = block.begin(); !part.atEnd(); ++part) {
      const QTextCharFormat format = part.fragment().charFormat();
      const bool isPlain = format.background().style() == Qt::NoBrush;
      const QColor color = format.background().color();
      const bool isRed = color.red() > color.blue();
      append(isPlain ? Kind::plain : (isRed ? Kind::required : Kind::regular),
             part.fragment().text());
    }
  }
  return runs;
}

TEST(PreviewView, ShowsRunsInTheirStyles) {
  PreviewView view(nullptr);
  const QList<PreviewRun> runs{{Kind::plain, u"Dear "_s},
                               {Kind::regular, u"<b>Ada</b>"_s},
                               {Kind::plain, u" and "_s},
                               {Kind::required, u"you"_s}};
  view.setRuns(runs);
  EXPECT_EQ(runsIn(view), runs);
  EXPECT_EQ(view.toPlainText(), u"Dear <b>Ada</b> and you"_s);
}

TEST(PreviewView, HighlightsInMediumWeightOnAFaintGround) {
  PreviewView view(nullptr);
  view.setRuns({{Kind::regular, u"a"_s}});
  const QTextCharFormat format = view.document()->begin().begin().fragment().charFormat();
  EXPECT_EQ(format.fontWeight(), QFont::Medium);
  EXPECT_NEAR(format.background().color().alphaF(), 0.15, 0.01);
  EXPECT_EQ(format.background().color().rgb() | 0xFF000000,
            view.palette().color(QPalette::Highlight).rgb());
}

TEST(PreviewView, HoldsWhatItWasGivenLast) {
  std::mt19937 random(7);
  const auto below = [&random](int limit) {
    return std::uniform_int_distribution(0, limit - 1)(random);
  };
  PreviewView view(nullptr);
  for (int round = 0; round < 2000; ++round) {
    QList<PreviewRun> runs;
    for (int count = below(6); count > 0; --count) {
      // Neighbours of one kind would come back as one run.
      const Kind kind = static_cast<Kind>((runs.size() + round) % 2 == 0 ? 0 : 1 + below(2));
      const QStringList texts{u"a"_s, u"b c"_s, u"x\U0001F600y"_s, u"\u05E9"_s};
      runs.append({kind, texts[below(4)]});
      if (kind == Kind::plain && below(3) == 0) runs.back().text += u"\nz"_s;
    }
    for (qsizetype index = runs.size() - 1; index > 0; --index) {
      if (runs[index].kind == runs[index - 1].kind) runs.removeAt(index);
    }
    view.setRuns(runs);
    ASSERT_EQ(runsIn(view), runs) << "round " << round;
  }
}

TEST(PreviewView, TakesEveryKindOfLineEnd) {
  PreviewView view(nullptr);
  view.setRuns({{Kind::plain, u"a\r\nb\rc\nd"_s}, {Kind::regular, u"x"_s}, {Kind::plain, u"e"_s}});
  view.setRuns({{Kind::plain, u"a\r\nb\rc\nd"_s}, {Kind::regular, u"yy"_s}, {Kind::plain, u"e"_s}});
  EXPECT_EQ(view.toPlainText(), u"a\nb\nc\ndyye"_s);
}

TEST(PreviewView, CopiesALongParagraphInOnePiece) {
  for (const QString& word : {u"word "_s, u"w\U0001F600"_s, u"long line\nword "_s}) {
    PreviewView view(nullptr);
    const QString text = word.repeated(5000);
    view.setRuns({{Kind::regular, u"x"_s}, {Kind::plain, text}});
    view.setRuns({{Kind::regular, u"xy"_s}, {Kind::plain, text}});
    for (QTextBlock block = view.document()->begin(); block.isValid(); block = block.next()) {
      EXPECT_LE(block.length(), 4100);
    }
    view.selectAll();
    view.copy();
    EXPECT_EQ(QApplication::clipboard()->text(), u"xy"_s + text);
    QTextCursor part = view.textCursor();
    part.setPosition(1);
    part.setPosition(5, QTextCursor::KeepAnchor);
    view.setTextCursor(part);
    view.copy();
    EXPECT_EQ(QApplication::clipboard()->text(), u"y"_s + text.first(3));
  }
}

TEST(PreviewView, CopiesLinesWithTheirEnds) {
  PreviewView view(nullptr);
  view.setRuns({{Kind::plain, u"\na\n\nb\n"_s}});
  view.selectAll();
  view.copy();
  EXPECT_EQ(QApplication::clipboard()->text(), u"\na\n\nb\n"_s);
}

TEST(PreviewView, StaysWhereItIsScrolledTo) {
  PreviewView view(nullptr);
  view.resize(300, 100);
  view.show();
  const QString lines = u"line\n"_s.repeated(500);
  view.setRuns({{Kind::plain, lines}, {Kind::regular, u"x"_s}, {Kind::plain, lines}});
  QApplication::processEvents();
  view.verticalScrollBar()->setValue(300);
  view.setRuns({{Kind::plain, lines}, {Kind::regular, u"xy"_s}, {Kind::plain, lines}});
  QApplication::processEvents();
  EXPECT_EQ(view.verticalScrollBar()->value(), 300);
}

TEST(PreviewView, FollowsThePaletteOfTheDesktop) {
  const QPalette light = QApplication::palette();
  PreviewView view(nullptr);
  view.setRuns({{Kind::plain, u"a"_s}, {Kind::regular, u"b"_s}});
  QPalette dark = light;
  dark.setColor(QPalette::Highlight, Qt::darkGreen);
  QApplication::setPalette(dark);
  QApplication::processEvents();
  EXPECT_EQ(runsIn(view), (QList<PreviewRun>{{Kind::plain, u"a"_s}, {Kind::regular, u"b"_s}}));
  QTextBlock::iterator part = view.document()->begin().begin();
  ++part;
  EXPECT_EQ(part.fragment().charFormat().background().color().rgb() | 0xFF000000,
            QColor(Qt::darkGreen).rgb());
  QApplication::setPalette(light);
}

TEST(PreviewView, KeepsItsPlaceAndItsSelectionInOtherColors) {
  const QPalette light = QApplication::palette();
  PreviewView view(nullptr);
  view.resize(300, 100);
  view.show();
  const QString lines = u"line\n"_s.repeated(500);
  view.setRuns({{Kind::plain, lines}, {Kind::regular, u"x"_s}, {Kind::plain, lines}});
  QApplication::processEvents();
  QTextCursor selection = view.textCursor();
  selection.setPosition(2000);
  selection.setPosition(2010, QTextCursor::KeepAnchor);
  view.setTextCursor(selection);
  view.verticalScrollBar()->setValue(300);
  QPalette dark = light;
  dark.setColor(QPalette::Highlight, Qt::darkGreen);
  QApplication::setPalette(dark);
  QApplication::processEvents();
  EXPECT_EQ(view.verticalScrollBar()->value(), 300);
  EXPECT_EQ(view.textCursor().anchor(), 2000);
  EXPECT_EQ(view.textCursor().position(), 2010);
  QApplication::setPalette(light);
}

}  // namespace
}  // namespace zarvy
