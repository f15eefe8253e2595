// What is typed into password fields, and into prompts that take the keyboard for themselves.

#include <algorithm>
#include <fstream>
#include <functional>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QUuid>

#include "e2e/behaviour/SecretTest.h"
#include "e2e/harness/AccessibleText.h"
#include "e2e/harness/Windows.h"
#include "support/MemoryReader.h"

namespace zarvy::e2e {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString heard = u"harmless-words"_s;

// Whether programs are told on the session bus that somebody listens to what they say of
// themselves.
class AccessibilitySwitch {
 public:
  explicit AccessibilitySwitch(const std::string& sessionAddress)
      : m_bus(QDBusConnection::connectToBus(QString::fromStdString(sessionAddress),
                                            QUuid::createUuid().toString())) {}
  ~AccessibilitySwitch() {
    const QString name = m_bus.name();
    m_bus = QDBusConnection(QString());
    QDBusConnection::disconnectFromBus(name);
  }
  AccessibilitySwitch(const AccessibilitySwitch&) = delete;
  AccessibilitySwitch& operator=(const AccessibilitySwitch&) = delete;

  [[nodiscard]] bool isOn() const {
    const QDBusMessage reply = m_bus.call(about(u"Get"_s));
    return reply.arguments().value(0).value<QDBusVariant>().variant().toBool();
  }

  void turnOff() const {
    auto message = about(u"Set"_s);
    message << QVariant::fromValue(QDBusVariant(false));
    m_bus.call(message);
  }

 private:
  static QDBusMessage about(const QString& member) {
    auto message = QDBusMessage::createMethodCall(u"org.a11y.Bus"_s, u"/org/a11y/bus"_s,
                                                  u"org.freedesktop.DBus.Properties"_s, member);
    message << u"org.a11y.Status"_s << u"IsEnabled"_s;
    return message;
  }

  QDBusConnection m_bus;
};

// What stands behind `name` in the latest line that begins with it.
QString latest(const ChildProcess& process, const std::string& name) {
  QString text;
  for (const std::string& line : process.outputLines()) {
    if (line.starts_with(name + " ")) text = QString::fromStdString(line.substr(name.size() + 1));
  }
  return text;
}

// The applications are there first, and the program when a test starts it.
class OlderSecrets : public SecretTest {
 protected:
  // As on a desktop where nothing else asks for accessibility.
  void SetUp() override {
    SecretTest::SetUp();
    m_accessibility.turnOff();
    ASSERT_FALSE(m_accessibility.isOn());
  }

  void startProgram() {
    startProgramWith({{trigger, u"Okay"_s}});
    ASSERT_TRUE(waitUntil([this] { return m_accessibility.isOn(); }, deadline));
  }

  [[nodiscard]] ChildProcess& startPrompt(const std::vector<std::string>& arguments = {}) {
    ChildProcess& prompt = startApplication(ZARVY_E2E_GRABBING_PROMPT, arguments);
    const auto isTaken = [](const std::string& line) { return line == "taken"; };
    EXPECT_TRUE(prompt.waitForLine(isTaken, deadline)) << "the prompt has not got the keyboard";
    return prompt;
  }

  [[nodiscard]] ChildProcess& startApplication(const std::string& path,
                                               const std::vector<std::string>& arguments = {}) {
    Environment environment = stage().environment();
    environment.erase("QT_LINUX_ACCESSIBILITY_ALWAYS_ON");
    environment.erase("AT_SPI_BUS_ADDRESS");
    m_application.emplace(ProcessSpecification{.program = path,
                                               .arguments = arguments,
                                               .environment = environment,
                                               .errorFile = stage().makeFolder("form") + "/error",
                                               .descriptors = {}});
    return *m_application;
  }

  // Types a letter until it is there, and takes it away again: the field with the focus is ready.
  void waitUntilReady(const std::function<QString()>& field) {
    const auto showsWhatIsTyped = [&] {
      person().type(u"x"_s);
      return waitUntil([&] { return !field().isEmpty(); }, std::chrono::seconds(2));
    };
    ASSERT_TRUE(waitUntil(showsWhatIsTyped, deadline)) << "the field is not ready";
    const auto isEmptied = [&] {
      person().tap(XKB_KEY_BackSpace);
      return waitUntil([&] { return field().isEmpty(); }, std::chrono::milliseconds(300));
    };
    ASSERT_TRUE(waitUntil(isEmptied, deadline)) << "the field cannot be emptied";
  }

  void expectField(const std::function<QString()>& field, const QString& text) {
    EXPECT_TRUE(waitUntil([&] { return field() == text; }, deadline))
        << "it holds " << field().toStdString();
  }

  // From the plain field of Qt's form, which is in front.
  void turnToSecretFieldOfForm() {
    person().press(XKB_KEY_Shift_L);
    person().tap(XKB_KEY_Tab);
    person().releaseAll();
    waitForToolTip(u"Zarvy: blocked by zarvy_e2e_qt6_form"_s);
  }

  // The password and the trigger arrive in the prompt, and nowhere else.
  void typeSecretsInto(ChildProcess& prompt) {
    const auto field = [&] { return latest(prompt, "prompt"); };
    person().type(password);
    expectField(field, password);
    expectPasswordNowhereInProgram();
    person().type(trigger);
    expectField(field, password + trigger);
  }

  void answer(ChildProcess& prompt) {
    person().tap(XKB_KEY_Return);
    EXPECT_EQ(prompt.waitForExit(deadline), ExitStatus{});
    waitForToolTip(u"Zarvy"_s);
  }

  AccessibilitySwitch m_accessibility{stage().environment().at("DBUS_SESSION_BUS_ADDRESS")};
  std::optional<ChildProcess> m_application;
};

class Secrets : public OlderSecrets {
 protected:
  void SetUp() override {
    OlderSecrets::SetUp();
    startProgram();
  }
};

TEST_F(Secrets, InAPasswordFieldOfQtAreNeitherExpandedNorKeptAnywhere) {
  ChildProcess& form = startApplication(ZARVY_E2E_QT6_FORM);
  const auto plain = [&] { return latest(form, "plain"); };
  const auto secret = [&] { return latest(form, "secret"); };
  waitUntilReady(plain);
  person().type(heard);
  expectField(plain, heard);
  EXPECT_TRUE(waitUntil([&] { return formsInProgram(heard).contains("UTF-16"); }, deadline))
      << "the search does not find what is in the buffer";
  turnToSecretFieldOfForm();
  EXPECT_EQ(formsInProgram(heard), QList<QByteArray>()) << "what was typed before is still there";
  person().type(password);
  expectField(secret, password);
  expectPasswordNowhereInProgram();
  person().type(trigger);
  expectField(secret, password + trigger);
  person().tap(XKB_KEY_Tab);
  waitForToolTip(u"Zarvy"_s);
  person().tap(XKB_KEY_End);
  person().type(u" ;ok"_s);
  expectField(plain, heard + u" Okay"_s);
  expectExpansions(1);
  EXPECT_EQ(secret(), password + trigger);
  expectPasswordNowhereInProgram();
  EXPECT_EQ(program().terminate(), ExitStatus{});
  EXPECT_FALSE(m_accessibility.isOn()) << "programs are still told that somebody listens";
}

TEST_F(Secrets, InAPasswordFieldOfGtkAreNeitherExpandedNorKeptAnywhere) {
  ChildProcess& form =
      startApplication("yad", {"--form", "--field=Secret:H", "--field=Plain", "--separator=|"});
  waitForToolTip(u"Zarvy: blocked by Yad"_s);
  AccessibleText text(stage().environment().at("AT_SPI_BUS_ADDRESS"));
  const auto field = [&] { return text.state(PositionUnit::codePoint).text; };
  ASSERT_TRUE(waitUntil([&] { return text.find(form.pid()); }, deadline));
  person().type(password);
  // It shows a dot for each character.
  EXPECT_TRUE(waitUntil([&] { return field().size() == password.size(); }, deadline));
  expectPasswordNowhereInProgram();
  person().type(trigger);
  person().tap(XKB_KEY_Tab);
  waitForToolTip(u"Zarvy"_s);
  ASSERT_TRUE(waitUntil([&] { return text.find(form.pid()); }, deadline));
  person().type(trigger);
  expectField(field, u"Okay"_s);
  expectExpansions(1);
  expectPasswordNowhereInProgram();
  person().tap(XKB_KEY_Return);
  const std::string result = (password + trigger + u"|Okay|"_s).toStdString();
  EXPECT_TRUE(form.waitForLine([&](const std::string& line) { return line == result; }, deadline));
}

TEST_F(Secrets, InAPromptThatHasTheKeyboardForItselfAreNeitherExpandedNorKeptAnywhere) {
  stage().startTarget(TargetKind::qt6);
  person().type(u"a;ok"_s);
  expectText(u"aOkay"_s);
  person().type(u" "_s);
  expectText(u"aOkay "_s);
  ChildProcess& prompt = startPrompt();
  waitForToolTip(u"Zarvy: blocked by zarvy_e2e_grabbing_prompt"_s);
  typeSecretsInto(prompt);
  answer(prompt);
  person().type(trigger);
  expectText(u"aOkay Okay"_s);
  expectExpansions(2);
  expectPasswordNowhereInProgram();
}

TEST_F(Secrets, InAPromptThatTheWindowManagerDoesNotKnowAreNotKeptAndItIsNamed) {
  stage().startTarget(TargetKind::qt6);
  ChildProcess& prompt = startPrompt({"--unmanaged"});
  // The system keeps the first fifteen characters of a process's name.
  waitForToolTip(u"Zarvy: blocked by zarvy_e2e_grabb"_s);
  typeSecretsInto(prompt);
  answer(prompt);
  person().type(trigger);
  expectText(u"Okay"_s);
}

TEST_F(OlderSecrets, InAPromptThatHadTheKeyboardBeforeTheProgramAreNeitherExpandedNorKept) {
  stage().startTarget(TargetKind::qt6);
  ChildProcess& prompt = startPrompt();
  startProgram();
  waitForToolTip(u"Zarvy: blocked by zarvy_e2e_grabbing_prompt"_s);
  typeSecretsInto(prompt);
  answer(prompt);
  person().type(trigger);
  expectText(u"Okay"_s);
  expectExpansions(1);
  expectPasswordNowhereInProgram();
}

TEST_F(OlderSecrets, InAPasswordFieldOfGtkThatHadTheKeyboardBeforeTheProgramAreNotKept) {
  ChildProcess& form =
      startApplication("yad", {"--form", "--field=Secret:H", "--field=Plain", "--separator=|"});
  AccessibleText text(stage().environment().at("AT_SPI_BUS_ADDRESS"));
  ASSERT_TRUE(waitUntil([&] { return text.find(form.pid()); }, deadline));
  startProgram();
  waitForToolTip(u"Zarvy: blocked by Yad"_s);
  person().type(password);
  const auto length = [&] { return text.state(PositionUnit::codePoint).text.size(); };
  EXPECT_TRUE(waitUntil([&] { return length() == password.size(); }, deadline));
  expectPasswordNowhereInProgram();
  person().tap(XKB_KEY_Tab);
  waitForToolTip(u"Zarvy"_s);
}

// Two fields; the title of the window tells what is in them.
constexpr const char* pageWithPassword = R"(<!doctype html><title>ready</title>
<input autofocus oninput="document.title = 'plain ' + value">
<input type="password" oninput="document.title = 'secret ' + value.length">
)";

TEST_F(OlderSecrets, InAPageOfChromiumAreNotKeptWhereBrowsersAreAskedForThem) {
  startProgramWith({{trigger, u"Okay"_s}}, "[General]\nZarvyAskBrowsersForPasswordFields=true\n");
  ASSERT_TRUE(waitUntil([this] { return m_accessibility.isOn(); }, deadline));
  const std::string folder = stage().makeFolder("chromium");
  std::ofstream(folder + "/page.html") << pageWithPassword;
  static_cast<void>(startApplication(
      "chromium",
      {"--no-sandbox", "--disable-gpu", "--no-first-run", "--password-store=basic",
       "--disable-background-networking", "--disable-component-update", "--disable-sync",
       "--disable-dev-shm-usage", "--ozone-platform=x11", "--user-data-dir=" + folder + "/profile",
       "--app=file://" + folder + "/page.html"}));
  const auto isTitled = [this](const std::string& title) {
    const auto windows = managedWindows(stage().connection());
    return std::any_of(windows.begin(), windows.end(),
                       [&](const ManagedWindow& window) { return window.title == title; });
  };
  const auto showsWhatIsTyped = [&] {
    person().type(u"x"_s);
    return waitUntil([&] { return !isTitled("ready"); }, std::chrono::seconds(2));
  };
  ASSERT_TRUE(waitUntil([&] { return isTitled("ready"); }, std::chrono::seconds(60)));
  ASSERT_TRUE(waitUntil(showsWhatIsTyped, std::chrono::seconds(60)));
  person().tap(XKB_KEY_Tab);
  waitForToolTip(u"Zarvy: blocked by Chromium"_s);
  person().type(password);
  EXPECT_TRUE(
      waitUntil([&] { return isTitled("secret " + std::to_string(password.size())); }, deadline));
  expectPasswordNowhereInProgram();
}

TEST_F(Secrets, InTheDialogOfGnuPgAreNeitherExpandedNorKept) {
  ChildProcess& dialog =
      startApplication("bash", {"-c", "echo GETPIN | pinentry-qt --display \"$DISPLAY\""});
  waitForToolTip(u"Zarvy: blocked by pinentry-qt"_s);
  person().type(password + trigger);
  expectPasswordNowhereInProgram();
  person().tap(XKB_KEY_Return);
  const std::string answer = "D " + (password + trigger).toStdString();
  EXPECT_TRUE(
      dialog.waitForLine([&](const std::string& line) { return line == answer; }, deadline));
  waitForToolTip(u"Zarvy"_s);
  expectPasswordNowhereInProgram();
}

// Root's programs give up what makes them root's: these can read everything.
TEST_F(OlderSecrets, CannotBeReadInTheMemoryOfTheProgramByOtherPrograms) {
  const bool isRoot = ::geteuid() == 0;
  ProgramUnderTest ordinary(
      {.program = isRoot ? "setpriv" : programPath(),
       .environment = stage().environment(),
       .homeFolder = stage().makeFolder("ordinary"),
       .arguments = isRoot ? std::vector<std::string>{"--bounding-set=-all", "--inh-caps=-all",
                                                      programPath()}
                           : std::vector<std::string>{}});
  ordinary.writeLibrary({{trigger, u"Okay"_s}});
  ordinary.start();
  const pid_t process = ordinary.process().pid();
  EXPECT_TRUE(waitUntil([&] { return memoryAccess(process) == MemoryAccess::denied; }, deadline));
}

TEST_F(Secrets, DoNotKeepOtherApplicationsFromBeingHeard) {
  ChildProcess& form = startApplication(ZARVY_E2E_QT6_FORM);
  const auto plain = [&] { return latest(form, "plain"); };
  waitUntilReady(plain);
  turnToSecretFieldOfForm();
  form.sendSignal(SIGSTOP);  // it cannot tell that it has lost the keyboard
  stage().startTarget(TargetKind::xterm);
  waitForToolTip(u"Zarvy"_s);
  person().type(trigger);
  expectText(u"Okay"_s);
}

TEST_F(Secrets, StaySoThoughAnotherProgramSaysThatItHasTheKeyboard) {
  ChildProcess& form = startApplication(ZARVY_E2E_QT6_FORM);
  const auto plain = [&] { return latest(form, "plain"); };
  const auto secret = [&] { return latest(form, "secret"); };
  waitUntilReady(plain);
  turnToSecretFieldOfForm();
  ChildProcess liar({.program = ZARVY_E2E_LYING_APPLICATION,
                     .arguments = {stage().environment().at("AT_SPI_BUS_ADDRESS")},
                     .environment = stage().environment(),
                     .errorFile = stage().makeFolder("liar") + "/error",
                     .descriptors = {}});
  const auto isTold = [](const std::string& line) { return line == "told"; };
  ASSERT_TRUE(liar.waitForLine(isTold, deadline));
  person().type(password);
  expectField(secret, password);
  expectPasswordNowhereInProgram();
  person().type(trigger);
  expectField(secret, password + trigger);
  person().tap(XKB_KEY_Tab);
  waitForToolTip(u"Zarvy"_s);
  person().type(trigger);
  expectField(plain, u"Okay"_s);
  expectExpansions(1);
  expectPasswordNowhereInProgram();
}

}  // namespace
}  // namespace zarvy::e2e
