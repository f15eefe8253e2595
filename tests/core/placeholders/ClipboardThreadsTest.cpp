#include <atomic>
#include <thread>

#include <gtest/gtest.h>

#include "core/placeholders/Passes.h"
#include "fakes/FakePlaceholders.h"
#include "support/QtPrinters.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

// Says on which thread it was asked.
class ThreadPasteboard final : public Pasteboard {
 public:
  [[nodiscard]] QString text() const override {
    return std::this_thread::get_id() == m_home ? u"home"_s : u"elsewhere"_s;
  }

 private:
  std::thread::id m_home = std::this_thread::get_id();
};

TEST(ClipboardThreads, IsReadOnTheMainThreadFromWhereverATextIsProcessed) {
  FakePlaceholders placeholders;
  const ThreadPasteboard pasteboard;
  const PlaceholderServices fakes = placeholders.services();
  const PlaceholderServices services{fakes.clock,      fakes.dates,     pasteboard,
                                     fakes.mainThread, fakes.counters,  fakes.fieldDefaults,
                                     fakes.shell,      fakes.javaScript};
  EXPECT_EQ(processPlaceholders(u"{{clipboard}}"_s, {}, services), u"home"_s);
  QString elsewhere;
  std::atomic<bool> isDone{false};
  std::thread thread([&] {
    elsewhere = processPlaceholders(u"{{clipboard}}"_s, {}, services);
    isDone = true;
  });
  while (!isDone) {
    placeholders.scheduler.runPending();
    std::this_thread::yield();
  }
  thread.join();
  EXPECT_EQ(elsewhere, u"home"_s);
}

}  // namespace
}  // namespace zarvy
