#include <gtest/gtest.h>

#include "fakes/ManualQueue.h"
#include "platform/freedesktop/CanberraSoundOutput.h"

namespace zarvy {
namespace {

TEST(CanberraSoundOutput, LeavesThePlayingToAWorker) {
  ManualWorkerPool workers;
  CanberraSoundOutput sound(workers, QStringLiteral(ZARVY_SOUND));
  sound.playExpansionSound();
  EXPECT_EQ(workers.pendingCount(), 1U);
}

TEST(CanberraSoundOutput, LeavesOutSoundsWhileOneIsOnItsWay) {
  ManualWorkerPool workers;
  CanberraSoundOutput sound(workers, QStringLiteral(ZARVY_SOUND));
  sound.playExpansionSound();
  sound.playExpansionSound();
  EXPECT_EQ(workers.pendingCount(), 1U);
  workers.drain();
  sound.playExpansionSound();
  EXPECT_EQ(workers.pendingCount(), 1U);
  workers.drain();
}

TEST(CanberraSoundOutput, SaysNothingWhereThereIsNoSound) {
  ManualWorkerPool workers;
  CanberraSoundOutput sound(workers, QStringLiteral(ZARVY_SOUND));
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  sound.playExpansionSound();
  workers.drain();
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(CanberraSoundOutput, HasNothingToPlayWhereTheFileIsMissing) {
  ManualWorkerPool workers;
  CanberraSoundOutput sound(workers, QStringLiteral("/nowhere/tink.wav"));
  sound.playExpansionSound();
  EXPECT_EQ(workers.pendingCount(), 0U);
}

TEST(CanberraSoundOutput, MayGoBeforeItsSoundIsPlayed) {
  ManualWorkerPool workers;
  {
    CanberraSoundOutput sound(workers, QStringLiteral(ZARVY_SOUND));
    sound.playExpansionSound();
  }
  EXPECT_TRUE(workers.runNext());
}

}  // namespace
}  // namespace zarvy
