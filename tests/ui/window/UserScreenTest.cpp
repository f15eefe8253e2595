// On two screens, one beside the other, of which the right one is of a finer grain.

#include <QApplication>
#include <QScreen>
#include <QWidget>

#include <gtest/gtest.h>

#include "fakes/FakeWorkspace.h"
#include "fakes/Journal.h"
#include "support/QtPrinters.h"
#include "ui/window/Panel.h"
#include "ui/window/UserScreen.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

class PlainPanel final : public Panel {
 public:
  PlainPanel() { resize(450, 550); }
};

TEST(ScreenNearest, HoldsThePlaceOrComesNextToIt) {
  const QRect left(0, 0, 1920, 1080);
  const QRect right(1920, 0, 1280, 1024);
  const QRect above(0, -1200, 1600, 1200);
  struct Row {
    QList<QRect> screens;
    QPoint place;
    qsizetype nearest;
  };
  for (const Row& row : {
           Row{{}, {0, 0}, -1},
           Row{{left}, {5000, 5000}, 0},
           Row{{left, right}, {0, 0}, 0},
           Row{{left, right}, {1919, 1079}, 0},
           Row{{left, right}, {1920, 500}, 1},
           Row{{right, left}, {1920, 500}, 0},
           Row{{left, right}, {3199, 1023}, 1},
           Row{{left, right}, {2500, 1060}, 1},  // below the lower edge of the right one
           Row{{left, right}, {1930, 1079}, 0},
           Row{{left, right}, {-300, 400}, 0},
           Row{{left, right, above}, {100, -1}, 2},
           Row{{left, right, above}, {1700, -10}, 0},
       }) {
    EXPECT_EQ(screenNearest(row.screens, row.place), row.nearest)
        << row.place.x() << "," << row.place.y();
  }
}

class ScreenOfUser : public testing::Test {
 protected:
  Journal m_journal;
  FakeWorkspace m_workspace{m_journal};
  const QList<QScreen*> m_screens = QGuiApplication::screens();
};

TEST_F(ScreenOfUser, HoldsTheMiddleOfTheWindowInFront) {
  ASSERT_EQ(m_screens.size(), 2);
  ASSERT_EQ(m_screens.at(1)->devicePixelRatio(), 2);
  struct Row {
    QRect window;
    int screen;
  };
  for (const Row& row :
       {Row{{0, 0, 800, 600}, 0}, Row{{900, 0, 190, 600}, 0}, Row{{700, 0, 800, 600}, 1},
        Row{{2500, 1200, 100, 100}, 1}, Row{{-400, -300, 500, 400}, 0}}) {
    m_workspace.setFrontmostArea(row.window);
    EXPECT_EQ(&screenOfUser(m_workspace), m_screens.at(row.screen)) << row.window.x();
  }
}

TEST_F(ScreenOfUser, HoldsThePointerWhereNoWindowIsInFront) {
  QCursor::setPos(m_screens.at(0)->geometry().center());
  EXPECT_EQ(&screenOfUser(m_workspace), m_screens.at(0));
}

TEST_F(ScreenOfUser, HasThePanelsInItsMiddle) {
  for (QScreen* screen : m_screens) {
    PlainPanel panel;
    panel.centerOn(*screen);
    panel.show();
    EXPECT_EQ(panel.screen(), screen);
    const QPoint distance = panel.geometry().center() - screen->availableGeometry().center();
    EXPECT_LE(distance.manhattanLength(), 2) << screen->name().toStdString();
  }
}

}  // namespace
}  // namespace zarvy
