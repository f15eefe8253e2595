#pragma once

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

#include "base/Scheduler.h"

namespace zarvy {

// A main thread that runs when the test says so, with a time that moves when the test says so.
// Tasks may be handed over from any thread; the thread that calls runPending() or advance() plays
// the main thread.
class ManualScheduler final : public Scheduler {
 public:
  void post(Task task) override {
    insert({{}, TaskHandle::make(), std::move(task), std::nullopt}, std::chrono::milliseconds{0});
  }

  TaskHandle postAfter(std::chrono::milliseconds delay, Task task) override {
    return insert({{}, TaskHandle::make(), std::move(task), std::nullopt}, delay);
  }

  TaskHandle repeatEvery(std::chrono::milliseconds interval, Task task) override {
    return insert({{}, TaskHandle::make(), std::move(task), interval}, interval);
  }

  // Runs what is due now, and what that work posts for now, until nothing is left. Returns the
  // number of tasks that ran.
  std::size_t runPending() { return runUntil(now()); }

  // Moves the time on by `duration` and runs everything that comes due on the way, each task at
  // its own time. Returns the number of tasks that ran.
  std::size_t advance(std::chrono::milliseconds duration) { return runUntil(now() + duration); }

  // The time since the scheduler was made.
  [[nodiscard]] std::chrono::milliseconds now() const {
    const std::scoped_lock guard(m_lock);
    return m_now;
  }

  // Tasks that wait, cancelled ones left out.
  [[nodiscard]] std::size_t pendingCount() const {
    const std::scoped_lock guard(m_lock);
    return static_cast<std::size_t>(
        std::count_if(m_entries.begin(), m_entries.end(),
                      [](const Entry& entry) { return !entry.handle.isCancelled(); }));
  }

 private:
  struct Key {
    std::chrono::milliseconds due{0};
    std::uint64_t sequence = 0;
    auto operator<=>(const Key&) const = default;
  };
  struct Entry {
    Key key;
    TaskHandle handle;
    Task task;
    std::optional<std::chrono::milliseconds> interval;
  };

  TaskHandle insert(Entry entry, std::chrono::milliseconds delay) {
    const std::scoped_lock guard(m_lock);
    entry.key = {m_now + std::max(delay, std::chrono::milliseconds{0}), m_sequence++};
    TaskHandle handle = entry.handle;
    m_entries.push_back(std::move(entry));
    return handle;
  }

  std::size_t runUntil(std::chrono::milliseconds limit) {
    std::size_t count = 0;
    while (std::optional<Entry> entry = takeNext(limit)) {
      if (entry->handle.isCancelled()) continue;
      entry->task();
      ++count;
      if (entry->interval && !entry->handle.isCancelled()) {
        const auto interval = *entry->interval;
        insert(std::move(*entry), interval);
      }
    }
    const std::scoped_lock guard(m_lock);
    m_now = std::max(m_now, limit);
    return count;
  }

  std::optional<Entry> takeNext(std::chrono::milliseconds limit) {
    const std::scoped_lock guard(m_lock);
    const auto next =
        std::min_element(m_entries.begin(), m_entries.end(),
                         [](const Entry& a, const Entry& b) { return a.key < b.key; });
    if (next == m_entries.end() || next->key.due > limit) return std::nullopt;
    std::optional<Entry> entry(std::move(*next));
    m_entries.erase(next);
    m_now = std::max(m_now, entry->key.due);
    return entry;
  }

  mutable std::mutex m_lock;
  std::chrono::milliseconds m_now{0};
  std::uint64_t m_sequence = 0;
  std::vector<Entry> m_entries;
};

}  // namespace zarvy
