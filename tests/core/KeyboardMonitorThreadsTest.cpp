#include <atomic>
#include <memory>
#include <thread>

#include <gtest/gtest.h>

#include "core/KeyboardMonitor.h"
#include "fakes/FakeKeyEventSource.h"
#include "fakes/FakePermission.h"
#include "fakes/ManualQueue.h"
#include "fakes/ManualScheduler.h"
#include "fakes/RecordingLineOutput.h"
#include "support/QtPrinters.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

// Runs a queue's tasks on a thread of its own until the end of the scope.
class QueueThread {
 public:
  explicit QueueThread(ManualSerialQueue& queue)
      : m_thread([this, &queue] {
          while (!m_isEnding) {
            if (!queue.runNext()) std::this_thread::yield();
          }
          queue.drain();
        }) {}
  ~QueueThread() {
    m_isEnding = true;
    m_thread.join();
  }
  QueueThread(const QueueThread&) = delete;
  QueueThread& operator=(const QueueThread&) = delete;

 private:
  std::atomic<bool> m_isEnding{false};
  std::thread m_thread;
};

class KeyboardMonitorThreadsTest : public testing::Test {
 protected:
  FakeKeyEventSource m_source;
  FakePermission m_permission;
  ManualScheduler m_scheduler;
  ManualSerialQueue m_queue;
  RecordingLineOutput m_output;
};

TEST_F(KeyboardMonitorThreadsTest, OffersInTypingOrderWhileTheBufferIsEmptiedFromTheMainThread) {
  constexpr int keys = 5000;
  KeyboardMonitor monitor(m_source, m_permission, m_scheduler, m_queue, m_output);
  int offers = 0;
  monitor.onPotentialTrigger = [&](const QString& buffer) {
    EXPECT_EQ(buffer.back(), QChar(u'A' + offers % 26));
    EXPECT_LE(buffer.size(), 50);
    ++offers;
    if (offers % 7 == 0) monitor.clearBuffer();
  };
  monitor.start();
  {
    const QueueThread thread(m_queue);
    for (int key = 0; key < keys; ++key) {
      m_source.type(QString(QChar(u'A' + key % 26)));
      m_scheduler.runPending();
      static_cast<void>(monitor.buffer());
    }
  }
  m_scheduler.runPending();
  EXPECT_EQ(offers, keys);
}

TEST_F(KeyboardMonitorThreadsTest, EndsWhileItsKeysAreBeingWorkedOn) {
  int offers = 0;
  const QueueThread thread(m_queue);
  for (int round = 0; round < 300; ++round) {
    auto monitor =
        std::make_unique<KeyboardMonitor>(m_source, m_permission, m_scheduler, m_queue, m_output);
    monitor->onPotentialTrigger = [&offers](const QString&) { ++offers; };
    monitor->start();
    for (int key = 0; key < 10; ++key) m_source.type(u"a"_s);
    if (round % 2 == 0) m_scheduler.runPending();
    if (round % 3 == 0) monitor->stop();
    monitor.reset();
    const int offersBefore = offers;
    m_scheduler.runPending();
    EXPECT_EQ(offers, offersBefore) << "nothing arrives once it is gone";
  }
}

}  // namespace
}  // namespace zarvy
