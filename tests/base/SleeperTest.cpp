#include <atomic>
#include <csignal>
#include <pthread.h>
#include <thread>

#include <gtest/gtest.h>

#include "base/Sleeper.h"

namespace zarvy {
namespace {

using namespace std::chrono_literals;
using SteadyClock = std::chrono::steady_clock;

TEST(SystemSleeper, NeverSleepsLessThanAsked) {
  SystemSleeper sleeper;
  for (const auto duration : {1us, 1000us, 2000us, 10'000us}) {
    const auto start = SteadyClock::now();
    sleeper.sleepFor(duration);
    EXPECT_GE(SteadyClock::now() - start, duration);
  }
}

TEST(SystemSleeper, CarriesOverIntoTheNextSecond) {
  SystemSleeper sleeper;
  const auto start = SteadyClock::now();
  sleeper.sleepFor(999'999us);
  EXPECT_GE(SteadyClock::now() - start, 999'999us);
}

TEST(SystemSleeper, ReturnsAtOnceFromASleepOfNoLength) {
  SystemSleeper sleeper;
  sleeper.sleepFor(0us);
  sleeper.sleepFor(-1s);
}

TEST(SystemSleeper, SleepsOnAfterASignal) {
  struct sigaction action {};
  action.sa_handler = [](int) {};  // without SA_RESTART: the sleep is interrupted
  struct sigaction before {};
  sigaction(SIGUSR1, &action, &before);
  std::atomic<bool> asleep = false;
  std::atomic<bool> awake = false;
  SteadyClock::duration slept{};
  std::thread thread([&] {
    SystemSleeper sleeper;
    const auto start = SteadyClock::now();
    asleep = true;
    sleeper.sleepFor(50'000us);
    slept = SteadyClock::now() - start;
    awake = true;
  });
  while (!asleep) std::this_thread::yield();
  while (!awake) {
    pthread_kill(thread.native_handle(), SIGUSR1);
    std::this_thread::yield();
  }
  thread.join();
  sigaction(SIGUSR1, &before, nullptr);
  EXPECT_GE(slept, 50ms);
}

}  // namespace
}  // namespace zarvy
