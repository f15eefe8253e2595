#include <QPointer>
#include <QScreen>
#include <QSplitter>
#include <QWindow>

#include "support/QtPrinters.h"
#include "ui/fillin/FillInHarness.h"
#include "ui/fillin/FillInWindowController.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

FillInPanel* openPanel() {
  FillInPanel* open = nullptr;
  for (QWidget* window : QApplication::topLevelWidgets()) {
    auto* const panel = qobject_cast<FillInPanel*>(window);
    if (panel && panel->isVisible()) {
      EXPECT_EQ(open, nullptr) << "two panels are open";
      open = panel;
    }
  }
  return open;
}

class FillInWindows : public testing::Test {
 protected:
  // Both callbacks write down that they were called, under `name`.
  void show(const QString& name, const QString& title = u"Letter"_s) {
    Snippet snippet = FillInHarness::snippet(u"{{field:A:x}}"_s);
    snippet.title = title;
    m_controller->show(
        snippet, FolderColor::red, [] { return QString(); },
        [this, name](const QMap<QString, QString>& values) {
          m_calls.append(name + u" complete "_s + values.value(u"A"_s) +
                         (openPanel() ? u" while open"_s : u""_s));
          if (m_inCallback) m_inCallback();
        },
        [this, name] {
          m_calls.append(name + u" cancel"_s);
          if (m_inCallback) m_inCallback();
        });
  }

  static void press(const QString& text) { button(*openPanel(), text).click(); }

  FillInHarness m_harness;
  std::unique_ptr<FillInWindowController> m_controller =
      std::make_unique<FillInWindowController>(m_harness.services());
  QStringList m_calls;
  std::function<void()> m_inCallback;
};

TEST_F(FillInWindows, CompleteOnceAndBeforeTheyClose) {
  show(u"a"_s);
  press(u"Expand"_s);
  EXPECT_EQ(m_calls, QStringList{u"a complete x while open"_s});
  EXPECT_EQ(openPanel(), nullptr);
}

TEST_F(FillInWindows, CancelTwiceForOnePress) {
  show(u"a"_s);
  press(u"Cancel"_s);
  EXPECT_EQ(m_calls, (QStringList{u"a cancel"_s, u"a cancel"_s}));
  EXPECT_EQ(openPanel(), nullptr);
}

TEST_F(FillInWindows, CancelOnceWhenTheyAreClosed) {
  show(u"a"_s);
  openPanel()->close();
  EXPECT_EQ(m_calls, QStringList{u"a cancel"_s});
  EXPECT_EQ(openPanel(), nullptr);
  m_controller->close();
  EXPECT_EQ(m_calls.size(), 1);
}

TEST_F(FillInWindows, CancelOnceWhenTheirOwnerClosesThem) {
  m_controller->close();
  show(u"a"_s);
  m_controller->close();
  EXPECT_EQ(m_calls, QStringList{u"a cancel"_s});
  EXPECT_EQ(openPanel(), nullptr);
}

TEST_F(FillInWindows, CancelOnTheEscapeKey) {
  show(u"a"_s);
  ASSERT_TRUE(QTest::qWaitForWindowActive(openPanel()));
  QTest::keyClick(openPanel(), Qt::Key_Escape);
  EXPECT_EQ(m_calls, (QStringList{u"a cancel"_s, u"a cancel"_s}));
}

TEST_F(FillInWindows, MayBeClosedAgainFromInsideTheCallback) {
  m_inCallback = [this] { m_controller->close(); };
  show(u"a"_s);
  press(u"Cancel"_s);
  EXPECT_EQ(m_calls, (QStringList{u"a cancel"_s, u"a cancel"_s}));
  show(u"b"_s);
  openPanel()->close();
  EXPECT_EQ(m_calls.sliced(2), QStringList{u"b cancel"_s});
  show(u"c"_s);
  press(u"Expand"_s);
  EXPECT_EQ(m_calls.sliced(3), QStringList{u"c complete x while open"_s});
  EXPECT_EQ(openPanel(), nullptr);
}

TEST_F(FillInWindows, GiveWayToTheNextOne) {
  show(u"a"_s);
  show(u"b"_s);
  EXPECT_EQ(m_calls, QStringList{u"a cancel"_s});
  press(u"Expand"_s);
  EXPECT_EQ(m_calls, (QStringList{u"a cancel"_s, u"b complete x while open"_s}));
}

TEST_F(FillInWindows, GiveWayAlsoWhereTheCallbackClosesThem) {
  m_inCallback = [this] { m_controller->close(); };
  show(u"a"_s);
  show(u"b"_s);
  EXPECT_EQ(m_calls, QStringList{u"a cancel"_s});
  EXPECT_NE(openPanel(), nullptr);
}

TEST_F(FillInWindows, MayBeFollowedFromInsideTheCallback) {
  m_inCallback = [this] {
    m_inCallback = nullptr;
    show(u"b"_s);
  };
  show(u"a"_s);
  press(u"Expand"_s);
  EXPECT_EQ(m_calls, QStringList{u"a complete x while open"_s});
  ASSERT_NE(openPanel(), nullptr) << "the next one is not the first one's to close";
  openPanel()->close();
  EXPECT_EQ(m_calls.sliced(1), QStringList{u"b cancel"_s});
}

TEST_F(FillInWindows, MayBeFollowedFromInsideTheSecondCancelOfOnePress) {
  m_inCallback = [this] {
    if (m_calls.size() < 2) return;
    m_inCallback = nullptr;
    show(u"b"_s);
  };
  show(u"a"_s);
  press(u"Cancel"_s);
  EXPECT_EQ(m_calls, (QStringList{u"a cancel"_s, u"a cancel"_s}));
  ASSERT_NE(openPanel(), nullptr) << "the next one is not the first one's to forget";
  openPanel()->close();
  EXPECT_EQ(m_calls.sliced(2), QStringList{u"b cancel"_s});
}

TEST_F(FillInWindows, GiveWayAlsoWhereTheCallbackHasOpenedAnother) {
  m_inCallback = [this] {
    m_inCallback = nullptr;
    show(u"b"_s);
  };
  show(u"a"_s);
  show(u"c"_s);
  EXPECT_EQ(m_calls, (QStringList{u"a cancel"_s, u"b cancel"_s}));
  ASSERT_NE(openPanel(), nullptr);
  openPanel()->close();
  EXPECT_EQ(m_calls.sliced(2), QStringList{u"c cancel"_s});
}

TEST_F(FillInWindows, GiveWayWhateverTheirCallbacksOpen) {
  m_inCallback = [this] {
    show(u"again"_s);
    show(u"and again"_s);
  };
  show(u"a"_s);
  show(u"b"_s);
  EXPECT_EQ(m_calls, (QStringList{u"a cancel"_s, u"and again cancel"_s}));
  ASSERT_NE(openPanel(), nullptr);
  m_inCallback = nullptr;
  openPanel()->close();
  EXPECT_EQ(m_calls.sliced(2), QStringList{u"b cancel"_s});
}

TEST_F(FillInWindows, AreCancelledWhateverTheirCallbacksOpen) {
  m_inCallback = [this] { show(u"again"_s); };
  show(u"a"_s);
  press(u"Cancel"_s);
  EXPECT_EQ(m_calls, (QStringList{u"a cancel"_s, u"a cancel"_s, u"again cancel"_s}));
  ASSERT_NE(openPanel(), nullptr);
  m_inCallback = nullptr;
  openPanel()->close();
  EXPECT_EQ(m_calls.sliced(3), QStringList{u"again cancel"_s});
}

TEST_F(FillInWindows, BearTheEndOfTheControllerWhileTheyGiveWay) {
  m_inCallback = [this] { m_controller.reset(); };
  show(u"a"_s);
  show(u"b"_s);
  EXPECT_EQ(m_calls, QStringList{u"a cancel"_s});
  EXPECT_EQ(openPanel(), nullptr);
}

TEST_F(FillInWindows, CancelAfterOneThatWasCompleted) {
  show(u"a"_s);
  press(u"Expand"_s);
  show(u"b"_s);
  openPanel()->close();
  EXPECT_EQ(m_calls, (QStringList{u"a complete x while open"_s, u"b cancel"_s}));
}

TEST_F(FillInWindows, GoWithTheirControllerWithoutACall) {
  show(u"a"_s);
  m_controller.reset();
  EXPECT_EQ(openPanel(), nullptr);
  EXPECT_EQ(m_calls, QStringList());
}

TEST_F(FillInWindows, BearTheEndOfTheControllerInsideTheCallback) {
  m_inCallback = [this] { m_controller.reset(); };
  show(u"a"_s);
  press(u"Expand"_s);
  EXPECT_EQ(m_calls, QStringList{u"a complete x while open"_s});
  EXPECT_EQ(openPanel(), nullptr);

  m_controller = std::make_unique<FillInWindowController>(m_harness.services());
  show(u"b"_s);
  press(u"Cancel"_s);
  EXPECT_EQ(m_calls.sliced(1), QStringList{u"b cancel"_s});

  m_controller = std::make_unique<FillInWindowController>(m_harness.services());
  show(u"c"_s);
  openPanel()->close();
  EXPECT_EQ(m_calls.sliced(2), QStringList{u"c cancel"_s});

  m_controller = std::make_unique<FillInWindowController>(m_harness.services());
  m_inCallback = [this] {
    if (m_calls.size() == 5) m_controller.reset();
  };
  show(u"d"_s);
  press(u"Cancel"_s);
  EXPECT_EQ(m_calls.sliced(3), (QStringList{u"d cancel"_s, u"d cancel"_s}));
}

TEST_F(FillInWindows, AreDeletedOnceTheirEventsAreDone) {
  show(u"a"_s);
  const QPointer<FillInPanel> panel(openPanel());
  press(u"Cancel"_s);
  EXPECT_TRUE(panel);
  QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_FALSE(panel);
}

TEST_F(FillInWindows, FloatInTheMiddleOfTheScreen) {
  show(u"a"_s);
  const FillInPanel& panel = *openPanel();
  EXPECT_TRUE(panel.windowFlags() & Qt::WindowStaysOnTopHint);
  EXPECT_TRUE(panel.windowFlags() & Qt::WindowCloseButtonHint);
  EXPECT_EQ(panel.size(), QSize(450, 550));
  EXPECT_EQ(panel.minimumSize(), QSize(350, 400));
  const QPoint distance = panel.geometry().center() - panel.screen()->availableGeometry().center();
  EXPECT_LE(distance.manhattanLength(), 4) << "but for the frame";
}

TEST_F(FillInWindows, CarryTheTitleOfTheSnippet) {
  show(u"a"_s, u"<b>\U0001F600 [*]"_s);
  EXPECT_EQ(openPanel()->windowHandle()->title(), u"Fill In - <b>\U0001F600 [*]"_s);
  show(u"b"_s, {});
  EXPECT_EQ(openPanel()->windowHandle()->title(), u"Fill In - "_s);
}

TEST_F(FillInWindows, AskForTheKeyboardOnceTheyAreOnTheScreen) {
  show(u"a"_s);
  ASSERT_TRUE(QTest::qWaitForWindowExposed(openPanel()));
  EXPECT_EQ(m_harness.journal.takeEntries(), QStringList{u"activate "_s});
  const auto front = m_harness.workspace.frontmostApplication();
  ASSERT_TRUE(front);
  EXPECT_EQ(front->nativeWindow, openPanel()->winId());
  EXPECT_EQ(front->processIdentifier, QCoreApplication::applicationPid());
  QApplication::processEvents();
  EXPECT_EQ(m_harness.journal.takeEntries(), QStringList()) << "once";
}

TEST_F(FillInWindows, StayWhenAnotherWindowIsTurnedTo) {
  show(u"a"_s);
  ASSERT_TRUE(QTest::qWaitForWindowActive(openPanel()));
  QWidget other;
  other.show();
  other.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
  EXPECT_NE(openPanel(), nullptr);
  EXPECT_EQ(m_calls, QStringList());
}

class FillInPanels : public testing::Test {
 protected:
  FillInPanel& open(const QString& replacement, const QRect& desk) {
    m_panel = std::make_unique<FillInPanel>(
        std::make_unique<StandaloneFillInForm>(
            FillInHarness::snippet(replacement), FolderColor::blue, m_harness.services(),
            [](const QMap<QString, QString>&) {}, [] {}),
        u"Fill In"_s);
    m_panel->fitInto(desk);
    m_panel->show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(m_panel.get()));
    return *m_panel;
  }

  [[nodiscard]] QRect placeOf(const QString& text) const {
    const QPushButton& shown = button(*m_panel, text);
    return {shown.mapTo(m_panel.get(), QPoint()), shown.size()};
  }

  FillInHarness m_harness;
  std::unique_ptr<FillInPanel> m_panel;
};

TEST_F(FillInPanels, ShowTheirButtonsOnALowScreen) {
  const QRect desk(0, 0, 640, 360);
  for (const QString& replacement :
       {u"plain"_s, u"{{field:A}} {{textarea:B}} {{dropdown:C:x,y}} {{?:D}}d{{/?}}"_s}) {
    const FillInPanel& panel = open(replacement, desk);
    EXPECT_LT(panel.height(), desk.height()) << "there is a frame too";
    EXPECT_TRUE(desk.contains(panel.frameGeometry()));
    for (const QString& text : {u"Cancel"_s, u"Expand"_s}) {
      EXPECT_TRUE(panel.rect().contains(placeOf(text))) << text.toStdString();
    }
    const auto& panes = *panel.findChild<QSplitter*>();
    EXPECT_GE(panes.y(), 0);
    int bottom = 0;
    for (int index = 0; index < panes.count(); ++index) {
      EXPECT_GE(panes.widget(index)->y(), bottom) << "one below the other";
      bottom = panes.widget(index)->geometry().bottom() + 1;
    }
    EXPECT_LE(bottom, panes.height());
  }
}

TEST_F(FillInPanels, KeepTheirSizesOnAScreenWithRoom) {
  const FillInPanel& panel = open(u"{{field:A}}"_s, {100, 50, 1280, 800});
  EXPECT_EQ(panel.size(), QSize(450, 550));
  EXPECT_EQ(panel.minimumSize(), QSize(350, 400));
  const auto& form = *panel.findChild<StandaloneFillInForm*>();
  EXPECT_EQ(form.minimumSizeHint(), QSize(350, 400));
}

}  // namespace
}  // namespace zarvy
