// Passwords that programs ask for in a terminal.

#include <cstdlib>
#include <fstream>
#include <unistd.h>

#include <QFile>

#include "e2e/behaviour/SecretTest.h"
#include "e2e/harness/Windows.h"

namespace zarvy::e2e {

using namespace Qt::Literals::StringLiterals;

namespace {

// Terminals that run the shell's script that is given as the last argument.
struct Terminal {
  std::string name;  // of its window
  std::string program;
  std::vector<std::string> arguments;
};

// What asks for a password, and says something of it in pointed brackets when it has done.
struct Prompt {
  std::string name;
  std::string command;
  int answers = 1;
};

const Prompt readSilently{"read",
                          R"sh(IFS= read -rsp "Password: " answer; echo "<$answer>" >&3)sh"};
const Prompt getpass{
    "getpass",
    R"sh(python3 -c "import getpass,os; os.write(3, f'<{getpass.getpass()}>'.encode())")sh"};

const Terminal xterm{"XTerm", "xterm", {"-e", "bash"}};
const Terminal kitty{
    "kitty", "kitty", {"--config", "NONE", "-o", "linux_display_server=x11", "bash"}};
const Terminal tmux{"XTerm", "xterm", {"-e", "tmux", "new", "bash"}};
const Terminal sakura{"Sakura", "sakura", {"-e", "bash"}};
// Two tabs, of which the one with the prompt is in front.
const Terminal konsole{"konsole",
                       "bash",
                       {"-c",
                        R"sh(echo 'command: sleep 600' > "$HOME/tabs"
          exec konsole --separate --tabs-from-file "$HOME/tabs" -e bash "$0")sh"}};

// Nobody asks root for a password.
std::string asOrdinaryUser(const std::string& command) {
  const std::string other = "setpriv --reuid=65534 --regid=65534 --clear-groups ";
  return "trap : INT; " + (::geteuid() == 0 ? other : std::string()) + command +
         "; echo '<end>' >&3";
}

class TerminalSecrets : public SecretTest {
 protected:
  // The command, and behind it a line that is shown as it is typed.
  void startTerminal(const Terminal& terminal, const Prompt& prompt) {
    startProgramWith({{trigger, u"Okay\n"_s}});
    m_folder = stage().makeFolder("terminal");
    Environment environment = stage().environment();
    environment["HOME"] = m_folder;  // with settings of its own
    environment["TMUX_TMPDIR"] = m_folder;
    std::ofstream(m_folder + "/.tmux.conf") << "set -g destroy-unattached on\n";
    const std::string script = m_folder + "/prompt.sh";
    std::ofstream(script) << "exec 3>'" << m_folder << "/said'; export FOLDER='" << m_folder
                          << "'; " << prompt.command
                          << "; IFS= read -r line; echo \"[$line]\" >&3; sleep 600";
    std::vector<std::string> arguments = terminal.arguments;
    arguments.push_back(script);
    m_terminal.emplace(ProcessSpecification{.program = terminal.program,
                                            .arguments = arguments,
                                            .environment = environment,
                                            .errorFile = m_folder + "/error",
                                            .descriptors = {}});
  }

  [[nodiscard]] QString said() const {
    QFile file(QString::fromStdString(m_folder + "/said"));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
  }

  void expectToBeSaid(const QString& text) {
    EXPECT_TRUE(waitUntil([&] { return said().contains(text); }, deadline)) << said().toStdString();
  }

  void answer(const QString& text) {
    person().type(text);
    expectPasswordNowhereInProgram();
    person().tap(XKB_KEY_Return);
  }

  std::string m_folder;
  std::optional<ChildProcess> m_terminal;
};

// What has the keyboard.
using Focus = xcb_window_t (*)(const XConnection&);

class TerminalSecretsWithThePointer : public TerminalSecrets,
                                      public testing::WithParamInterface<Focus> {};

// As without a window manager, or while a slow one has not said yet who is to have the keyboard.
TEST_P(TerminalSecretsWithThePointer, areNeitherExpandedNorKept) {
  startTerminal(xterm, readSilently);
  waitForToolTip(u"Zarvy: blocked by XTerm"_s);
  const XConnection& connection = stage().connection();
  const auto isInFront = [&] {
    nudgeWindowManager(connection);
    return activeWindow(connection) != XCB_WINDOW_NONE;
  };
  ASSERT_TRUE(waitUntil(isInFront, deadline));
  stage().windowManager().stop();
  xcb_warp_pointer(connection.get(), XCB_WINDOW_NONE, connection.root(), 0, 0, 0, 0, 5, 795);
  xcb_set_input_focus(connection.get(), XCB_INPUT_FOCUS_NONE, GetParam()(connection),
                      XCB_CURRENT_TIME);
  connection.synchronise();
  waitForToolTip(u"Zarvy"_s);
  xcb_warp_pointer(connection.get(), XCB_WINDOW_NONE, activeWindow(connection), 0, 0, 0, 0, 50, 50);
  connection.synchronise();
  waitForToolTip(u"Zarvy: blocked by XTerm"_s);
  answer(password + trigger);
  expectToBeSaid(u'<' + password + trigger + u'>');
  waitForToolTip(u"Zarvy"_s);
}

INSTANTIATE_TEST_SUITE_P(
    , TerminalSecretsWithThePointer,
    testing::Values([](const XConnection&) { return xcb_window_t{XCB_INPUT_FOCUS_POINTER_ROOT}; },
                    [](const XConnection& connection) { return connection.root(); }),
    [](const auto& row) { return row.index == 0 ? "followingIt" : "atTheRootWindow"; });

using TerminalAndPrompt = std::pair<Terminal, Prompt>;

class TerminalSecretsIn : public TerminalSecrets,
                          public testing::WithParamInterface<TerminalAndPrompt> {};

TEST_P(TerminalSecretsIn, areNeitherExpandedNorKept) {
  const auto& [terminal, prompt] = GetParam();
  startTerminal(terminal, prompt);
  waitForToolTip(u"Zarvy: blocked by "_s + QString::fromStdString(terminal.name));
  answer(password + trigger);
  expectToBeSaid(u'<' + password + trigger + u'>');
  waitForToolTip(u"Zarvy"_s);
  person().type(u"so "_s + trigger);
  expectToBeSaid(u"[so Okay]"_s);
  expectPasswordNowhereInProgram();
}

std::string nameOfTerminal(const testing::TestParamInfo<TerminalAndPrompt>& row) {
  const auto& [terminal, prompt] = row.param;
  const bool isTmux = terminal.arguments == tmux.arguments;
  return (isTmux ? "tmux" : terminal.name) + "_" + prompt.name;
}

INSTANTIATE_TEST_SUITE_P(
    , TerminalSecretsIn,
    testing::Values(TerminalAndPrompt{xterm, readSilently}, TerminalAndPrompt{xterm, getpass},
                    TerminalAndPrompt{kitty, readSilently}, TerminalAndPrompt{sakura, readSilently},
                    TerminalAndPrompt{konsole, readSilently}, TerminalAndPrompt{tmux, getpass}),
    nameOfTerminal);

// What people type passwords into. The password is wrong, and what asks does not say what it read.
class TerminalSecretsOf : public TerminalSecrets, public testing::WithParamInterface<Prompt> {};

// Who may do everything without being asked.
bool needsNoPassword(const Prompt& prompt) {
  return prompt.name == "sudo" && ::geteuid() != 0 && std::system("sudo -kn true") == 0;
}

TEST_P(TerminalSecretsOf, areNeitherExpandedNorKept) {
  if (needsNoPassword(GetParam())) GTEST_SKIP() << "this user is not asked for a password";
  startTerminal(xterm, GetParam());
  for (int answers = 0; answers < GetParam().answers; ++answers) {
    waitForToolTip(u"Zarvy: blocked by XTerm"_s);
    answer(password + trigger);
  }
  person().press(XKB_KEY_Control_L);
  person().tap(XKB_KEY_c);  // whoever asks once more
  person().releaseAll();
  expectToBeSaid(u"<end>"_s);
  waitForToolTip(u"Zarvy"_s);
  person().type(u"so "_s + trigger);
  expectToBeSaid(u"[so Okay]"_s);
  expectPasswordNowhereInProgram();
}

INSTANTIATE_TEST_SUITE_P(
    , TerminalSecretsOf,
    testing::Values(Prompt{"su", asOrdinaryUser("su -c true")},
                    Prompt{"sudo", asOrdinaryUser("sudo -k true")},
                    Prompt{"passwd", asOrdinaryUser("passwd")},
                    Prompt{"sshkeygen",
                           R"sh(trap : INT; ssh-keygen -q -t ed25519 -f "$FOLDER/key"
                                echo '<end>' >&3)sh",
                           2}),
    [](const auto& row) { return row.param.name; });

}  // namespace

}  // namespace zarvy::e2e
