#include <array>
#include <thread>

#include <gtest/gtest.h>

#include "storage/sync/SyncHarness.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

class SyncThreads : public SyncHarness {};

TEST_F(SyncThreads, GetOneIdentityWhereSeveralAskFirst) {
  for (int round = 0; round < 50; ++round) {
    FakeUserDefaults defaults;
    const iCloudSyncService service(m_drive, defaults, m_clock, m_scheduler, m_queue, m_output);
    std::array<QString, 4> identities;
    std::array<std::thread, 4> threads;
    for (std::size_t index = 0; index < threads.size(); ++index) {
      threads[index] = std::thread([&service, &identity = identities[index]] {
        identity = service.nextMetadata(std::nullopt).deviceID;
      });
    }
    for (std::thread& thread : threads) thread.join();
    for (const QString& identity : identities) {
      EXPECT_EQ(identity, defaults.string(u"ZarvySyncDeviceID"_s));
    }
  }
}

// Each on a thread of its own, as two programs on one folder.
TEST_F(SyncThreads, NeverSeeHalfOfWhatTheOtherWrites) {
  Machine other(m_drive, m_clock, m_output, u"B"_s);
  const auto use = [](Machine& machine) {
    for (int round = 0; round < 50; ++round) {
      machine.sync();
      machine.save(LocalLibrary::of(QString::number(round)));
    }
  };
  std::thread thread(use, std::ref(other));
  use(m_machine);
  thread.join();
  for (const QString& line : m_output.lines()) {
    EXPECT_FALSE(line.contains(u"error"_s)) << line.toStdString();
  }
  m_machine.sync();
  other.sync();
  m_machine.sync();
  EXPECT_EQ(m_machine.library, other.library);
  EXPECT_EQ(files(), QStringList{u"zarvy_sync.json"_s});
}

}  // namespace
}  // namespace zarvy
