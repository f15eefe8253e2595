#include "platform/x11/hearing/OwnPosts.h"

#include "platform/x11/connection/XEvents.h"

namespace zarvy::x11 {

void OwnPosts::record(uint32_t sequence, uint8_t keycode, bool press) {
  m_posts.push_back({sequence, keycode, press});
}

bool OwnPosts::take(uint32_t sequence, uint8_t keycode, bool press) {
  const std::lock_guard lock(m_mutex);
  // A post may cause no event at all: a release of a key that was not down.
  while (!m_posts.empty() && isBefore(m_posts.front().sequence, sequence)) m_posts.pop_front();
  if (m_posts.empty()) return false;
  const Post& post = m_posts.front();
  if (post.sequence != sequence || post.keycode != keycode || post.press != press) return false;
  m_posts.pop_front();
  return true;
}

}  // namespace zarvy::x11
