#include <QSplitterHandle>
#include <QTest>

#include <gtest/gtest.h>

#include "support/QtPrinters.h"
#include "ui/controls/PaneSplitter.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

struct Direction {
  Qt::Orientation orientation;
  Qt::Key back;
  Qt::Key forth;
};

class PaneSplitters : public testing::TestWithParam<Direction> {};

TEST_P(PaneSplitters, AreMovedWithTheArrowKeys) {
  PaneSplitter splitter(GetParam().orientation, u"Size of the preview"_s, nullptr);
  splitter.addWidget(new Pane({300, 300}, &splitter));
  splitter.addWidget(new Pane({250, 250}, &splitter));
  splitter.resize(1000, 1000);
  splitter.show();
  splitter.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&splitter));
  splitter.setSizes({500, 500});
  QSplitterHandle& handle = *splitter.handle(1);
  EXPECT_EQ(handle.accessibleName(), u"Size of the preview"_s);
  handle.setFocus();
  const int before = splitter.sizes().first();
  QTest::keyClick(&handle, GetParam().forth);
  const int after = splitter.sizes().first();
  EXPECT_EQ(after, before + 16);
  QTest::keyClick(&handle, GetParam().back);
  EXPECT_EQ(splitter.sizes().first(), before);
}

TEST_P(PaneSplitters, LeaveEachPaneItsLeastSize) {
  PaneSplitter splitter(GetParam().orientation, u"Size"_s, nullptr);
  splitter.addWidget(new Pane({300, 300}, &splitter));
  splitter.addWidget(new Pane({250, 250}, &splitter));
  splitter.resize(1000, 1000);
  splitter.show();
  splitter.setSizes({10, 990});
  EXPECT_EQ(splitter.sizes().first(), 300);
  splitter.setSizes({990, 10});
  EXPECT_EQ(splitter.sizes().last(), 250);
}

INSTANTIATE_TEST_SUITE_P(, PaneSplitters,
                         testing::Values(Direction{Qt::Vertical, Qt::Key_Up, Qt::Key_Down},
                                         Direction{Qt::Horizontal, Qt::Key_Left, Qt::Key_Right}),
                         [](const auto& row) {
                           return row.param.orientation == Qt::Vertical ? "Below" : "Beside";
                         });

}  // namespace
}  // namespace zarvy
