// An input method between the keys and the application.

#include <memory>

#include "e2e/behaviour/BehaviourTest.h"
#include "e2e/harness/AccessibleTarget.h"
#include "e2e/harness/InputMethods.h"

namespace zarvy::e2e {

using namespace Qt::Literals::StringLiterals;

namespace {

enum class Kind { fcitx5, ibus };

class InputMethods : public BehaviourTest, public testing::WithParamInterface<Kind> {
 protected:
  void SetUp() override {
    BehaviourTest::SetUp();
    const std::string folder = stage().makeFolder("input-method");
    if (GetParam() == Kind::fcitx5) {
      m_daemon = std::make_unique<Fcitx5Daemon>(stage().environment(), folder);
    } else {
      m_daemon = std::make_unique<IBusDaemon>(stage().environment(), folder);
    }
    m_program.emplace(ProgramUnderTest::Setting{.program = programPath(),
                                                .environment = m_daemon->environment(),
                                                .homeFolder = stage().makeFolder("program")});
    m_program->writeLibrary({{u";brb"_s, u"be right back"_s}});
    m_program->start();
    m_editor.emplace(TargetSetting{.connection = stage().connection(),
                                   .environment = m_daemon->environment(),
                                   .folder = stage().makeFolder("editor"),
                                   .accessibilityAddress = stage().bus().accessibilityAddress()});
    m_editor->start(person());
  }

  [[nodiscard]] QString text() { return m_editor->state().text; }

  [[nodiscard]] bool announces(int expansions) {
    return waitUntil([&] { return m_program->expansionCount() == expansions; },
                     std::chrono::seconds(20));
  }

  [[nodiscard]] bool comesToHold(const QString& wanted) {
    return settlesAt(*m_editor, {.text = wanted, .caret = wanted.size()});
  }

  std::unique_ptr<InputMethodDaemon> m_daemon;
  std::optional<ProgramUnderTest> m_program;
  std::optional<MousepadTarget> m_editor;
};

// What the engine has made of the trigger stays, and nothing else is added or deleted.
TEST_P(InputMethods, thatComposeAreLeftAloneAndPlainKeyboardsAreTypedThrough) {
  m_daemon->setEngineOn(false);
  person().type(u";brb"_s);
  ASSERT_TRUE(comesToHold(u"be right back"_s)) << text().toStdString();

  m_daemon->setEngineOn(true);
  person().type(u";brb"_s);
  ASSERT_TRUE(announces(2));
  person().type(u" "_s);  // the engine gives what it proposes
  const auto hasChosen = [this] { return text().size() > u"be right back"_s.size() + 1; };
  ASSERT_TRUE(waitUntil(hasChosen, std::chrono::seconds(20))) << text().toStdString();
  const QString chosen = text();
  EXPECT_TRUE(chosen.startsWith(u"be right back"_s)) << chosen.toStdString();
  EXPECT_FALSE(chosen.mid(1).contains(u"be"_s)) << chosen.toStdString();

  m_daemon->setEngineOn(false);
  person().type(u";brb"_s);
  EXPECT_TRUE(comesToHold(chosen + u"be right back"_s)) << text().toStdString();
  EXPECT_TRUE(announces(3));
  EXPECT_EQ(m_program->terminate(), ExitStatus{});
}

INSTANTIATE_TEST_SUITE_P(Of, InputMethods, testing::Values(Kind::fcitx5, Kind::ibus),
                         [](const auto& instance) {
                           return instance.param == Kind::fcitx5 ? "fcitx5" : "ibus";
                         });

}  // namespace
}  // namespace zarvy::e2e
