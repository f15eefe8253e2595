#include "base/posix/ChildReaper.h"

#include <iterator>
#include <poll.h>
#include <utility>

#include "base/posix/OwnProcess.h"

namespace zarvy {

ChildReaper::ChildReaper() : m_thread([this] { reapAsTheyEnd(); }) {}

ChildReaper::~ChildReaper() {
  {
    const std::scoped_lock guard(m_mutex);
    m_ending = true;
  }
  m_wakeUp.raise();
  m_thread.join();
}

void ChildReaper::adopt(ChildProcess child) {
  {
    const std::scoped_lock guard(m_mutex);
    m_adopted.push_back(std::move(child));
  }
  m_wakeUp.raise();
}

void ChildReaper::reapAsTheyEnd() {
  nameThisThread("child-reaper");
  std::vector<ChildProcess> children;
  while (true) {
    std::vector<pollfd> watched{{m_wakeUp.descriptor(), POLLIN, 0}};
    for (const ChildProcess& child : children)
      watched.push_back({child.endDescriptor(), POLLIN, 0});
    ::poll(watched.data(), watched.size(), -1);
    std::erase_if(children, [](ChildProcess& child) { return child.reap().has_value(); });
    m_wakeUp.lower();
    const std::scoped_lock guard(m_mutex);
    std::move(m_adopted.begin(), m_adopted.end(), std::back_inserter(children));
    m_adopted.clear();
    if (m_ending) break;
  }
  std::erase_if(children, [](ChildProcess& child) { return child.reap().has_value(); });
}

}  // namespace zarvy
