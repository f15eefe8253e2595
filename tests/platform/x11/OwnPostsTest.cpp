#include <atomic>
#include <chrono>
#include <thread>

#include <gtest/gtest.h>

#include "platform/x11/capture/OwnPosts.h"

namespace zarvy::x11 {
namespace {

class OwnPostsTest : public testing::Test {
 protected:
  void record(uint32_t sequence, uint8_t keycode, bool press) {
    const auto lock = posts.lockForPosting();
    posts.record(sequence, keycode, press);
  }

  // Longer than any machine takes, so that only an event ends a wait.
  OwnPosts posts{std::chrono::hours{1}};
};

TEST_F(OwnPostsTest, TakesAPostOnce) {
  record(10, 38, true);
  EXPECT_TRUE(posts.take(10, 38, true));
  EXPECT_FALSE(posts.take(10, 38, true)) << "another client pressed the same key just after";
}

TEST_F(OwnPostsTest, LeavesOtherKeysAndDirectionsToOthers) {
  record(10, 38, true);
  EXPECT_FALSE(posts.take(10, 39, true));
  EXPECT_FALSE(posts.take(10, 38, false));
  EXPECT_TRUE(posts.take(10, 38, true));
}

TEST_F(OwnPostsTest, PassesOverPostsThatCausedNoEvent) {
  record(10, 50, false);
  record(11, 38, true);
  record(12, 38, false);
  EXPECT_TRUE(posts.take(11, 38, true));
  EXPECT_TRUE(posts.take(12, 38, false));
}

TEST_F(OwnPostsTest, KeepsPostsThatAreStillToCome) {
  record(20, 38, true);
  EXPECT_FALSE(posts.take(15, 38, true));
  EXPECT_TRUE(posts.take(20, 38, true));
}

TEST_F(OwnPostsTest, CountsOnAcrossTheWrapOfSequenceNumbers) {
  record(0xfffffffe, 38, true);
  record(0xffffffff, 38, false);
  record(1, 39, true);
  EXPECT_TRUE(posts.take(0xffffffff, 38, false));
  EXPECT_TRUE(posts.take(1, 39, true));
}

TEST_F(OwnPostsTest, TimesWhatIsStillToComeAsLongAsItComes) {
  using namespace std::chrono_literals;
  EXPECT_EQ(posts.timeToCome(), 0us);
  for (uint32_t sequence = 10; sequence < 20; ++sequence) record(sequence, 38, true);
  const auto ten = posts.timeToCome();
  EXPECT_GT(ten, 0us);
  EXPECT_TRUE(posts.take(14, 38, true));
  EXPECT_LT(posts.timeToCome(), ten);
  EXPECT_EQ(posts.timeToCome(), 0us) << "nothing has come meanwhile";
  EXPECT_TRUE(posts.take(19, 38, true));
  EXPECT_EQ(posts.timeToCome(), 0us);
}

TEST_F(OwnPostsTest, AwaitsTheEventsOfAllPosts) {
  record(10, 38, true);
  record(11, 38, false);
  std::atomic<bool> allCame = false;
  std::thread reader([&] {
    EXPECT_TRUE(posts.take(10, 38, true));
    allCame = true;
    EXPECT_TRUE(posts.take(11, 38, false));
  });
  posts.awaitEvents();
  EXPECT_TRUE(allCame);
  reader.join();
}

TEST(OwnPosts, AwaitsNoEventThatDoesNotCome) {
  OwnPosts posts(std::chrono::milliseconds{1});
  {
    const auto lock = posts.lockForPosting();
    posts.record(10, 38, true);
  }
  posts.awaitEvents();
  EXPECT_TRUE(posts.take(10, 38, true));
}

}  // namespace
}  // namespace zarvy::x11
