#include "platform/x11/capture/OwnPosts.h"

#include <algorithm>
#include <utility>

#include "platform/x11/connection/XEvents.h"

namespace zarvy::x11 {

namespace {

using namespace std::chrono_literals;

// Less than a server needs to carry out a faked key and to tell its listeners.
constexpr auto timeOfPost = 10us;
constexpr auto longestTimeToCome = 2000us;

}  // namespace

void OwnPosts::record(uint32_t sequence, uint8_t keycode, bool press) {
  m_posts.push_back({sequence, keycode, press});
}

bool OwnPosts::take(uint32_t sequence, uint8_t keycode, bool press) {
  const std::lock_guard lock(m_mutex);
  // A post may cause no event at all: a release of a key that was not down.
  while (!m_posts.empty() && isBefore(m_posts.front().sequence, sequence)) m_posts.pop_front();
  if (m_posts.empty()) {
    m_allCame.notify_all();
    return false;
  }
  const Post& post = m_posts.front();
  if (post.sequence != sequence || post.keycode != keycode || post.press != press) return false;
  m_posts.pop_front();
  if (m_posts.empty()) m_allCame.notify_all();
  return true;
}

std::chrono::microseconds OwnPosts::timeToCome() {
  const std::lock_guard lock(m_mutex);
  const std::size_t toCome = m_posts.size();
  if (std::exchange(m_toComeBefore, toCome) == toCome) return 0us;
  return std::min<std::chrono::microseconds>(toCome * timeOfPost, longestTimeToCome);
}

void OwnPosts::awaitEvents() {
  std::unique_lock lock(m_mutex);
  m_allCame.wait_for(lock, m_longestWait, [this] { return m_posts.empty(); });
}

}  // namespace zarvy::x11
