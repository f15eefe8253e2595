// Starts, ends and interruptions of the program.

#include <csignal>
#include <cstdlib>

#include <QFile>

#include <gmock/gmock.h>
#include <xcb/xinput.h>

#include "e2e/behaviour/BehaviourTest.h"
#include "e2e/harness/InputDevices.h"
#include "e2e/harness/SystemTray.h"
#include "e2e/harness/Windows.h"

namespace zarvy::e2e {

using namespace Qt::Literals::StringLiterals;

namespace {

const std::string mainTitle = "Manage Snippets";

// There is no tray on this desktop.
class LifeCycle : public BehaviourTest {
 protected:
  // Starts the program once more, for the same user, and waits until that has ended.
  void startAgain(const Environment& changes = {}) {
    ProgramUnderTest again({.program = programPath(),
                            .environment = stage().environment(),
                            .homeFolder = program().homeFolder(),
                            .region = changes});
    again.launch();
    EXPECT_EQ(again.process().waitForExit(std::chrono::seconds(20)), ExitStatus{});
    EXPECT_THAT(again.process().outputLines(), testing::ElementsAre("Zarvy is running already."));
  }

  // A window of that title comes, and sooner or later it is in the taskbar or not.
  void expectInTaskbar(const std::string& title, bool expected) {
    ASSERT_TRUE(waitForWindow(stage().connection(), title).has_value());
    EXPECT_TRUE(waitUntil(
        [&] {
          const auto window = waitForWindow(stage().connection(), title);
          return window && window->isInTaskbar == expected;
        },
        std::chrono::seconds(20)))
        << title;
  }

  void expectExpansion() {
    target().clear();
    person().type(u" ;ok"_s);
    expectText(u" Ωk"_s);
  }
};

TEST_F(LifeCycle, showsItsWindowWhereItIsStartedAgain) {
  start(TargetKind::qt6, {{u";ok"_s, u"Ωk"_s}});
  startAgain();
  const auto window = waitForWindow(stage().connection(), mainTitle);
  ASSERT_TRUE(window.has_value());
  startAgain();
  EXPECT_TRUE(closeWindow(stage().connection(), *window));
  startAgain();
  EXPECT_TRUE(waitForWindow(stage().connection(), mainTitle).has_value());
  EXPECT_TRUE(program().process().isRunning());
}

TEST_F(LifeCycle, lendsItsWindowAPlaceInTheTaskbarWhereItHasNone) {
  const std::string form = "Fill In - Snippet 1";
  ProgramUnderTest& hidden = stage().makeProgram(programPath());
  hidden.writeLibrary({{u";d"_s, u"Dear {{field:Name}}"_s}});
  hidden.writeSettings({.hideDockIcon = true});
  hidden.start();
  stage().startTarget(TargetKind::qt6);
  person().type(u";d"_s);
  expectInTaskbar(form, false);
  ASSERT_TRUE(closeWindow(stage().connection(), *waitForWindow(stage().connection(), form)));
  startAgain();
  expectInTaskbar(mainTitle, true);
  ASSERT_TRUE(closeWindow(stage().connection(), *waitForWindow(stage().connection(), mainTitle)));
}

TEST_F(LifeCycle, isNotHeldUpByAStoppedInstance) {
  start(TargetKind::qt6, {{u";ok"_s, u"Ωk"_s}});
  program().process().sendSignal(SIGSTOP);
  startAgain();
  program().process().sendSignal(SIGCONT);
  EXPECT_TRUE(waitForWindow(stage().connection(), mainTitle).has_value()) << "as soon as it can";
}

// What starts programs at a time or from afar knows no folder of the session.
TEST_F(LifeCycle, isStartedOnceHoweverItIsStarted) {
  start(TargetKind::qt6, {{u";ok"_s, u"Ωk"_s}});
  startAgain({{"XDG_RUNTIME_DIR", ""}});
  EXPECT_TRUE(waitForWindow(stage().connection(), mainTitle).has_value());
  startAgain({{"XDG_RUNTIME_DIR", stage().makeFolder("run")}});
  startAgain({{"TMPDIR", stage().makeFolder("tmp")}});
  EXPECT_TRUE(program().process().isRunning());
}

// The one that ends waits for a disk for a while.
TEST_F(LifeCycle, takesOverFromOneThatIsStillEnding) {
  ProgramUnderTest& next = stage().makeProgram(programPath());
  next.writeLibrary({{u";ok"_s, u"Ωk"_s}});
  auto environment = stage().environment();
  environment["LD_PRELOAD"] = ZARVY_E2E_TROUBLED_DISK;
  environment["ZARVY_TROUBLED_FOLDER"] = next.dataFolder();
  ProgramUnderTest ending(
      {.program = programPath(), .environment = environment, .homeFolder = next.homeFolder()});
  ending.writeDocument(".trouble", "silent");
  SystemTray tray(stage().connection(), stage().environment(), stage().makeFolder("tray"));
  ending.launch();
  ASSERT_TRUE(tray.clickIconOf("Zarvy")) << "it is up";
  ending.process().sendSignal(SIGTERM);
  next.start();
  EXPECT_EQ(ending.process().waitForExit(std::chrono::seconds(20)), ExitStatus{});
  stage().startTarget(TargetKind::qt6);
  expectExpansion();
  EXPECT_EQ(next.terminate(), ExitStatus{});
}

TEST_F(LifeCycle, startsAgainAfterOneThatWasKilled) {
  start(TargetKind::qt6, {{u";ok"_s, u"Ωk"_s}});
  program().kill();
  program().start();
  startAgain();
  EXPECT_TRUE(waitForWindow(stage().connection(), mainTitle).has_value());
  ASSERT_TRUE(closeWindow(stage().connection(), *waitForWindow(stage().connection(), mainTitle)));
  expectExpansion();
}

TEST_F(LifeCycle, endsWhereTheSoundServerDoesNotAnswer) {
  auto environment = stage().environment();
  environment["LD_PRELOAD"] = ZARVY_E2E_SILENT_SOUND_SERVER;
  ProgramUnderTest noisy({.program = programPath(),
                          .environment = environment,
                          .homeFolder = stage().makeFolder("noisy")});
  noisy.writeLibrary({{u";ok"_s, u"Ωk"_s}});
  noisy.writeSettings({.soundEnabled = true});
  noisy.start();
  stage().startTarget(TargetKind::qt6);
  expectExpansion();
  expectExpansion();
  EXPECT_EQ(noisy.terminate(), ExitStatus{});
}

// Holds up a process that is no child of this one, for as long as the object lives.
class Freeze {
 public:
  explicit Freeze(pid_t process) : m_process(process) { ::kill(m_process, SIGSTOP); }
  ~Freeze() { ::kill(m_process, SIGCONT); }
  Freeze(const Freeze&) = delete;
  Freeze& operator=(const Freeze&) = delete;

 private:
  const pid_t m_process;
};

// The terminal has nothing to do with that bus; toolkits that have may hang with it.
TEST_F(LifeCycle, startsAndEndsWhereTheAccessibilityBusDoesNotAnswer) {
  stage().startTarget(TargetKind::xterm);
  const Freeze freeze(stage().bus().accessibilityProcess());
  stage().startProgram(programPath(), {{u";ok"_s, u"Ωk"_s}});
  expectExpansion();
  startAgain();
  EXPECT_TRUE(waitForWindow(stage().connection(), mainTitle).has_value());
  EXPECT_EQ(program().terminate(), ExitStatus{});
}

TEST_F(LifeCycle, endsWhereTheDisplayDoesNotAnswer) {
  start(TargetKind::qt6, {{u";ok"_s, u"Ωk"_s}});
  expectExpansion();
  const Freeze freeze(stage().server().pid());
  EXPECT_TRUE(program().terminate().has_value());
}

// Ten commands of four seconds each, which an expansion waits for.
TEST_F(LifeCycle, endsInTheMiddleOfALongExpansion) {
  const QString mark = QString::fromStdString(stage().makeFolder("long") + "/begun");
  const QString command = u"{{shell:touch '%1'; sleep 4}}"_s.arg(mark);
  start(TargetKind::qt6, {{u";lo"_s, command.repeated(10)}});
  person().type(u";lo"_s);
  ASSERT_TRUE(waitUntil([&] { return QFile::exists(mark); }, std::chrono::seconds(30)));
  EXPECT_EQ(program().terminate(), ExitStatus{.exitCode = EXIT_FAILURE});
}

// As a machine does that is suspended and resumed.
TEST_F(LifeCycle, goesOnAfterItWasStopped) {
  start(TargetKind::qt6, {{u";ok"_s, u"Ωk"_s}});
  program().process().sendSignal(SIGSTOP);
  person().type(u"some words "_s);
  program().process().sendSignal(SIGCONT);
  person().type(u";ok"_s);
  expectText(u"some words Ωk"_s);
  expectExpansion();
}

// As on a machine that is too busy to expand a trigger before the next letters come.
TEST_F(LifeCycle, deletesTheTriggerBehindWhichSomebodyTypedOnWhileItWasStopped) {
  for (const TargetKind kind : {TargetKind::xterm, TargetKind::qt6}) {
    start(kind, {{u";ok"_s, u"Ωk{{cursor}}!"_s}});
    program().process().sendSignal(SIGSTOP);
    person().type(u"so ;ok and"_s);
    program().process().sendSignal(SIGCONT);
    const EditorState expected{.text = u"so Ωk and!"_s, .caret = 9};
    EXPECT_TRUE(settlesAt(target(), expected)) << complaintAbout(expected, target().state());
  }
}

// Takes the server's own keyboard away, as pulling its plug does, and puts it back.
class Replugging {
 public:
  explicit Replugging(const XConnection& connection)
      : m_connection(connection), m_keyboard(serverKeyboardId(connection)) {}

  void unplug() const {
    struct {
      xcb_input_detach_slave_t change;
    } request{};
    request.change.type = XCB_INPUT_HIERARCHY_CHANGE_TYPE_DETACH_SLAVE;
    request.change.len = sizeof request / 4;
    request.change.deviceid = m_keyboard;
    change(&request);
  }

  void plugIn() const {
    struct {
      xcb_input_attach_slave_t change;
    } request{};
    request.change.type = XCB_INPUT_HIERARCHY_CHANGE_TYPE_ATTACH_SLAVE;
    request.change.len = sizeof request / 4;
    request.change.deviceid = m_keyboard;
    request.change.master = coreKeyboard;
    change(&request);
  }

 private:
  static constexpr std::uint16_t coreKeyboard = 3;

  void change(const void* request) const {
    xcb_input_xi_change_hierarchy(m_connection.get(), 1,
                                  static_cast<const xcb_input_hierarchy_change_t*>(request));
    m_connection.synchronise();
  }

  const XConnection& m_connection;
  const std::uint16_t m_keyboard;
};

TEST_F(LifeCycle, hearsAKeyboardThatIsPluggedInLater) {
  start(TargetKind::qt6, {{u";ok"_s, u"Ωk"_s}});
  const Replugging keyboard(stage().connection());
  keyboard.unplug();
  expectExpansion();
  keyboard.plugIn();
  target().clear();
  person().type(u" ;ok"_s, {.body = Body::serverKeyboard});
  expectText(u" Ωk"_s);
  expectNothingHeld();
}

}  // namespace
}  // namespace zarvy::e2e
