#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <mutex>

namespace zarvy::x11 {

// Knows which raw key events this program caused itself. The event that a faked key causes carries
// the sequence number of the request that faked it; other clients' events can carry the same number
// later, so a post accounts for one event only. Any thread.
class OwnPosts {
 public:
  // awaitEvents() waits no longer than that.
  explicit OwnPosts(std::chrono::milliseconds longestWait = std::chrono::milliseconds{20})
      : m_longestWait(longestWait) {}

  // Hold this while posting and recording, so that no event of a post is looked at before the post
  // is on record.
  [[nodiscard]] std::unique_lock<std::mutex> lockForPosting() { return std::unique_lock(m_mutex); }

  // Under lockForPosting(), in the order of the requests.
  void record(uint32_t sequence, uint8_t keycode, bool press);

  // True, once, for the event of a recorded post. Events must be asked about in their order.
  [[nodiscard]] bool take(uint32_t sequence, uint8_t keycode, bool press);

  // How long the server needs, at least, for the events that are still to come: a thread that
  // reads them as they come wakes up for each. Zero where none are to come, or where none has come
  // since this was asked last. On the reader's thread, between two reads.
  [[nodiscard]] std::chrono::microseconds timeToCome();

  // Waits, for a bounded time, until the events of all posts have come: a thread that asks the
  // server before would be woken up by each of them.
  void awaitEvents();

 private:
  struct Post {
    uint32_t sequence;
    uint8_t keycode;
    bool press;
  };

  const std::chrono::milliseconds m_longestWait;
  std::mutex m_mutex;
  std::condition_variable m_allCame;
  std::deque<Post> m_posts;
  std::size_t m_toComeBefore = 0;  // when timeToCome() was asked last
};

}  // namespace zarvy::x11
