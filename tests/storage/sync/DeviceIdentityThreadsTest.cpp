#include <array>
#include <thread>

#include <gtest/gtest.h>

#include "storage/sync/SyncHarness.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

class DeviceIdentityThreads : public SyncHarness {};

TEST_F(DeviceIdentityThreads, GetOneIdentityWhereSeveralAskFirst) {
  for (int round = 0; round < 50; ++round) {
    FakeUserDefaults defaults;
    const iCloudSyncService service(m_drive, defaults, m_clock, m_sleeper, m_output);
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

}  // namespace
}  // namespace zarvy
