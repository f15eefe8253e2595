#pragma once

#include "e2e/behaviour/BehaviourTest.h"
#include "e2e/harness/ProcessMemory.h"
#include "e2e/harness/StatusNotifierHost.h"

namespace zarvy::e2e {

// Somebody types a password: the icon in the tray tells that the program stands back, and nothing
// of the password is anywhere in the program's memory.
class SecretTest : public BehaviourTest {
 protected:
  static constexpr std::chrono::seconds deadline{20};

  // In a way that its memory can be searched.
  void startProgramWith(const std::vector<TestSnippet>& snippets,
                        const std::string& defaults = "[General]\n") {
    ProgramUnderTest& made = stage().makeProgram(programPath());
    made.preload(ZARVY_E2E_READABLE_MEMORY);
    made.writeLibrary(snippets);
    made.writeDefaults(defaults);
    made.start();
  }

  // The icon in the tray comes to say so.
  void waitForToolTip(const QString& text) {
    QString toolTip;
    const auto isThere = [&] {
      toolTip = m_tray.toolTipOf(program().process().pid());
      return toolTip == text;
    };
    ASSERT_TRUE(waitUntil(isThere, deadline, std::chrono::milliseconds(50)))
        << toolTip.toStdString();
  }

  [[nodiscard]] QList<QByteArray> formsInProgram(const QString& text) {
    return formsInMemory(program().process().pid(), text);
  }

  void expectPasswordNowhereInProgram() {
    EXPECT_EQ(formsInProgram(password), QList<QByteArray>());
    EXPECT_EQ(formsInProgram(password.left(8)), QList<QByteArray>());
    EXPECT_EQ(formsInProgram(password.right(8)), QList<QByteArray>());
  }

  const QString password = QStringLiteral("corRect4horse-battery");
  const QString trigger = QStringLiteral(";ok");
  StatusNotifierHost m_tray{stage().environment().at("DBUS_SESSION_BUS_ADDRESS")};
};

}  // namespace zarvy::e2e
