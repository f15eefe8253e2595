// The end of the service while it has something to do.

#include <gtest/gtest.h>

#include "fakes/ManualQueue.h"
#include "storage/sync/SyncHarness.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

class SyncServiceEnd : public SyncHarness {
 protected:
  void endService() { m_service.reset(); }

  const LocalLibrary m_library = LocalLibrary::of(u"A"_s);
  FakeUserDefaults m_defaults;
  ManualScheduler m_scheduler;
  ManualSerialQueue m_queue;
  std::unique_ptr<iCloudSyncService> m_service = std::make_unique<iCloudSyncService>(
      m_drive, m_defaults, m_clock, m_scheduler, m_queue, m_output);
};

TEST_F(SyncServiceEnd, WaitsForAnUpload) {
  ASSERT_TRUE(QDir().mkpath(folder()));
  bool isUploaded = false;
  m_service->upload(m_library.snippets, m_library.folders, m_library.globalVariables, std::nullopt,
                    [&isUploaded] { isUploaded = true; });
  EXPECT_FALSE(isUploaded);
  endService();
  EXPECT_TRUE(isUploaded);
  EXPECT_TRUE(QFile::exists(file()));
}

TEST_F(SyncServiceEnd, DropsADownloadThatWaitsForItsFile) {
  ASSERT_TRUE(QDir().mkpath(folder()));
  bool isDownloaded = false;
  m_service->download([&isDownloaded](const auto&) { isDownloaded = true; });
  m_queue.drain();
  endService();
  m_scheduler.advance(std::chrono::seconds(1));
  EXPECT_EQ(m_queue.pendingCount(), 0U);
  EXPECT_FALSE(isDownloaded);
}

}  // namespace
}  // namespace zarvy
