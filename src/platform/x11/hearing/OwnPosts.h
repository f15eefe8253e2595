#pragma once

#include <cstdint>
#include <deque>
#include <mutex>

namespace zarvy::x11 {

// Knows which raw key events this program caused itself. The event that a faked key causes carries
// the sequence number of the request that faked it; other clients' events can carry the same number
// later, so a post accounts for one event only. Any thread.
class OwnPosts {
 public:
  // Hold this while posting and recording, so that no event of a post is looked at before the post
  // is on record.
  [[nodiscard]] std::unique_lock<std::mutex> lockForPosting() { return std::unique_lock(m_mutex); }

  // Under lockForPosting(), in the order of the requests.
  void record(uint32_t sequence, uint8_t keycode, bool press);

  // True, once, for the event of a recorded post. Events must be asked about in their order.
  [[nodiscard]] bool take(uint32_t sequence, uint8_t keycode, bool press);

 private:
  struct Post {
    uint32_t sequence;
    uint8_t keycode;
    bool press;
  };

  std::mutex m_mutex;
  std::deque<Post> m_posts;
};

}  // namespace zarvy::x11
