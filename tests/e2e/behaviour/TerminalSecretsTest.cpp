// Passwords that programs ask for in a terminal.

#include <fstream>

#include <QFile>

#include "e2e/behaviour/SecretTest.h"

namespace zarvy::e2e {

using namespace Qt::Literals::StringLiterals;

namespace {

// Terminals that run a command of the shell given as the last argument.
struct Terminal {
  std::string name;  // of its window
  std::string program;
  std::vector<std::string> arguments;
};

// What asks for a password, and says "<password|trigger>" of what it has read.
struct Prompt {
  std::string name;
  std::string command;
};

const Prompt readSilently{"read",
                          R"sh(IFS= read -rsp "Password: " answer; echo "<$answer>" >&3)sh"};
const Prompt getpass{
    "getpass",
    R"sh(python3 -c "import getpass,os; os.write(3, f'<{getpass.getpass()}>'.encode())")sh"};
const Prompt sshKeygen{"sshkeygen",
                       R"sh(ssh-keygen -q -t ed25519 -f "$FOLDER/key"; echo "<key>" >&3)sh"};

const Terminal xterm{"XTerm", "xterm", {"-e", "bash", "-c"}};
const Terminal kitty{
    "kitty", "kitty", {"--config", "NONE", "-o", "linux_display_server=x11", "bash", "-c"}};
const Terminal tmux{"XTerm", "xterm", {"-e", "tmux", "new"}};

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
    const std::string script = "exec 3>'" + m_folder + "/said'; export FOLDER='" + m_folder +
                               "'; " + prompt.command +
                               "; IFS= read -r line; echo \"[$line]\" >&3; sleep 600";
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
  return (isTmux ? "tmux" : terminal.program) + "_" + prompt.name;
}

INSTANTIATE_TEST_SUITE_P(, TerminalSecretsIn,
                         testing::Values(TerminalAndPrompt{xterm, readSilently},
                                         TerminalAndPrompt{xterm, getpass},
                                         TerminalAndPrompt{kitty, readSilently},
                                         TerminalAndPrompt{tmux, getpass}),
                         nameOfTerminal);

// Which asks twice.
TEST_F(TerminalSecrets, ofAKeyAreNotKept) {
  startTerminal(xterm, sshKeygen);
  waitForToolTip(u"Zarvy: blocked by XTerm"_s);
  answer(password);
  answer(password);
  expectToBeSaid(u"<key>"_s);
  waitForToolTip(u"Zarvy"_s);
  expectPasswordNowhereInProgram();
}

}  // namespace

}  // namespace zarvy::e2e
