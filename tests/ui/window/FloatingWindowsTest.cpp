// On two screens, one beside the other.

#include <QApplication>
#include <QScreen>

#include <gtest/gtest.h>

#include "ui/fillin/FillInHarness.h"
#include "ui/fillin/FillInWindowController.h"
#include "ui/quicksearch/QuickSearchWindowController.h"
#include "ui/window/Panel.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

class FloatingWindows : public testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(m_screens.size(), m_windowsInFront.size()); }

  // Of the one panel that is open.
  [[nodiscard]] QScreen* screenOfPanel() const {
    QScreen* screen = nullptr;
    for (QWidget* window : QApplication::topLevelWidgets()) {
      if (!qobject_cast<Panel*>(window) || !window->isVisible()) continue;
      EXPECT_EQ(screen, nullptr) << "two panels are open";
      screen = window->screen();
    }
    return screen;
  }

  const QList<QScreen*> m_screens = QGuiApplication::screens();
  const QList<QRect> m_windowsInFront = {{0, 0, 800, 600}, {2500, 1200, 100, 100}};
  FillInHarness m_harness;
};

TEST_F(FloatingWindows, OpenAFormOnTheScreenOfTheWindowInFront) {
  for (qsizetype screen = 0; screen < m_screens.size(); ++screen) {
    m_harness.workspace.setFrontmostArea(m_windowsInFront.at(screen));
    FillInWindowController controller(m_harness.services());
    controller.show(
        FillInHarness::snippet(u"{{field:A}}"_s), FolderColor::red, [] { return QString(); },
        [](const QMap<QString, QString>&) {}, [] {});
    EXPECT_EQ(screenOfPanel(), m_screens.at(screen));
  }
}

TEST_F(FloatingWindows, OpenQuickSearchOnTheScreenOfTheWindowInFront) {
  for (qsizetype screen = 0; screen < m_screens.size(); ++screen) {
    m_harness.workspace.setFrontmostArea(m_windowsInFront.at(screen));
    QuickSearchWindowController controller({m_harness.scheduler, m_harness.workspace});
    controller.show({}, {}, [](const Snippet&) {});
    EXPECT_EQ(screenOfPanel(), m_screens.at(screen));
  }
}

}  // namespace
}  // namespace zarvy
