// The icon in the tray and its menu, used with mouse and arrow keys.

#include <algorithm>

#include "e2e/behaviour/BehaviourTest.h"
#include "e2e/harness/SystemTray.h"
#include "e2e/harness/Windows.h"

namespace zarvy::e2e {

using namespace Qt::Literals::StringLiterals;

namespace {

const std::string windowClass = "Zarvy";

class Tray : public BehaviourTest {
 protected:
  void openMenu() {
    ASSERT_TRUE(m_tray.clickIconOf(windowClass));
    ASSERT_TRUE(m_tray.waitForMenuOf(windowClass, true));
  }

  // Chooses the menu's entry that stands at `place` from the bottom, from 1.
  void choose(int place) {
    openMenu();
    for (int step = 0; step < place; ++step) person().tap(XKB_KEY_Up);
    person().tap(XKB_KEY_Return);
    ASSERT_TRUE(m_tray.waitForMenuOf(windowClass, false));
  }

  // Waits until the program has printed `line` this often.
  [[nodiscard]] bool waitForLines(const std::string& line, int count) {
    return waitUntil(
        [&] {
          const auto lines = program().process().outputLines();
          return std::count(lines.begin(), lines.end(), line) >= count;
        },
        std::chrono::seconds(20));
  }

  SystemTray m_tray{stage().connection(), stage().environment(), stage().makeFolder("tray")};
};

TEST_F(Tray, pausesAndResumesExpansionAndEndsTheProgram) {
  start(TargetKind::qt6, {{u";ok"_s, u"Ωk"_s}});
  choose(2);
  ASSERT_TRUE(waitForLines("KeyboardMonitor: Stopped", 1));
  person().type(u";ok "_s);
  expectText(u";ok "_s);
  choose(2);
  ASSERT_TRUE(waitForLines("KeyboardMonitor: Started (NSEvent global monitoring)", 2));
  person().type(u";ok"_s);
  expectText(u";ok Ωk"_s);
  expectExpansions(1);
  choose(1);
  EXPECT_EQ(program().process().waitForExit(std::chrono::seconds(20)), ExitStatus{});
}

TEST_F(Tray, opensTheWindowsAndPutsThemInFront) {
  start(TargetKind::qt6, {{u";ok"_s, u"Ωk"_s}});
  for (const auto& [place, title] : {std::pair(6, "Manage Snippets"),
                                     std::pair(4, "Zarvy Settings"), std::pair(3, "Statistics")}) {
    choose(place);
    const auto window = waitForWindow(stage().connection(), title);
    ASSERT_TRUE(window.has_value()) << title;
    EXPECT_TRUE(waitUntil([&] { return activeWindow(stage().connection()) == window->id; },
                          std::chrono::seconds(20)))
        << title;
  }
}

TEST_F(Tray, hasShortcutsThatWorkInTheWindowsAndInTheOpenMenu) {
  start(TargetKind::qt6, {{u";ok"_s, u"Ωk"_s}});
  choose(3);
  const auto window = waitForWindow(stage().connection(), "Statistics");
  ASSERT_TRUE(window.has_value());
  ASSERT_TRUE(waitUntil([&] { return activeWindow(stage().connection()) == window->id; },
                        std::chrono::seconds(20)));
  person().press(XKB_KEY_Control_L);
  person().press(XKB_KEY_Shift_L);
  person().tap(XKB_KEY_P);
  person().releaseAll();
  EXPECT_TRUE(waitForLines("KeyboardMonitor: Stopped", 1));
  person().press(XKB_KEY_Control_L);
  person().tap(XKB_KEY_comma);
  person().releaseAll();
  EXPECT_TRUE(waitForWindow(stage().connection(), "Zarvy Settings").has_value());
  openMenu();
  person().press(XKB_KEY_Control_L);
  person().tap(XKB_KEY_q);
  person().releaseAll();
  EXPECT_EQ(program().process().waitForExit(std::chrono::seconds(20)), ExitStatus{});
}

}  // namespace

}  // namespace zarvy::e2e
