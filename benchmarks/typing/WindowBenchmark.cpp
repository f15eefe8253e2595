#include "typing/WindowBenchmark.h"

#include <functional>
#include <stdexcept>

#include <QLocale>

#include "e2e/harness/Stage.h"
#include "e2e/harness/WaitUntil.h"
#include "e2e/harness/Windows.h"
#include "typing/Figure.h"
#include "typing/KeyObserver.h"
#include "typing/Statistics.h"
#include "typing/WindowObserver.h"

namespace zarvy::benchmarks {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int openings = 50;
constexpr auto patience = std::chrono::seconds(30);

// Control, Alt and Space: window managers keep Alt and Space for a menu of their own.
const std::string settings =
    R"({"hideDockIcon":false,"iCloudSyncEnabled":false,"launchAtLogin":false,"soundEnabled":false,)"
    R"("quickSearchKeyCode":49,"quickSearchModifiers":786432})";

// One snippet asks for a field; ";d" is the end of no other trigger.
std::vector<e2e::TestSnippet> libraryOf(int count) {
  std::vector<e2e::TestSnippet> snippets{{u";d"_s, u"Dear {{field:Name}}, thank you."_s}};
  while (static_cast<int>(snippets.size()) < count) {
    const QString number = QString::number(snippets.size());
    snippets.push_back({u";x"_s + number, u"Thank you for your letter no. "_s + number});
  }
  return snippets;
}

// What somebody does to have a window.
struct Call {
  std::function<void()> press;
  std::size_t keys;  // without modifiers; the last one is what the window is to follow
};

class WindowsInOneLibrary {
 public:
  WindowsInOneLibrary(const std::string& program, int count)
      : m_stage({.layouts = "us"}),
        m_keys(m_stage.server().display()),
        m_windows(m_stage.server().display()),
        m_library(QLocale(u"en_US"_s).toString(count) + u" snippets"_s) {
    e2e::ProgramUnderTest& started = m_stage.makeProgram(program);
    started.writeLibrary(libraryOf(count));
    started.writeDocument("settings.json", settings);
    started.start();
    m_stage.startTarget(e2e::TargetKind::qt6);
  }

  void measure() {
    m_application = e2e::activeWindow(m_stage.connection());
    measure("hot key to visible panel", {.press = [this] { pressHotKey(); }, .keys = 1}, 100);
    measure("trigger to visible form",
            {.press = [this] { m_stage.person().type(u";d"_s); }, .keys = 2}, {});
  }

 private:
  void pressHotKey() {
    e2e::Person& person = m_stage.person();
    person.press(XKB_KEY_Control_L);
    person.press(XKB_KEY_Alt_L);
    person.tap(XKB_KEY_space);
    person.release(XKB_KEY_Alt_L);
    person.release(XKB_KEY_Control_L);
  }

  void measure(const std::string& what, const Call& call, std::optional<double> budget) {
    static_cast<void>(open(call));  // what is made once
    std::vector<double> times;
    times.reserve(openings);
    for (int count = 0; count < openings; ++count) times.push_back(open(call).count());
    const std::string title = what + ", " + m_library.toStdString();
    print({title + ", median of 50", median(times), "ms", budget});
    print({title + ", slowest of 50", quantile(times, 1), "ms"});
  }

  // From the last key of `call` to the window, which is closed again.
  [[nodiscard]] Milliseconds open(const Call& call) {
    m_stage.target().clear();
    m_keys.forget();
    m_windows.forget();
    call.press();
    const auto appearance = m_windows.waitForWindow();
    const KeyRecord record =
        m_keys.waitFor([&](const KeyRecord& keys) { return keys.size() >= call.keys; });
    const Milliseconds time = appearance - record.back().arrival;
    m_stage.person().tap(XKB_KEY_Escape);
    m_windows.waitUntilGone();
    const auto isBack = [this] { return e2e::activeWindow(m_stage.connection()) == m_application; };
    if (!e2e::waitUntil(isBack, patience)) {
      throw std::runtime_error("the keyboard does not come back to the application");
    }
    return time;
  }

  e2e::Stage m_stage;
  KeyObserver m_keys;
  WindowObserver m_windows;
  QString m_library;
  xcb_window_t m_application = XCB_WINDOW_NONE;
};

}  // namespace

void measureWindows(const std::string& program) {
  for (const int count : {10, 100'000}) WindowsInOneLibrary(program, count).measure();
}

}  // namespace zarvy::benchmarks
