#include <QApplication>
#include <QLineEdit>
#include <QPointer>
#include <QScreen>
#include <QTest>
#include <QWindow>

#include <gtest/gtest.h>

#include "fakes/FakeWorkspace.h"
#include "fakes/Journal.h"
#include "fakes/ManualScheduler.h"
#include "support/QtPrinters.h"
#include "ui/controls/CloseButton.h"
#include "ui/quicksearch/FloatingPanel.h"
#include "ui/quicksearch/QuickSearchList.h"
#include "ui/quicksearch/QuickSearchView.h"
#include "ui/quicksearch/QuickSearchWindowController.h"
#include "ui/quicksearch/SearchedLibrary.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

using namespace std::chrono_literals;

FloatingPanel* openPanel() {
  FloatingPanel* open = nullptr;
  for (QWidget* window : QApplication::topLevelWidgets()) {
    auto* const panel = qobject_cast<FloatingPanel*>(window);
    if (panel && panel->isVisible()) {
      EXPECT_EQ(open, nullptr) << "two panels are open";
      open = panel;
    }
  }
  return open;
}

class QuickSearchWindows : public testing::Test {
 protected:
  ~QuickSearchWindows() override {
    m_controller.reset();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }

  // Choices are written down under `name`.
  void show(const QString& name) {
    m_controller->show(m_snippets, {}, [this, name](const Snippet& snippet) {
      m_calls.append(name + u" "_s + snippet.title + (openPanel() ? u" while open"_s : u""_s));
      if (m_inCallback) m_inCallback();
    });
  }

  void showAndWait(const QString& name) {
    show(name);
    ASSERT_TRUE(QTest::qWaitForWindowActive(openPanel()));
  }

  static void turnTo(Qt::ApplicationState state) { Q_EMIT qGuiApp->applicationStateChanged(state); }

  static void press(Qt::Key key) { QTest::keyClick(openPanel()->focusWidget(), key); }

  const QList<Snippet> m_snippets =
      libraryOf({{u"One"_s, u";1"_s}, {u"Two"_s, u";2"_s}, {u"Three"_s, u";3"_s}});
  Journal m_journal;
  FakeWorkspace m_workspace{m_journal};
  ManualScheduler m_scheduler;
  bool m_hasCompositor = false;
  std::unique_ptr<QuickSearchWindowController> m_controller =
      std::make_unique<QuickSearchWindowController>(
          QuickSearchServices{m_scheduler, m_workspace, [this] { return m_hasCompositor; }});
  QStringList m_calls;
  std::function<void()> m_inCallback;
};

TEST_F(QuickSearchWindows, AreVisibleFromShowToHide) {
  EXPECT_FALSE(m_controller->isVisible());
  show(u"a"_s);
  EXPECT_TRUE(m_controller->isVisible());
  EXPECT_NE(openPanel(), nullptr);
  m_controller->hide();
  EXPECT_FALSE(m_controller->isVisible());
  EXPECT_EQ(openPanel(), nullptr);
  m_controller->hide();
  EXPECT_EQ(m_calls, QStringList());
}

TEST_F(QuickSearchWindows, TellTheChoiceOnceTheyAreHidden) {
  showAndWait(u"a"_s);
  press(Qt::Key_Down);
  press(Qt::Key_Return);
  EXPECT_EQ(m_calls, QStringList{u"a Two"_s});
  EXPECT_FALSE(m_controller->isVisible());
}

TEST_F(QuickSearchWindows, TellAClickedRowOnceTheyAreHidden) {
  showAndWait(u"a"_s);
  const auto& list = *openPanel()->findChild<QuickSearchList*>();
  QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::NoModifier,
                    list.visualRect(list.model()->index(2, 0)).center());
  EXPECT_EQ(m_calls, QStringList{u"a Three"_s});
}

TEST_F(QuickSearchWindows, TellOneChoiceOnly) {
  showAndWait(u"a"_s);
  QWidget* const field = openPanel()->focusWidget();
  QTest::keyClick(field, Qt::Key_Return);
  QTest::keyClick(field, Qt::Key_Return);  // was on its way already
  EXPECT_EQ(m_calls, QStringList{u"a One"_s});
  show(u"b"_s);
  QTest::keyClick(field, Qt::Key_Return);
  EXPECT_EQ(m_calls.size(), 1);
  EXPECT_TRUE(m_controller->isVisible());
}

TEST_F(QuickSearchWindows, HideOnEscapeWithoutAWord) {
  showAndWait(u"a"_s);
  press(Qt::Key_Escape);
  EXPECT_FALSE(m_controller->isVisible());
  EXPECT_EQ(m_calls, QStringList());
}

TEST_F(QuickSearchWindows, GoWithoutAWordWhenTheyAreClosed) {
  showAndWait(u"a"_s);
  openPanel()->close();
  EXPECT_FALSE(m_controller->isVisible());
  showAndWait(u"b"_s);
  openPanel()->findChild<CloseButton*>()->click();
  EXPECT_FALSE(m_controller->isVisible());
  EXPECT_EQ(m_calls, QStringList());
}

TEST_F(QuickSearchWindows, HideWhenTheUserTurnsToAnotherApplication) {
  for (const auto& other : {std::optional(RunningApplication{10, u"editor"_s, {}, 4711}),
                            std::optional<RunningApplication>()}) {
    showAndWait(u"a"_s);
    m_scheduler.advance(1s);
    ASSERT_TRUE(m_controller->isVisible());
    m_workspace.setFrontmost(other);
    turnTo(Qt::ApplicationInactive);
    m_scheduler.advance(100ms);
    EXPECT_FALSE(m_controller->isVisible());
    m_scheduler.advance(1s);
  }
  EXPECT_EQ(m_calls, QStringList());
  EXPECT_EQ(m_scheduler.pendingCount(), 0U);
}

TEST_F(QuickSearchWindows, StayWhenTheKeyboardIsBackInAMoment) {
  showAndWait(u"a"_s);
  m_scheduler.advance(1s);
  m_workspace.setFrontmost(std::nullopt);  // for the moment
  turnTo(Qt::ApplicationInactive);
  m_scheduler.advance(99ms);
  turnTo(Qt::ApplicationActive);
  m_scheduler.advance(1s);
  EXPECT_TRUE(m_controller->isVisible());
  EXPECT_EQ(m_scheduler.pendingCount(), 0U);
}

// As a window manager does while it moves the panel about.
TEST_F(QuickSearchWindows, StayInFrontWhileAnotherClientHasTheKeyboardForItself) {
  showAndWait(u"a"_s);
  ASSERT_EQ(m_workspace.frontmostApplication()->nativeWindow, openPanel()->winId());
  turnTo(Qt::ApplicationInactive);
  m_scheduler.advance(10s);
  ASSERT_TRUE(m_controller->isVisible());
  m_workspace.setFrontmost(RunningApplication{10, u"editor"_s, {}, 4711});
  m_scheduler.advance(100ms);
  EXPECT_FALSE(m_controller->isVisible());
}

TEST_F(QuickSearchWindows, WaitForTheKeyboardBeforeTheyCanLoseIt) {
  show(u"a"_s);
  ASSERT_FALSE(openPanel()->isActiveWindow()) << "the events have yet to come";
  turnTo(Qt::ApplicationInactive);
  m_scheduler.advance(10s);
  ASSERT_TRUE(m_controller->isVisible());
  ASSERT_TRUE(QTest::qWaitForWindowActive(openPanel()));
  m_workspace.setFrontmost(std::nullopt);
  turnTo(Qt::ApplicationInactive);
  m_scheduler.advance(100ms);
  EXPECT_FALSE(m_controller->isVisible());
}

TEST_F(QuickSearchWindows, StayWhenAnotherWindowOfTheProgramIsTurnedTo) {
  showAndWait(u"a"_s);
  QWidget other;
  other.show();
  other.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
  EXPECT_TRUE(m_controller->isVisible());
}

TEST_F(QuickSearchWindows, BeginAnewEachTime) {
  showAndWait(u"a"_s);
  press(Qt::Key_Down);
  QTest::keyClicks(openPanel()->focusWidget(), u"t"_s);
  m_controller->hide();
  showAndWait(u"b"_s);
  const auto& view = *openPanel()->findChild<QuickSearchView*>();
  EXPECT_EQ(view.searchText(), QString());
  EXPECT_EQ(view.selectedIndex(), 0);
  EXPECT_TRUE(view.isSearchFocused());
}

TEST_F(QuickSearchWindows, GiveWayToTheNextOne) {
  show(u"a"_s);
  const QPointer<FloatingPanel> first(openPanel());
  show(u"b"_s);
  EXPECT_NE(openPanel(), first);
  ASSERT_TRUE(QTest::qWaitForWindowActive(openPanel()));
  press(Qt::Key_Return);
  EXPECT_EQ(m_calls, QStringList{u"b One"_s});
}

TEST_F(QuickSearchWindows, MayBeFollowedFromInsideTheCallback) {
  m_inCallback = [this] {
    m_inCallback = nullptr;
    show(u"b"_s);
  };
  showAndWait(u"a"_s);
  press(Qt::Key_Return);
  EXPECT_TRUE(m_controller->isVisible());
  ASSERT_TRUE(QTest::qWaitForWindowActive(openPanel()));
  press(Qt::Key_Return);
  EXPECT_EQ(m_calls, (QStringList{u"a One"_s, u"b One"_s}));
}

TEST_F(QuickSearchWindows, BearTheEndOfTheControllerInsideTheCallback) {
  m_inCallback = [this] { m_controller.reset(); };
  showAndWait(u"a"_s);
  press(Qt::Key_Return);
  EXPECT_EQ(m_calls, QStringList{u"a One"_s});
  EXPECT_EQ(openPanel(), nullptr);
}

TEST_F(QuickSearchWindows, GoWithTheirController) {
  show(u"a"_s);
  const QPointer<FloatingPanel> panel(openPanel());
  m_controller.reset();
  EXPECT_EQ(openPanel(), nullptr);
  QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_FALSE(panel);
  m_scheduler.advance(1s);
}

TEST_F(QuickSearchWindows, AskForTheKeyboardOnceTheyAreOnTheScreen) {
  show(u"a"_s);
  ASSERT_TRUE(QTest::qWaitForWindowExposed(openPanel()));
  EXPECT_EQ(m_journal.takeEntries(), QStringList{u"activate "_s});
  const auto front = m_workspace.frontmostApplication();
  ASSERT_TRUE(front);
  EXPECT_EQ(front->nativeWindow, openPanel()->winId());
  EXPECT_EQ(front->processIdentifier, QCoreApplication::applicationPid());
}

TEST_F(QuickSearchWindows, AskForTheKeyboardOnceMoreAfterAMoment) {
  showAndWait(u"a"_s);
  static_cast<void>(m_journal.takeEntries());
  m_scheduler.advance(49ms);
  EXPECT_EQ(m_journal.takeEntries(), QStringList());
  m_scheduler.advance(1ms);
  EXPECT_EQ(m_journal.takeEntries(), QStringList{u"activate "_s});
  EXPECT_EQ(m_workspace.frontmostApplication()->nativeWindow, openPanel()->winId());
  m_scheduler.advance(1s);
  EXPECT_EQ(m_journal.takeEntries(), QStringList());
}

TEST_F(QuickSearchWindows, AskNoMoreOnceTheyAreHidden) {
  showAndWait(u"a"_s);
  m_controller->hide();
  static_cast<void>(m_journal.takeEntries());
  m_scheduler.advance(1s);
  EXPECT_EQ(m_journal.takeEntries(), QStringList());
  EXPECT_EQ(m_scheduler.pendingCount(), 0U);
}

// Another window of the program may be left later on.
TEST_F(QuickSearchWindows, DoNotMindALossOfActivityOnceTheyAreHidden) {
  showAndWait(u"a"_s);
  m_controller->hide();
  turnTo(Qt::ApplicationInactive);
  m_scheduler.advance(1s);
  EXPECT_EQ(m_scheduler.pendingCount(), 0U);
  turnTo(Qt::ApplicationActive);
  showAndWait(u"b"_s);
  EXPECT_TRUE(m_controller->isVisible());
}

TEST_F(QuickSearchWindows, FloatInTheMiddleOfTheScreenWithoutAFrame) {
  show(u"a"_s);
  const FloatingPanel& panel = *openPanel();
  EXPECT_TRUE(panel.windowFlags() & Qt::WindowStaysOnTopHint);
  EXPECT_TRUE(panel.windowFlags() & Qt::FramelessWindowHint);
  EXPECT_EQ(panel.size(), QSize(600, 400));
  EXPECT_EQ(panel.findChild<QuickSearchView*>()->size(), QSize(600, 370));
  EXPECT_EQ(panel.windowTitle(), QString());
  const QPoint distance = panel.geometry().center() - panel.screen()->availableGeometry().center();
  EXPECT_LE(distance.manhattanLength(), 2);
}

TEST_F(QuickSearchWindows, AreOfAFixedSizeOnASmallScreenToo) {
  show(u"a"_s);
  FloatingPanel& panel = *openPanel();
  panel.fitInto({0, 0, 500, 360});
  for (const QSize& size : {panel.size(), panel.minimumSize(), panel.maximumSize()}) {
    EXPECT_EQ(size, QSize(500, 360));
  }
}

TEST_F(QuickSearchWindows, AreTranslucentAndRoundOnlyWhereACompositorRuns) {
  for (const bool hasCompositor : {false, true}) {
    m_hasCompositor = hasCompositor;
    show(u"a"_s);
    EXPECT_EQ(openPanel()->testAttribute(Qt::WA_TranslucentBackground), hasCompositor);
    QImage picture(openPanel()->size(), QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    openPanel()->render(&picture, {}, {}, QWidget::DrawChildren);
    EXPECT_EQ(qAlpha(picture.pixel(1, 1)), hasCompositor ? 0 : 255) << "a corner";
    const int inside = qAlpha(picture.pixel(300, 10));
    EXPECT_EQ(inside < 255, hasCompositor);
    EXPECT_GT(inside, 200) << "to be read on whatever is behind";
  }
}

TEST_F(QuickSearchWindows, AskForACompositorEachTime) {
  QuickSearchWindowController plain({m_scheduler, m_workspace});
  plain.show(m_snippets, {}, [](const Snippet&) {});
  EXPECT_FALSE(openPanel()->testAttribute(Qt::WA_TranslucentBackground)) << "unless told";
}

}  // namespace
}  // namespace zarvy
