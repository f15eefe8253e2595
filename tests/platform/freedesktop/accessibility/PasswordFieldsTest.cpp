#include <atomic>
#include <memory>
#include <optional>
#include <thread>
#include <unistd.h>

#include <QCoreApplication>

#include <gtest/gtest.h>

#include "platform/freedesktop/accessibility/ComesTrue.h"
#include "platform/freedesktop/accessibility/FakeApplication.h"
#include "platform/freedesktop/accessibility/FakeBus.h"
#include "platform/freedesktop/accessibility/FakeLauncher.h"
#include "platform/freedesktop/accessibility/FakeRegistry.h"
#include "platform/freedesktop/accessibility/PasswordFields.h"
#include "support/QtPrinters.h"

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace zarvy {
namespace {

constexpr uint passwordText = 40;
constexpr uint entry = 79;

const QString secretField = u"/secret"_s;
const QString plainField = u"/plain"_s;

// Longer than any test takes.
constexpr std::chrono::milliseconds endless = 1h;

class PasswordFieldsTest : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    static int count = 1;
    static char name[] = "zarvy_accessibility_tests";
    static char* arguments[] = {name, nullptr};
    s_application = std::make_unique<QCoreApplication>(count, arguments);
  }
  static void TearDownTestSuite() { s_application.reset(); }

  void expectSecret() {
    EXPECT_TRUE(comesTrue([&] { return m_fields->isSecureEventInputEnabled(); }));
    EXPECT_TRUE(m_fields->mustNotBeHeard());
  }
  void expectDoubt() {
    EXPECT_TRUE(comesTrue([&] { return m_fields->mustNotBeHeard(); }));
    EXPECT_FALSE(m_fields->isSecureEventInputEnabled());
  }
  void expectOpen() {
    EXPECT_TRUE(comesTrue([&] { return !m_fields->mustNotBeHeard(); }));
    EXPECT_FALSE(m_fields->isSecureEventInputEnabled());
  }

  // Returns once the fields are being followed on the accessibility bus.
  void listen(std::chrono::milliseconds patience = endless) {
    startListening(patience);
    ASSERT_TRUE(comesTrue([&] { return m_registry->wantedEvents().size() >= 4; }));
  }

  void startListening(std::chrono::milliseconds patience = endless) {
    m_fields.emplace(PasswordFields::Options{.patience = patience,
                                             .sessionBusAddress = m_address,
                                             .pauseWithoutBus = std::chrono::milliseconds(10),
                                             .wakesBrowsers = m_wakesBrowsers,
                                             .ownProcess = m_ownProcess});
    m_fields->start([this] { ++m_secretCount; },
                    [this] { m_endedWhileUnheard = m_fields->mustNotBeHeard(); },
                    [this](qint64) { return m_liesToCome == 0 || m_liesToCome-- == 0; });
  }

  // While this waits for the other thread, the fakes go on answering.
  void stopListening() {
    std::atomic<bool> hasStopped = false;
    std::thread stopping([&] {
      m_fields->stop();
      hasStopped = true;
    });
    EXPECT_TRUE(comesTrue([&] { return hasStopped.load(); }));
    stopping.join();
  }

  // What was told on the bus has been looked at: behind it the registry comes once more, and is
  // asked for events.
  void awaitWhatWasTold() {
    m_registry.reset();
    m_registry.emplace(m_accessibility->address());
    ASSERT_TRUE(comesTrue([&] { return m_registry->wantedEvents().size() >= 4; }));
  }

  // The field gets the keyboard, and is known for what it is.
  void enter(FakeApplication& application, const QString& field) {
    const int questions = application.questionCount();
    application.setFocused(field);
    application.tellFocus(field, true);
    ASSERT_TRUE(comesTrue([&] { return application.questionCount() > questions; }));
  }

  FakeApplication& makeApplication(std::optional<FakeApplication>& application) {
    application.emplace(m_accessibility->address());
    application->setRole(secretField, passwordText);
    application->setRole(plainField, entry);
    return *application;
  }

  // A password field has the keyboard, and what `liar` says next cannot be true.
  void enterPasswordFieldBeside(std::optional<FakeApplication>& liar,
                                std::chrono::milliseconds patience = endless) {
    makeApplication(liar);
    listen(patience);
    enter(m_app, secretField);
    expectSecret();
    m_liesToCome = 1;
  }

  static inline std::unique_ptr<QCoreApplication> s_application;

  std::optional<BusDaemon> m_session{std::in_place};
  std::optional<BusDaemon> m_accessibility{std::in_place};
  const QString m_address = m_session->address();
  std::optional<FakeRegistry> m_registry{m_accessibility->address()};
  std::optional<FakeLauncher> m_launcher{std::in_place, m_session->address(),
                                         m_accessibility->address(), true};
  std::optional<FakeApplication> m_application;
  FakeApplication& m_app = makeApplication(m_application);
  std::atomic<int> m_secretCount = 0;
  std::atomic<bool> m_endedWhileUnheard = false;
  std::atomic<int> m_liesToCome = 0;  // that an application has the keyboard
  bool m_wakesBrowsers = false;
  qint64 m_ownProcess = -1;  // that of the fakes is another one
  std::optional<PasswordFields> m_fields;
};

TEST_F(PasswordFieldsTest, AreSecretAsLongAsTheyHaveTheKeyboard) {
  listen();
  expectOpen();
  enter(m_app, secretField);
  expectSecret();
  EXPECT_FALSE(m_endedWhileUnheard);
  m_app.tellFocus(secretField, false);
  expectOpen();
  EXPECT_TRUE(m_endedWhileUnheard);
}

// The focus was there before the fields were listened for, and nothing is told of it.
class OlderPasswordFieldsTest : public PasswordFieldsTest {
 protected:
  OlderPasswordFieldsTest() {
    m_registry->setApplications({m_background.name(), m_app.name()});
    m_background.setFocused(secretField);  // as its window has it when it is in front
    m_app.setActive(true);
  }

  std::optional<FakeApplication> m_second;
  FakeApplication& m_background = makeApplication(m_second);
};

TEST_F(OlderPasswordFieldsTest, AreFoundInTheWindowInFront) {
  m_app.setFocused(secretField);
  listen();
  expectSecret();
  EXPECT_TRUE(comesTrue([&] { return m_fields->ownerProcessIdentifier() == getpid(); }));
  m_app.tellFocus(secretField, false);
  expectOpen();
}

TEST_F(OlderPasswordFieldsTest, AreNotMadeUp) {
  m_app.setFocused(plainField);
  listen();
  // Role and process are asked of the field that was found, the role last.
  EXPECT_TRUE(comesTrue([&] { return m_app.rolesAsked() == QStringList{plainField}; }));
  expectOpen();
  EXPECT_EQ(m_background.rolesAsked(), QStringList());
  EXPECT_EQ(m_secretCount, 0);
}

// They were heard all the time; on a slow machine the first trigger would be missed.
TEST_F(OlderPasswordFieldsTest, AreHeardUntilTheySayWhatTheyAre) {
  m_app.setFocused(secretField);
  m_app.setHangingAtRoles();
  listen();
  EXPECT_TRUE(comesTrue([&] { return m_app.rolesAsked() == QStringList{secretField}; }));
  EXPECT_FALSE(m_fields->mustNotBeHeard());
  m_app.answerAll();
  expectSecret();
}

TEST_F(OlderPasswordFieldsTest, AreNotLookedForOnceTheFocusIsTold) {
  m_app.setFocused(secretField);
  m_app.setHanging(true);
  listen();
  EXPECT_TRUE(comesTrue([&] { return m_app.questionCount() == 1; }));
  enter(m_background, plainField);
  EXPECT_TRUE(comesTrue([&] { return m_background.rolesAsked() == QStringList{plainField}; }));
  m_app.answerAll();
  enter(m_background, plainField);
  EXPECT_TRUE(comesTrue([&] { return m_background.rolesAsked().size() == 2; }));
  expectOpen();
  EXPECT_EQ(m_app.questionCount(), 1);
}

TEST_F(PasswordFieldsTest, TellTheProcessOfTheirApplication) {
  listen();
  enter(m_app, secretField);
  expectSecret();
  EXPECT_TRUE(comesTrue([&] { return m_fields->ownerProcessIdentifier() == getpid(); }));
}

TEST_F(PasswordFieldsTest, HaveWhatWasTypedBeforeForgottenEachTimeTheyGetTheKeyboard) {
  listen();
  enter(m_app, plainField);
  expectOpen();
  EXPECT_EQ(m_secretCount, 0);
  for (int time = 1; time <= 2; ++time) {
    enter(m_app, secretField);
    expectSecret();
    EXPECT_TRUE(comesTrue([&] { return m_secretCount == time; }));
    enter(m_app, plainField);
    expectOpen();
  }
  EXPECT_EQ(m_secretCount, 2);
}

TEST_F(PasswordFieldsTest, AreLeftByTheFocusOfAnotherApplication) {
  std::optional<FakeApplication> second;
  makeApplication(second);
  listen();
  enter(m_app, secretField);
  expectSecret();
  enter(*second, plainField);
  expectOpen();
  // It is late to say so, and another field is concerned.
  enter(*second, secretField);
  m_app.tellFocus(secretField, false);
  expectSecret();
}

TEST_F(PasswordFieldsTest, StaySecretWhereTheFocusIsToldTwice) {
  listen();
  enter(m_app, secretField);
  expectSecret();
  m_app.setHanging(true);
  enter(m_app, secretField);
  expectSecret();
  m_app.answerAll();
  expectSecret();
  EXPECT_EQ(m_secretCount, 1);
}

TEST_F(PasswordFieldsTest, AreSupposedUntilTheFieldSaysWhatItIs) {
  listen();
  for (const QString& field : {plainField, secretField}) {
    SCOPED_TRACE(field.toStdString());
    m_app.setHanging(true);
    enter(m_app, field);
    expectDoubt();
    m_app.answerAll();
    if (field == plainField) {
      expectOpen();
    } else {
      expectSecret();
    }
  }
}

TEST_F(PasswordFieldsTest, AreSupposedForABoundedTimeButAnAnswerThatComesLateCounts) {
  listen(20ms);
  m_app.setHanging(true);
  enter(m_app, secretField);
  expectOpen();
  m_app.answerAll();
  expectSecret();
}

TEST_F(PasswordFieldsTest, AreToldByTheAnswerOfTheLatestFieldAlone) {
  std::optional<FakeApplication> second;
  makeApplication(second);
  listen();
  m_app.setHanging(true);
  enter(m_app, secretField);
  enter(*second, plainField);
  expectOpen();
  m_app.answerAll();
  // What comes behind the late answer shows that this has been looked at.
  enter(*second, plainField);
  expectOpen();
  EXPECT_EQ(m_secretCount, 0);
}

TEST_F(PasswordFieldsTest, AreLeftWithTheirWindowOnceTheySaySo) {
  listen();
  enter(m_app, secretField);
  expectSecret();
  m_app.setFocused({});
  m_app.tellDeactivatedWindow();
  expectOpen();
}

TEST_F(PasswordFieldsTest, StaySecretWhereAnotherWindowOfTheApplicationIsLeft) {
  listen();
  enter(m_app, secretField);
  expectSecret();
  const int questions = m_app.questionCount();
  m_app.tellDeactivatedWindow();
  ASSERT_TRUE(comesTrue([&] { return m_app.questionCount() >= questions + 2; }));
  expectSecret();
  EXPECT_EQ(m_secretCount, 1);
}

TEST_F(PasswordFieldsTest, HaveNothingToDoWithTheWindowsOfOtherApplications) {
  std::optional<FakeApplication> second;
  makeApplication(second);
  listen();
  enter(m_app, secretField);
  expectSecret();
  m_app.setFocused({});  // as it would answer
  second->tellDeactivatedWindow();
  second->tellFocus(secretField, false);
  enter(*second, secretField);
  expectSecret();
  EXPECT_EQ(m_secretCount, 1);
}

TEST_F(PasswordFieldsTest, OfAnApplicationThatHangsAreLeftWhenTheKeyboardGoesToAnotherWindow) {
  listen(20ms);
  enter(m_app, secretField);
  expectSecret();
  m_app.setHanging(true);
  m_fields->lookAgain();
  expectOpen();
}

TEST_F(PasswordFieldsTest, AreLookedAtAgainWhenTheKeyboardGoesToAnotherWindow) {
  listen();
  enter(m_app, secretField);
  expectSecret();
  const int questions = m_app.questionCount();
  m_fields->lookAgain();
  ASSERT_TRUE(comesTrue([&] { return m_app.questionCount() >= questions + 2; }));
  expectSecret();
  m_app.setFocused({});
  m_fields->lookAgain();
  expectOpen();
}

TEST_F(PasswordFieldsTest, EndWithTheirApplication) {
  listen();
  enter(m_app, secretField);
  expectSecret();
  m_application.reset();
  expectOpen();
}

TEST_F(PasswordFieldsTest, OfTheProgramItselfDoNotCount) {
  m_ownProcess = getpid();
  listen();
  for (int claim = 0; claim < 3; ++claim) {
    m_app.tellFocus(secretField, true);
    awaitWhatWasTold();
    expectOpen();
  }
  EXPECT_EQ(m_app.questionCount(), 0);
  EXPECT_EQ(m_secretCount, 0);
}

TEST_F(PasswordFieldsTest, AreNotLeftForAFieldOfWhoCannotHaveTheKeyboard) {
  std::optional<FakeApplication> liar;
  enterPasswordFieldBeside(liar);
  const int questions = m_app.questionCount();
  liar->tellFocus(plainField, true);
  awaitWhatWasTold();
  expectSecret();
  EXPECT_EQ(m_app.questionCount(), questions);
  EXPECT_FALSE(m_endedWhileUnheard) << "it was never taken for left";
  EXPECT_EQ(liar->questionCount(), 0);
}

TEST_F(PasswordFieldsTest, AreNotLeftForWhoSaysItAndEndsAtOnce) {
  std::optional<FakeApplication> liar;
  enterPasswordFieldBeside(liar);
  liar->tellFocus(plainField, true);
  liar.reset();
  awaitWhatWasTold();
  expectSecret();
  EXPECT_FALSE(m_endedWhileUnheard) << "it was never taken for left";
}

TEST_F(PasswordFieldsTest, AreNotLeftForSeveralWhoCannotHaveTheKeyboard) {
  std::optional<FakeApplication> first;
  std::optional<FakeApplication> second;
  makeApplication(first);
  makeApplication(second);
  listen();
  enter(m_app, secretField);
  expectSecret();
  m_liesToCome = 3;
  first->tellFocus(plainField, true);
  second->tellFocus(plainField, true);
  first->tellFocus(plainField, true);
  awaitWhatWasTold();
  expectSecret();
  EXPECT_FALSE(m_endedWhileUnheard);
}

TEST_F(PasswordFieldsTest, StaySecretThoughTheirApplicationIsBusyWhenAnotherOneLies) {
  std::optional<FakeApplication> liar;
  enterPasswordFieldBeside(liar, 20ms);
  m_app.setHanging(true);
  liar->tellFocus(plainField, true);
  awaitWhatWasTold();
  expectSecret();
  EXPECT_FALSE(m_endedWhileUnheard);
}

TEST_F(PasswordFieldsTest, OfWhoSaidItTooEarlyAreFoundWhenTheKeyboardGoesThere) {
  listen();
  m_liesToCome = 1;
  m_app.setFocused(secretField);
  m_app.tellFocus(secretField, true);
  awaitWhatWasTold();
  expectOpen();
  m_fields->lookAgain();
  expectSecret();
}

TEST_F(PasswordFieldsTest, OfWhoCannotHaveTheKeyboardDoNotCount) {
  std::optional<FakeApplication> liar;
  makeApplication(liar);
  listen();
  enter(m_app, plainField);
  expectOpen();
  m_liesToCome = 1;
  liar->setHanging(true);
  const int questions = m_app.questionCount();
  liar->tellFocus(secretField, true);
  awaitWhatWasTold();
  expectOpen();
  EXPECT_EQ(m_app.questionCount(), questions);
  EXPECT_EQ(m_secretCount, 0);
}

TEST_F(PasswordFieldsTest, AreAskedForOnceWhereBrowsersAreToTellOfThem) {
  m_wakesBrowsers = true;
  listen();
  m_app.tellActivatedWindow();
  ASSERT_TRUE(comesTrue([&] { return m_app.attributesAsked() == 1; }));
  m_app.tellActivatedWindow();
  enter(m_app, secretField);  // which comes behind it
  expectSecret();
  EXPECT_EQ(m_app.attributesAsked(), 1);
}

TEST_F(PasswordFieldsTest, AreNotAskedForOtherwise) {
  listen();
  m_app.tellActivatedWindow();
  enter(m_app, secretField);
  expectSecret();
  EXPECT_EQ(m_app.attributesAsked(), 0);
}

TEST_F(PasswordFieldsTest, MayBeginToHideTheTextUnderTheCaret) {
  listen();
  enter(m_app, plainField);
  expectOpen();
  m_app.setRole(plainField, passwordText);
  m_app.tellNewRole(plainField);
  expectSecret();
  m_app.setRole(plainField, entry);
  m_app.tellNewRole(secretField);  // another field
  m_app.tellNewRole(plainField);
  expectOpen();
}

TEST_F(PasswordFieldsTest, AreNotTakenForOneWhereTheAnswerMakesNoSense) {
  listen();
  for (const QVariant& role : {QVariant(), QVariant(u"password text"_s), QVariant(-40)}) {
    m_app.setRole(secretField, role);
    enter(m_app, secretField);
    expectOpen();
  }
  m_app.tellNonsense(secretField);
  m_app.setRole(secretField, passwordText);
  enter(m_app, secretField);
  expectSecret();
}

TEST_F(PasswordFieldsTest, AreAskedForAgainWhereTheRegistryIsANewOne) {
  listen();
  const QStringList wanted = m_registry->wantedEvents();
  EXPECT_TRUE(wanted.contains(u"object:state-changed:focused"_s));
  EXPECT_TRUE(wanted.contains(u"window:deactivate"_s));
  m_registry.reset();
  m_registry.emplace(m_accessibility->address());
  EXPECT_TRUE(comesTrue([&] { return m_registry->wantedEvents() == wanted; }));
}

TEST_F(PasswordFieldsTest, AreAnnouncedAsWantedUntilTheEndWhereNoOtherProgramWantsThem) {
  m_launcher.reset();
  m_launcher.emplace(m_session->address(), m_accessibility->address(), false);
  listen();
  EXPECT_TRUE(comesTrue([&] { return m_launcher->isEnabled(); }));
  stopListening();
  EXPECT_EQ(m_launcher->settings(), (QList<bool>{true, false}));
}

TEST_F(PasswordFieldsTest, LeaveTheAnnouncementOfOthersAlone) {
  listen();
  enter(m_app, secretField);
  expectSecret();
  stopListening();
  EXPECT_EQ(m_launcher->settings(), QList<bool>());
  EXPECT_FALSE(m_fields->mustNotBeHeard());
}

TEST_F(PasswordFieldsTest, AreFoundOnceThereIsAnAccessibilityBus) {
  m_launcher.reset();
  startListening();
  m_launcher.emplace(m_session->address(), m_accessibility->address(), true);
  ASSERT_TRUE(comesTrue([&] { return m_registry->wantedEvents().size() >= 4; }));
  enter(m_app, secretField);
  expectSecret();
}

TEST_F(PasswordFieldsTest, EndWithTheBusAndAreFoundOnTheNextOne) {
  listen();
  enter(m_app, secretField);
  expectSecret();
  m_launcher.reset();
  m_registry.reset();
  m_application.reset();
  m_accessibility.reset();
  expectOpen();
  m_accessibility.emplace();
  m_registry.emplace(m_accessibility->address());
  makeApplication(m_application);
  m_launcher.emplace(m_session->address(), m_accessibility->address(), true);
  ASSERT_TRUE(comesTrue([&] { return m_registry->wantedEvents().size() >= 4; }));
  enter(m_app, secretField);
  expectSecret();
}

// The launcher is there all the time, and starts a bus only when it is asked for one.
TEST_F(PasswordFieldsTest, AreFoundOnABusThatIsAskedForWhenTheLastOneHasDied) {
  listen();
  const int questions = m_launcher->addressQuestionCount();
  m_registry.reset();
  m_application.reset();
  m_accessibility.reset();
  // The first answers are those of a launcher that has not noticed yet.
  ASSERT_TRUE(comesTrue([&] { return m_launcher->addressQuestionCount() >= questions + 2; }));
  m_accessibility.emplace();
  m_registry.emplace(m_accessibility->address());
  makeApplication(m_application);
  m_launcher->setAddress(m_accessibility->address());
  ASSERT_TRUE(comesTrue([&] { return m_registry->wantedEvents().size() >= 4; }));
  enter(m_app, secretField);
  expectSecret();
}

TEST_F(PasswordFieldsTest, AreNoneWithoutASessionBus) {
  m_launcher.reset();
  m_session.reset();
  startListening();
  m_fields->lookAgain();
  expectOpen();
  stopListening();
}

TEST_F(PasswordFieldsTest, AreStillFollowedWhenTheSessionBusHasGone) {
  listen();
  m_launcher.reset();
  m_session.reset();
  enter(m_app, secretField);
  expectSecret();
  stopListening();
}

TEST_F(PasswordFieldsTest, DoNotHoldUpTheEndWhereTheirApplicationHangs) {
  listen();
  m_app.setHanging(true);
  enter(m_app, secretField);
  expectDoubt();
  stopListening();
  expectOpen();
}

TEST_F(PasswordFieldsTest, AreLookedForAgainOnABusThatHasNotAnswered) {
  m_launcher.reset();
  const FakeBus bus(FakeBus::Manner::closes);
  m_launcher.emplace(m_session->address(), u"unix:path="_s + bus.path(), true);
  startListening();
  ASSERT_TRUE(comesTrue([&] { return bus.connectionCount() == 1; }));
  m_fields->lookAgain();
  EXPECT_TRUE(comesTrue([&] { return bus.connectionCount() == 2; }));
}

TEST_F(PasswordFieldsTest, SendNoToolkitToABusThatHangs) {
  m_launcher.reset();
  const FakeBus bus(FakeBus::Manner::isSilent);
  m_launcher.emplace(m_session->address(), u"unix:path="_s + bus.path(), false);
  startListening();
  ASSERT_TRUE(comesTrue([&] { return m_launcher->addressQuestionCount() > 0; }));
  stopListening();
  EXPECT_EQ(m_launcher->settings(), QList<bool>());
}

TEST_F(PasswordFieldsTest, DoNotHoldUpTheEndWhereTheBusHangs) {
  std::optional<FakeBus> bus(std::in_place, FakeBus::Manner::answers);
  m_launcher.reset();
  m_launcher.emplace(m_session->address(), u"unix:path="_s + bus->path(), true);
  startListening();
  ASSERT_TRUE(comesTrue([&] { return bus->hasBegun(); }));
  stopListening();
  bus.reset();
}

}  // namespace
}  // namespace zarvy
