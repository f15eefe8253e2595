// The desktop that comes after the program has started, on a real X server.

#include <QCoreApplication>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "e2e/harness/Person.h"
#include "e2e/harness/PrivateXServer.h"
#include "e2e/harness/WaitUntil.h"
#include "fakes/FakeUserDefaults.h"
#include "fakes/ManualScheduler.h"
#include "fakes/RecordingLineOutput.h"
#include "platform/Desktop.h"
#include "platform/KeyEventSource.h"
#include "platform/desktop/ProgramStart.h"
#include "support/QtPrinters.h"

namespace zarvy {
namespace {

using namespace Qt::Literals::StringLiterals;

class LateX11Desktop : public testing::Test {
 protected:
  LateX11Desktop() {
    qunsetenv("DISPLAY");
    qputenv("HOME", m_folder.path().toLocal8Bit());
    // Without an address a bus would be started for the display.
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/dev/null");
  }

  [[nodiscard]] std::optional<KeyEventSource::Token> listen(const Desktop& desktop) {
    return desktop.parts().keyEventSource.addGlobalMonitor(
        [this](const KeyEvent& event) {
          m_heard += event.charactersIgnoringModifiers.value_or(u""_s);
        },
        [] {});
  }

  [[nodiscard]] bool hears(const QString& text) {
    return e2e::waitUntil(
        [&] {
          m_scheduler.runPending();
          return m_heard == text;
        },
        std::chrono::seconds(10));
  }

  int m_argumentCount = 0;
  const QCoreApplication m_application{m_argumentCount, nullptr};  // the bus is asked in its life
  const QTemporaryDir m_folder;
  ManualScheduler m_scheduler;
  RecordingLineOutput m_output;
  FakeUserDefaults m_defaults;
  QString m_heard;
};

TEST_F(LateX11Desktop, IsFoundWhenItIsLookedForAgain) {
  const auto made = makeDesktop(m_scheduler, m_output, m_defaults, [] {});
  Desktop& desktop = *made;
  KeyEventSource& source = desktop.parts().keyEventSource;
  desktop.lookAgain();
  EXPECT_FALSE(desktop.isTrusted());
  EXPECT_EQ(desktop.reasonForMissing(), u"No X display can be reached."_s);
  EXPECT_TRUE(desktop.remedy().contains(u"xhost")) << desktop.remedy().toStdString();
  EXPECT_EQ(listen(desktop), std::nullopt);

  const e2e::PrivateXServer server(m_folder.path().toStdString());
  const e2e::XConnection connection(server.display());
  e2e::Person person(connection);
  qputenv("DISPLAY", server.display().c_str());
  EXPECT_FALSE(desktop.isTrusted()) << "it does not look by itself";
  desktop.lookAgain();
  EXPECT_TRUE(desktop.isTrusted());
  EXPECT_EQ(desktop.reasonForMissing(), u""_s);
  EXPECT_EQ(desktop.remedy(), u""_s);
  const auto token = listen(desktop);
  ASSERT_TRUE(token);
  person.type(u"ab"_s);
  EXPECT_TRUE(hears(u"ab"_s)) << m_heard.toStdString();
  source.removeMonitor(*token);
  desktop.close();
  desktop.lookAgain();
  EXPECT_FALSE(desktop.isTrusted()) << "it has been closed for good";
}

TEST_F(LateX11Desktop, IsNotFoundWhileItLacksAnExtension) {
  const e2e::PrivateXServer server(m_folder.path().toStdString(), {"-extension", "XTEST"});
  qputenv("DISPLAY", server.display().c_str());
  const auto made = makeDesktop(m_scheduler, m_output, m_defaults, [] {});
  Desktop& desktop = *made;
  desktop.lookAgain();
  EXPECT_FALSE(desktop.isTrusted());
  EXPECT_EQ(desktop.reasonForMissing(),
            u"The X display lacks the XTEST extension, so keys cannot be sent."_s);
  EXPECT_EQ(desktop.remedy(), u"Turn that on where the X server is started, and log in again."_s);
}

}  // namespace
}  // namespace zarvy
