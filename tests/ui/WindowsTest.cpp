#include <memory>
#include <optional>

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMultiMap>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QTest>

#include <gtest/gtest.h>

#include "app/ExpansionHarness.h"
#include "support/QtPrinters.h"
#include "ui/MenuBarView.h"
#include "ui/PermissionRequestView.h"
#include "ui/SceneWindows.h"
#include "ui/Scenes.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

// Of the windows that can be seen.
QStringList openTitles() {
  QStringList titles;
  for (const QWidget* window : QApplication::topLevelWidgets()) {
    if (window->isVisible()) titles.append(window->windowTitle());
  }
  titles.sort();
  return titles;
}

QPushButton* buttonWith(const QWidget& window, const QString& text) {
  for (QPushButton* button : window.findChildren<QPushButton*>()) {
    if (button->text() == text && button->isVisible()) return button;
  }
  return nullptr;
}

// The one that can be seen.
QWidget* openWindow() {
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (window->isVisible()) return window;
  }
  return nullptr;
}

void expectNoTextCut(const QWidget& window) {
  for (const QLabel* label : window.findChildren<QLabel*>()) {
    if (!label->isVisible() || label->text().isEmpty()) continue;
    const int wanted =
        label->wordWrap() ? label->heightForWidth(label->width()) : label->sizeHint().height();
    EXPECT_GE(label->height(), wanted) << label->text().toStdString();
    const QRect place(label->mapTo(&window, QPoint()), label->size());
    EXPECT_TRUE(window.rect().contains(place)) << label->text().toStdString();
  }
}

// Every text that can be seen, from top to bottom.
QStringList visibleTexts(const QWidget& window) {
  QMultiMap<int, QString> texts;
  for (const QWidget* child : window.findChildren<QWidget*>()) {
    if (!child->isVisible()) continue;
    const int y = child->mapTo(&window, QPoint()).y();
    const auto* label = qobject_cast<const QLabel*>(child);
    if (label && !label->text().isEmpty()) texts.insert(y, label->text());
    if (const auto* button = qobject_cast<const QPushButton*>(child))
      texts.insert(y, button->text());
  }
  return texts.values();
}

// The entries of the menu that can be seen, lines aside.
QStringList shownTexts(const QMenu& menu) {
  QStringList texts;
  for (const QAction* action : menu.actions()) {
    if (action->isVisible() && !action->isSeparator()) texts.append(action->text());
  }
  return texts;
}

QAction* actionWith(const QMenu& menu, const QString& text) {
  for (QAction* action : menu.actions()) {
    if (action->isVisible() && action->text() == text) return action;
  }
  return nullptr;
}

class Windows : public testing::Test {
 protected:
  [[nodiscard]] AppState& state() { return *m_harness.state; }

  void losePermission() {
    m_harness.permission.setTrusted(false);
    m_harness.makeState();
  }

  ExpansionHarness m_harness;
};

TEST_F(Windows, OpenOnceEachWithTheirTitles) {
  SceneWindows windows(state(), m_harness.workspace);
  for (const SceneRow& row : allScenes()) {
    windows.open(row.scene);
    windows.open(row.scene);
  }
  EXPECT_EQ(openTitles(), (QStringList{u"Global Variables"_s, u"Manage Snippets"_s, u"Setup"_s,
                                       u"Statistics"_s, u"Zarvy Settings"_s}));
}

// Without a size of its own a window keeps to its content, which it shows whole.
struct SizeOfScene {
  Scene scene = Scene::manageSnippets;
  std::optional<QSize> size;
};

class WindowSizes : public Windows, public testing::WithParamInterface<SizeOfScene> {};

TEST_P(WindowSizes, AreThoseOfTheSceneInTheMiddleOfTheScreen) {
  losePermission();
  SceneWindows windows(state(), m_harness.workspace);
  windows.open(GetParam().scene);
  QApplication::sendPostedEvents();
  const QWidget* const window = openWindow();
  ASSERT_TRUE(window);
  const bool isResizable = window->minimumSize() != window->maximumSize();
  EXPECT_EQ(isResizable, GetParam().size.has_value());
  EXPECT_EQ(window->size(), GetParam().size.value_or(window->sizeHint()));
  const QPoint middle = window->pos() + window->rect().center();
  EXPECT_EQ(middle, window->screen()->availableGeometry().center());
  expectNoTextCut(*window);
}

INSTANTIATE_TEST_SUITE_P(, WindowSizes,
                         testing::Values(SizeOfScene{Scene::manageSnippets, QSize(900, 600)},
                                         SizeOfScene{Scene::permissionRequest, {}},
                                         SizeOfScene{Scene::settings, {}},
                                         SizeOfScene{Scene::statistics, QSize(700, 550)},
                                         SizeOfScene{Scene::globalVariables, QSize(500, 400)}),
                         [](const auto& row) {
                           return rowOf(row.param.scene).id.split(u'-').first().toStdString();
                         });

TEST_F(Windows, OpenAgainOnceTheyHaveBeenClosed) {
  SceneWindows windows(state(), m_harness.workspace);
  windows.open(Scene::statistics);
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (window->isVisible()) window->close();
  }
  QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_EQ(openTitles(), QStringList());
  windows.open(Scene::statistics);
  EXPECT_EQ(openTitles(), QStringList{u"Statistics"_s});
}

// The window that closes is there until its events are done, and cannot come back.
TEST_F(Windows, OpenAgainInTheTurnInWhichTheyClose) {
  SceneWindows windows(state(), m_harness.workspace);
  windows.open(Scene::statistics);
  const QPointer<QWidget> first(openWindow());
  first->close();
  windows.open(Scene::statistics);
  EXPECT_TRUE(first) << "it is still there";
  EXPECT_EQ(openTitles(), QStringList{u"Statistics"_s});
  QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_FALSE(first);
  EXPECT_EQ(openTitles(), QStringList{u"Statistics"_s});
  QWidget* const second = openWindow();
  windows.open(Scene::statistics);
  EXPECT_EQ(openWindow(), second);
}

TEST_F(Windows, GoWithTheirOwnerAlsoWhereTheyAreJustClosing) {
  QPointer<QWidget> window;
  {
    SceneWindows windows(state(), m_harness.workspace);
    windows.open(Scene::settings);
    window = openWindow();
    window->close();
    windows.open(Scene::statistics);
  }
  EXPECT_FALSE(window);
  EXPECT_EQ(openTitles(), QStringList());
}

TEST_F(Windows, GoOnToTheNextFromTheSetup) {
  SceneWindows windows(state(), m_harness.workspace);
  windows.open(Scene::permissionRequest);
  QApplication::sendPostedEvents();
  buttonWith(*openWindow(), u"Get Started"_s)->click();
  EXPECT_EQ(openTitles(), QStringList{u"Manage Snippets"_s});
}

TEST_F(Windows, AreClosedWithTheKeyForItAndSomeWithEscape) {
  SceneWindows windows(state(), m_harness.workspace);
  for (const SceneRow& row : allScenes()) {
    windows.open(row.scene);
    ASSERT_TRUE(QTest::qWaitForWindowActive(openWindow()));
    QTest::keyClick(openWindow(), Qt::Key_Escape);
    EXPECT_EQ(openTitles().isEmpty(), row.closesOnEscape) << row.id.toStdString();
    windows.open(row.scene);
    ASSERT_TRUE(QTest::qWaitForWindowActive(openWindow()));
    QTest::keyClick(openWindow(), Qt::Key_W, Qt::ControlModifier);
    EXPECT_EQ(openTitles(), QStringList()) << row.id.toStdString();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
}

TEST(Scenes, AreKnownByTheirIds) {
  QStringList ids;
  for (const SceneRow& row : allScenes()) {
    EXPECT_EQ(&rowOf(row.scene), &row);
    ids.append(row.id);
  }
  EXPECT_EQ(ids, (QStringList{u"manage-snippets"_s, u"permission-request"_s, u"settings"_s,
                              u"statistics"_s, u"global-variables"_s}));
}

TEST_F(Windows, GoWithTheirOwner) {
  {
    SceneWindows windows(state(), m_harness.workspace);
    windows.open(Scene::settings);
  }
  EXPECT_EQ(openTitles(), QStringList());
}

TEST_F(Windows, LeadToThePermissionAndOnFromThere) {
  losePermission();
  int started = 0;
  auto* const setup = new PermissionRequestView(state().expansion(), [&started] { ++started; });
  setup->setAttribute(Qt::WA_DeleteOnClose);
  setup->show();
  QApplication::sendPostedEvents();  // lays it out
  EXPECT_EQ(visibleTexts(*setup),
            (QStringList{
                u"Accessibility Permission Required"_s,
                u"Zarvy needs accessibility permission to detect when you type trigger words and "
                "expand them into snippets."_s,
                u"Monitor keyboard input to detect triggers"_s,
                u"Replace trigger text with expanded snippets"_s, u"Works in any application"_s,
                u"Request Permission"_s, u"Check Permission"_s,
                u"Click \"Request Permission\", then enable Zarvy in the list that opens."_s,
                u"the test took it away"_s}));
  buttonWith(*setup, u"Request Permission"_s)->click();
  EXPECT_EQ(m_harness.permission.calls, QStringList{u"ask"_s});

  m_harness.permission.setTrusted(true);
  EXPECT_EQ(buttonWith(*setup, u"Get Started"_s), nullptr) << "it does not look by itself";
  buttonWith(*setup, u"Check Permission"_s)->click();
  QApplication::sendPostedEvents();
  EXPECT_EQ(visibleTexts(*setup).sliced(5),
            (QStringList{u"Permission Granted"_s, u"Get Started"_s}));
  buttonWith(*setup, u"Get Started"_s)->click();
  EXPECT_EQ(started, 1);
  QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_EQ(openTitles(), QStringList());
}

TEST_F(Windows, SayWhatToDoWhereThePermissionCannotBeAskedFor) {
  losePermission();
  m_harness.permission.isAskable = false;
  SceneWindows windows(state(), m_harness.workspace);
  windows.open(Scene::permissionRequest);
  QApplication::sendPostedEvents();
  QWidget* const setup = openWindow();
  ASSERT_TRUE(setup);
  EXPECT_EQ(visibleTexts(*setup).sliced(5),
            (QStringList{u"Check Permission"_s, u"the test took it away"_s, u"give it back"_s}));
  expectNoTextCut(*setup);
  m_harness.permission.comesAtNextLook = true;
  buttonWith(*setup, u"Check Permission"_s)->click();
  QApplication::sendPostedEvents();
  EXPECT_EQ(visibleTexts(*setup).sliced(5),
            (QStringList{u"Permission Granted"_s, u"Get Started"_s}));
}

TEST_F(Windows, LeaveTheSetupRoomForAllItsWords) {
  losePermission();
  SceneWindows windows(state(), m_harness.workspace);
  windows.open(Scene::permissionRequest);
  QApplication::sendPostedEvents();
  for (const bool granted : {false, true}) {
    m_harness.permission.setTrusted(granted);
    state().expansion().refreshAccessibilityPermission();
    QApplication::sendPostedEvents();
    const QWidget* const window = openWindow();
    ASSERT_TRUE(window);
    EXPECT_EQ(window->width(), 400);
    expectNoTextCut(*window);
  }
}

TEST_F(Windows, TakeTheNamesOfApplicationsInTheMenuAsTheyAre) {
  m_harness.load({{m_harness.snippet(u";ty"_s, u"x"_s)}, {}, {}, {}});
  m_harness.workspace.setFrontmost(RunningApplication{10, {}, u"Safe & Sound"_s, 1});
  m_harness.secureInput.isEnabled = true;
  MenuBarView menu(
      state().library(), state().selection(), state().expansion(), [](Scene /*scene*/) {}, [] {});
  m_harness.scheduler.advance(std::chrono::milliseconds(500));
  EXPECT_EQ(shownTexts(menu).front(), u"Blocked by Safe && Sound"_s);
}

TEST_F(Windows, AreOpenedFromTheMenuWhichFollowsTheState) {
  QList<Scene> opened;
  int quits = 0;
  MenuBarView menu(
      state().library(), state().selection(), state().expansion(),
      [&opened](Scene scene) { opened.append(scene); }, [&quits] { ++quits; });
  const auto trigger = [&menu](const QString& text) {
    QAction* const action = actionWith(menu, text);
    ASSERT_TRUE(action) << text.toStdString();
    action->trigger();
  };
  trigger(u"Manage Snippets..."_s);
  EXPECT_FALSE(state().selection().pendingNewSnippet());
  trigger(u"Add New Snippet..."_s);
  EXPECT_TRUE(state().selection().pendingNewSnippet());
  trigger(u"Settings..."_s);
  trigger(u"Statistics..."_s);
  EXPECT_EQ(opened, (QList<Scene>{Scene::manageSnippets, Scene::manageSnippets, Scene::settings,
                                  Scene::statistics}));
  m_harness.load({{m_harness.snippet(u";ty"_s, u"x"_s)}, {}, {}, {}});
  EXPECT_EQ(shownTexts(menu).front(), u"1 snippets"_s);
  EXPECT_FALSE(actionWith(menu, u"1 snippets"_s)->isEnabled());
  trigger(u"Pause Expansion"_s);
  EXPECT_TRUE(state().expansion().isPaused());
  trigger(u"Resume Expansion"_s);
  EXPECT_FALSE(state().expansion().isPaused());
  trigger(u"Quit Zarvy"_s);
  EXPECT_EQ(quits, 1);
}

// As on a desktop whose window manager has a menu of its own there.
class TakenKeys : public Windows {
 protected:
  TakenKeys() {
    m_harness.hotKeys.taken = {HotKey{49, 0x80000}, HotKey{49, 0x100000}};
    m_harness.loadDocuments();
  }

  void choose(const QWidget& window, const QString& key) {
    QPushButton* const offer = buttonWith(window, key);
    ASSERT_TRUE(offer) << key.toStdString();
    offer->click();
  }
};

TEST_F(TakenKeys, AreToldInTheMenu) {
  MenuBarView menu(
      state().library(), state().selection(), state().expansion(), [](Scene /*scene*/) {}, [] {});
  EXPECT_EQ(shownTexts(menu).front(), u"Alt+Space Is Taken: Choose Another Key..."_s);
  state().changeHotKey({49, 0xC0000});
  EXPECT_EQ(shownTexts(menu).front(), u"10 snippets"_s);
}

TEST_F(TakenKeys, AreExchangedForOneThatIsFreeInTheWindows) {
  SceneWindows windows(state(), m_harness.workspace);
  for (const Scene scene : {Scene::settings, Scene::manageSnippets}) {
    windows.open(scene);
    QApplication::sendPostedEvents();
    QWidget* const window = openWindow();
    ASSERT_TRUE(window);
    EXPECT_EQ(visibleTexts(*window).front(),
              u"Alt+Space belongs to another program and does not open quick search. Use another "
              "key for it:"_s);
    EXPECT_FALSE(buttonWith(*window, u"Super+Space"_s)) << "it is taken as well";
    expectNoTextCut(*window);
    const int height = window->height();
    choose(*window, u"Ctrl+Shift+Space"_s);
    QApplication::sendPostedEvents();
    EXPECT_EQ(state().library().settings().quickSearchModifiers, 0x60000U);
    EXPECT_EQ(visibleTexts(*window).size(), 1);
    expectNoTextCut(*window);
    if (scene == Scene::settings) {
      EXPECT_LT(window->height(), height);
    }
    state().changeHotKey({49, 0x80000});
    window->close();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
}

TEST_F(TakenKeys, LeadToTheFileWhereNoneIsFree) {
  m_harness.hotKeys.taken = {{49, 0x80000}, {49, 0xC0000}, {49, 0x100000}, {49, 0x60000}};
  state().changeHotKey({49, 0x80000});
  SceneWindows windows(state(), m_harness.workspace);
  windows.open(Scene::settings);
  EXPECT_EQ(visibleTexts(*openWindow()).front(),
            u"Alt+Space belongs to another program and does not open quick search. Choose another "
            "key in the file settings.json."_s);
}

class Menus : public Windows {
 protected:
  QList<Scene> m_opened;
  int m_quits = 0;
  MenuBarView m_menu{state().library(), state().selection(), state().expansion(),
                     [this](Scene scene) { m_opened.append(scene); }, [this] { ++m_quits; }};
};

TEST_F(Menus, StayAsTheyAreWhileTheyAreOpen) {
  m_harness.load({{m_harness.snippet(u";ty"_s, u"x"_s)}, {}, {}, {}});
  const QStringList before = shownTexts(m_menu);
  m_menu.popup({});
  state().expansion().togglePause();
  state().operations().addSnippet(m_harness.snippet(u";a"_s, u"y"_s));
  EXPECT_EQ(shownTexts(m_menu), before);
  m_menu.hide();
  EXPECT_EQ(shownTexts(m_menu).front(), u"2 snippets"_s);
  EXPECT_TRUE(actionWith(m_menu, u"Resume Expansion"_s));
}

// Some panels that draw the menu themselves do not.
TEST_F(Menus, ChangeWhenTheyOpenAlsoIfTheirClosingIsNotTold) {
  Q_EMIT m_menu.aboutToShow();
  state().expansion().togglePause();
  EXPECT_TRUE(actionWith(m_menu, u"Pause Expansion"_s));
  Q_EMIT m_menu.aboutToShow();
  EXPECT_TRUE(actionWith(m_menu, u"Resume Expansion"_s));
}

TEST_F(Menus, KeepTheirEntriesForAClickThatIsToldOfTooLate) {
  QAction* const pause = actionWith(m_menu, u"Pause Expansion"_s);
  ASSERT_TRUE(pause);
  Q_EMIT m_menu.aboutToShow();
  m_harness.load({{m_harness.snippet(u";ty"_s, u"x"_s)}, {}, {}, {}});
  Q_EMIT m_menu.aboutToHide();
  pause->trigger();
  EXPECT_TRUE(state().expansion().isPaused());
}

// Everywhere in the program: in its windows, and in the menu itself.
class Shortcuts : public Menus {
 protected:
  void expectToWorkIn(QWidget& widget) {
    QTest::keyClick(&widget, Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_TRUE(state().expansion().isPaused());
    QTest::keyClick(&widget, Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_FALSE(state().expansion().isPaused());
    QTest::keyClick(&widget, Qt::Key_Comma, Qt::ControlModifier);
    QTest::keyClick(&widget, Qt::Key_N, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(m_opened, (QList<Scene>{Scene::settings, Scene::manageSnippets}));
    EXPECT_TRUE(state().selection().pendingNewSnippet());
    QTest::keyClick(&widget, Qt::Key_Q, Qt::ControlModifier);
    EXPECT_EQ(m_quits, 1);
  }
};

class ShortcutsInWindows : public Shortcuts, public testing::WithParamInterface<Qt::WindowType> {};

TEST_P(ShortcutsInWindows, Work) {
  QWidget window(nullptr, GetParam());
  auto* const field = new QLineEdit(&window);
  window.show();
  window.activateWindow();
  field->setFocus();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  expectToWorkIn(*field);
}

// Those of the scenes, the form, and the panel of quick search.
INSTANTIATE_TEST_SUITE_P(, ShortcutsInWindows, testing::Values(Qt::Window, Qt::Dialog, Qt::Tool),
                         [](const auto& row) {
                           return row.param == Qt::Window   ? "Window"
                                  : row.param == Qt::Dialog ? "Dialog"
                                                            : "Tool";
                         });

TEST_F(Shortcuts, CloseTheOpenMenuAndDoWhatTheySay) {
  m_menu.popup({});
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&m_menu));
  QTest::keyClick(&m_menu, Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_TRUE(state().expansion().isPaused());
  EXPECT_FALSE(m_menu.isVisible());
  EXPECT_TRUE(actionWith(m_menu, u"Resume Expansion"_s));
}

// Without the permission there is nothing to pause.
TEST_F(Windows, HaveNoShortcutForWhatTheMenuDoesNotShow) {
  losePermission();
  MenuBarView menu(
      state().library(), state().selection(), state().expansion(), [](Scene /*scene*/) {}, [] {});
  QWidget window;
  window.show();
  window.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  QTest::keyClick(&window, Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_FALSE(state().expansion().isPaused());
}

}  // namespace
}  // namespace zarvy
