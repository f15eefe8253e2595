#include <gtest/gtest.h>

#include "app/expansion/SecureInputWatch.h"
#include "fakes/FakeSecureInput.h"
#include "fakes/FakeWorkspace.h"
#include "fakes/ManualScheduler.h"
#include "support/QtPrinters.h"

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace zarvy {
namespace {

class SecureInputWatchTest : public testing::Test {
 protected:
  SecureInputWatchTest() {
    m_workspace.setFrontmost(RunningApplication{10, u"editor"_s, u"The Editor"_s, 1});
    m_watch.onChange([this] { m_names.append(m_watch.secureInputAppName().value_or(u"-"_s)); });
  }

  Journal m_journal;
  FakeWorkspace m_workspace{m_journal};
  FakeSecureInput m_secureInput;
  ManualScheduler m_scheduler;
  SecureInputWatch m_watch{m_secureInput, m_workspace, m_scheduler};
  QStringList m_names;  // as they changed; "-" for none
};

TEST_F(SecureInputWatchTest, LooksAtOnceAndThenTwiceASecond) {
  m_secureInput.isEnabled = true;
  m_watch.start();
  EXPECT_EQ(m_watch.secureInputAppName(), u"The Editor"_s);
  m_secureInput.isEnabled = false;
  m_scheduler.advance(499ms);
  EXPECT_EQ(m_watch.secureInputAppName(), u"The Editor"_s);
  m_scheduler.advance(1ms);
  EXPECT_EQ(m_watch.secureInputAppName(), std::nullopt);
  m_secureInput.isEnabled = true;
  m_scheduler.advance(500ms);
  EXPECT_EQ(m_names, (QStringList{u"The Editor"_s, u"-"_s, u"The Editor"_s}));
}

TEST_F(SecureInputWatchTest, DoesNotSeeWhatComesAndGoesBetweenTwoLooks) {
  m_watch.start();
  m_secureInput.isEnabled = true;
  m_scheduler.advance(200ms);
  m_secureInput.isEnabled = false;
  m_scheduler.advance(1s);
  EXPECT_EQ(m_names, QStringList());
}

TEST_F(SecureInputWatchTest, LooksTheNameUpOnlyWhenItBegins) {
  m_secureInput.isEnabled = true;
  m_watch.start();
  m_workspace.setFrontmost(RunningApplication{11, u"other"_s, u"Another"_s, 2});
  m_scheduler.advance(5s);
  EXPECT_EQ(m_names, QStringList{u"The Editor"_s});
}

TEST_F(SecureInputWatchTest, NamesTheOwnerAsWellAsItCan) {
  struct Row {
    std::optional<qint32> owner;
    std::optional<RunningApplication> frontmost;
    QString name;
  };
  const RunningApplication named{10, u"editor"_s, u"The Editor"_s, 1};
  const RunningApplication identified{10, u"editor"_s, {}, 1};
  const RunningApplication nameless{10, {}, {}, 1};
  for (const Row& row : {Row{10, named, u"The Editor"_s}, Row{10, identified, u"editor"_s},
                         Row{10, nameless, u"Unknown"_s}, Row{99, named, u"Unknown (PID: 99)"_s},
                         Row{0, named, u"The Editor"_s}, Row{-4, identified, u"editor"_s},
                         Row{{}, named, u"The Editor"_s}, Row{{}, identified, u"editor"_s},
                         Row{{}, nameless, u"Unknown"_s}, Row{{}, {}, u"Unknown"_s}}) {
    m_workspace.setFrontmost(row.frontmost);
    m_secureInput.owner = row.owner;
    m_secureInput.isEnabled = true;
    m_watch.start();
    EXPECT_EQ(m_watch.secureInputAppName(), row.name);
    m_watch.stop();
  }
}

TEST_F(SecureInputWatchTest, ForgetsAllWhenItIsStoppedAndFindsTheOwnerAfresh) {
  m_secureInput.isEnabled = true;
  m_watch.start();
  m_watch.stop();
  EXPECT_EQ(m_watch.secureInputAppName(), std::nullopt);
  m_scheduler.advance(5s);
  EXPECT_EQ(m_names, (QStringList{u"The Editor"_s, u"-"_s}));
  m_watch.start();
  EXPECT_EQ(m_watch.secureInputAppName(), u"The Editor"_s);
}

TEST_F(SecureInputWatchTest, LeavesNoTimerBehind) {
  {
    SecureInputWatch watch(m_secureInput, m_workspace, m_scheduler);
    watch.start();
  }
  m_secureInput.isEnabled = true;
  m_scheduler.advance(5s);
  EXPECT_EQ(m_scheduler.pendingCount(), 0U);
}

}  // namespace
}  // namespace zarvy
