#include <random>

#include <gtest/gtest.h>

#include "storage/sync/SyncHarness.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

// The harness's machine, another one, and the folder that they share.
class TwoMachines : public SyncHarness {
 protected:
  Machine m_other{m_drive, m_clock, m_output, u"B"_s};
};

TEST_F(TwoMachines, SettleOnTheLibraryOfTheOneThatSavesFirst) {
  EXPECT_EQ(m_machine.sync(), SyncResult{SyncStatus::success(m_clock.now())});
  m_machine.save(LocalLibrary::of(u"one"_s));
  EXPECT_EQ(m_other.sync().metadata, (SyncMetadata{m_clock.now(), u"A"_s, 1}));
  EXPECT_EQ(m_other.library, LocalLibrary::of(u"one"_s));
  EXPECT_EQ(m_machine.sync(), SyncResult{SyncStatus::success(m_clock.now())});
  EXPECT_EQ(m_other.sync(), SyncResult{SyncStatus::success(m_clock.now())});
}

TEST_F(TwoMachines, HandAnEditBackAndForth) {
  m_machine.sync();
  for (int round = 1; round <= 3; ++round) {
    const LocalLibrary first = LocalLibrary::of(u"first %1"_s.arg(round));
    m_machine.save(first);
    m_other.sync();
    EXPECT_EQ(m_other.library, first);
    const LocalLibrary second = LocalLibrary::of(u"second %1"_s.arg(round));
    m_other.save(second);
    m_machine.sync();
    EXPECT_EQ(m_machine.library, second);
    EXPECT_EQ(m_machine.metadata->dataVersion, 2 * round);
  }
}

// Both have generation 2: the later of the two wins on both machines.
TEST_F(TwoMachines, SettleTheSameGenerationByTheClock) {
  m_machine.sync();
  m_machine.save(LocalLibrary::of(u"base"_s));
  m_other.sync();
  m_drive.setSignedIn(false);
  m_machine.save(LocalLibrary::of(u"of A"_s));
  m_clock.advance(std::chrono::seconds(1));
  m_drive.setSignedIn(true);
  m_other.save(LocalLibrary::of(u"of B"_s));
  forgetLines();

  m_machine.sync();
  EXPECT_EQ(m_output.lines(), (QStringList{usingLine(), downloadedLine,
                                           u"iCloud sync: Conflict resolved - cloud is newer"_s}));
  EXPECT_EQ(m_machine.library, LocalLibrary::of(u"of B"_s));
  EXPECT_EQ(m_machine.metadata, m_other.metadata);
  EXPECT_EQ(m_other.sync(), SyncResult{SyncStatus::success(m_clock.now())});
}

TEST_F(TwoMachines, TakeTheOneThatSavedMoreWhateverTheClockSays) {
  m_machine.sync();
  m_machine.save(LocalLibrary::of(u"base"_s));
  m_other.sync();
  m_drive.setSignedIn(false);
  for (int edit = 1; edit <= 3; ++edit) m_machine.save(LocalLibrary::of(u"of A"_s));
  m_drive.setSignedIn(true);
  m_clock.advance(std::chrono::hours(24));
  m_other.save(LocalLibrary::of(u"of B"_s));
  m_machine.sync();
  m_other.sync();
  EXPECT_EQ(m_machine.library, LocalLibrary::of(u"of A"_s));
  EXPECT_EQ(m_other.library, LocalLibrary::of(u"of A"_s));
  EXPECT_EQ(m_other.metadata->dataVersion, 5);
}

// Whatever happened before, three syncs in turn leave both with the same library, which one of them
// had.
TEST_F(TwoMachines, AgreeInTheEndWhateverHappened) {
  std::mt19937 random(20260121);
  const auto pick = [&random](std::size_t count) { return random() % count; };
  Machine* const machines[] = {&m_machine, &m_other};
  QList<LocalLibrary> made{m_machine.library, m_other.library};
  for (int round = 0; round < 300; ++round) {
    for (auto step = pick(8); step > 0; --step) {
      Machine& machine = *machines[pick(2)];
      m_drive.setSignedIn(pick(4) != 0);
      m_clock.advance(std::chrono::seconds(static_cast<int>(pick(3)) - 1));
      switch (pick(6)) {
        case 0:
          machine.sync();
          break;
        case 1:
          write("{ half");
          break;
        case 2:
          ASSERT_TRUE(QDir(m_place).exists());
          QDir(folder()).removeRecursively();
          break;
        default:
          made.append(LocalLibrary::of(QString::number(made.size())));
          machine.save(made.back());
      }
      EXPECT_TRUE(made.contains(machine.library));
    }
    m_drive.setSignedIn(true);
    m_machine.sync();
    m_other.sync();
    m_machine.sync();
    const bool isUntouched = !m_machine.metadata && !m_other.metadata;
    ASSERT_TRUE(isUntouched || m_machine.library == m_other.library) << round;
    ASSERT_EQ(m_machine.metadata.has_value(), m_other.metadata.has_value()) << round;
    ASSERT_TRUE(made.contains(m_machine.library)) << round;
  }
}

}  // namespace
}  // namespace zarvy
