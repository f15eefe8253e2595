#include "platform/x11/typing/TargetBarrier.h"

#include <algorithm>
#include <unistd.h>
#include <utility>

#include "platform/KeyDetour.h"
#include "platform/x11/connection/Connection.h"
#include "platform/x11/connection/XEvents.h"
#include "platform/x11/typing/ProcessActivity.h"
#include "platform/x11/windows/WindowProperties.h"

namespace zarvy::x11 {

namespace {

using namespace std::chrono_literals;

constexpr auto longestPing = 1000ms;

// After a detour that took too long.
constexpr auto restFromDetours = 5s;

// All windows that are waited for together.
constexpr auto longestWaitForAll = 4000ms;
constexpr auto longestWaitInAHurry = 500ms;

// An application that answers no ping must have been found asleep so many times in a row; it gets
// at least the shortest time.
constexpr int restsInARow = 8;
constexpr auto samplingInterval = 5ms;
constexpr auto shortestSettling = 60ms;

// A browser was seen to type by the former keymap without it.
constexpr auto readingOfKeymap = 20ms;

}  // namespace

TargetBarrier::TargetBarrier(Connection& connection, const WindowProperties& windows,
                             KeyDetour* keyDetour, std::chrono::milliseconds longestDetour)
    : m_connection(connection),
      m_windows(windows),
      m_keyDetour(keyDetour),
      m_longestDetour(longestDetour) {}

void TargetBarrier::waitUntilRead(const std::set<xcb_window_t>& windows) {
  {
    const std::lock_guard lock(m_mutex);
    if (!m_hurried) m_deadline = Clock::now() + longestWaitForAll;
  }
  m_connection.synchronize();
  for (const xcb_window_t window : windows) waitForOne(window);
}

void TargetBarrier::waitForOne(xcb_window_t window) {
  std::vector<ProcessActivity> processes;
  const qint64 process = m_windows.localProcess(window);
  processes.emplace_back(process == getpid() ? 0 : process);  // which never rests while it asks
  if (processes.front().isStopped()) return;
  for (const qint64 server : m_windows.inputMethodProcesses()) processes.emplace_back(server);
  const bool hasAnswered = window != XCB_WINDOW_NONE && m_windows.answersPing(window) &&
                           ping(window, longestPing) == Answer::read;
  if (!hasAnswered || processes.size() > 1) settle(std::move(processes));
}

bool TargetBarrier::awaitKeyDetour(xcb_window_t window) {
  if (!m_keyDetour || window == XCB_WINDOW_NONE) return false;
  const qint64 process = m_keyDetour->process();
  if (process == 0 || process != m_windows.localProcess(window)) return false;
  {
    const std::lock_guard lock(m_mutex);
    if (m_released || Clock::now() < m_noDetourUntil) return false;
    if (!m_hurried) m_deadline = Clock::now() + longestWaitForAll;
  }
  const bool hasPassed = m_windows.answersPing(window) &&
                         ping(window, m_longestDetour) == Answer::read &&
                         m_keyDetour->awaitPassage();
  if (hasPassed) return true;
  const std::lock_guard lock(m_mutex);
  m_noDetourUntil = Clock::now() + restFromDetours;
  return true;
}

template <typename Condition>
bool TargetBarrier::waitFor(std::unique_lock<std::mutex>& lock, Clock::duration longest,
                            Condition condition) {
  const auto limit = Clock::now() + longest;
  // The common limit may come nearer while this waits.
  while (!m_released && !condition()) {
    const auto now = Clock::now();
    if (now >= std::min(limit, m_deadline)) return false;
    m_answered.wait_until(lock, std::min(limit, m_deadline));
  }
  return true;
}

void TargetBarrier::letKeymapBeRead() {
  std::unique_lock lock(m_mutex);
  if (!m_hurried) m_deadline = Clock::now() + longestWaitForAll;
  static_cast<void>(waitFor(lock, readingOfKeymap, [] { return false; }));
}

TargetBarrier::Answer TargetBarrier::ping(xcb_window_t window, Clock::duration longest) {
  std::unique_lock lock(m_mutex);
  const uint32_t token = ++m_lastPing;
  // The token stands where a time stamp is: the answer brings it back.
  sendToOwner(m_connection, {.window = window,
                             .type = m_connection.atoms().wmProtocols,
                             .data = {m_connection.atoms().netWmPing, token, window}});
  m_connection.flush();
  const bool answered = waitFor(lock, longest, [&] { return m_lastAnswer >= token; });
  return answered ? Answer::read : Answer::silent;
}

void TargetBarrier::handleEvent(const xcb_generic_event_t& event) {
  if (typeOf(event) != XCB_CLIENT_MESSAGE) return;
  const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
  if (message.type != m_connection.atoms().wmProtocols ||
      message.data.data32[0] != m_connection.atoms().netWmPing) {
    return;
  }
  const std::lock_guard lock(m_mutex);
  const uint32_t token = message.data.data32[1];
  if (token > m_lastPing) return;  // the answer to a window manager's own ping
  m_lastAnswer = std::max(m_lastAnswer, token);
  m_answered.notify_all();
}

// An application also sleeps while it waits for an answer of a busy server. The server serves its
// clients in turn, so once it has answered this program too, that answer is on its way and the
// application is found awake at the next look.
void TargetBarrier::settle(std::vector<ProcessActivity> processes) {
  const auto start = Clock::now();
  int rests = 0;
  for (;;) {
    m_connection.synchronize();
    bool allRest = true;
    for (ProcessActivity& process : processes) allRest = process.isResting() && allRest;
    rests = allRest ? rests + 1 : 0;
    const auto settled = Clock::now() - start;
    if (rests >= restsInARow && settled >= shortestSettling) return;
    std::unique_lock lock(m_mutex);
    static_cast<void>(waitFor(lock, samplingInterval, [] { return false; }));
    if (m_released || Clock::now() >= m_deadline) return;
  }
}

void TargetBarrier::hurry() {
  const std::lock_guard lock(m_mutex);
  m_hurried = true;
  m_deadline = Clock::now() + longestWaitInAHurry;
  m_answered.notify_all();
}

void TargetBarrier::release() {
  const std::lock_guard lock(m_mutex);
  m_released = true;
  m_answered.notify_all();
}

}  // namespace zarvy::x11
