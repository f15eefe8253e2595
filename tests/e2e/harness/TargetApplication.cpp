#include "e2e/harness/TargetApplication.h"

#include <algorithm>
#include <stdexcept>

#include "e2e/harness/WaitUntil.h"
#include "e2e/harness/WindowManager.h"

namespace zarvy::e2e {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr auto startDeadline = std::chrono::seconds(60);
constexpr auto emptyDeadline = std::chrono::seconds(20);

// The window that has come last; none where all were there before.
xcb_window_t newestWindow(const XConnection& connection, const std::vector<ManagedWindow>& before) {
  xcb_window_t newest = XCB_WINDOW_NONE;
  for (const ManagedWindow& window : managedWindows(connection)) {
    const bool wasThere = std::any_of(before.begin(), before.end(), [&](const ManagedWindow& old) {
      return old.id == window.id;
    });
    if (!wasThere) newest = window.id;
  }
  return newest;
}

xcb_window_t focusedWindow(const XConnection& connection) {
  const auto reply = owned(
      xcb_get_input_focus_reply(connection.get(), xcb_get_input_focus(connection.get()), nullptr));
  return reply ? reply->focus : xcb_window_t{XCB_WINDOW_NONE};
}

}  // namespace

void TargetApplication::start(Person& person) {
  const ProcessSpecification specification = program();
  const auto before = managedWindows(m_setting.connection);
  m_process.emplace(specification);
  bringToFront(before);
  connect();
  // A space has its place on every layout and completes no trigger. A window may drop what comes
  // before it has been drawn, so that one key may not be enough.
  const auto showsWhatIsTyped = [&] {
    clear();
    person.type(u" "_s);
    return waitForState({.text = u" "_s, .caret = 1}, std::chrono::seconds(3));
  };
  if (!waitUntil(showsWhatIsTyped, startDeadline)) {
    throw std::runtime_error(specification.program + " does not show what is typed");
  }
  clear();
}

void TargetApplication::clear() {
  empty();
  if (!waitForState({}, emptyDeadline)) throw std::runtime_error("the target cannot be emptied");
}

bool TargetApplication::waitForState(const EditorState& wanted,
                                     std::chrono::milliseconds deadline) {
  return waitUntil([&] { return state() == wanted; }, deadline, std::chrono::milliseconds(20));
}

void TargetApplication::close() {
  m_process.reset();
}

// A window manager may leave a new window behind the one that somebody is in. Who has started the
// application turns to it, and once more where the window manager was not ready for that.
void TargetApplication::bringToFront(const std::vector<ManagedWindow>& before) {
  const XConnection& connection = m_setting.connection;
  constexpr int looksBetween = 50;
  xcb_window_t window = XCB_WINDOW_NONE;
  int looks = 0;
  const auto isInFront = [&] {
    nudgeWindowManager(connection);
    const xcb_window_t newest = newestWindow(connection, before);
    looks = newest == window ? looks + 1 : 0;
    if (newest != XCB_WINDOW_NONE && looks % looksBetween == 0) turnTo(connection, newest);
    window = newest;
    return window != XCB_WINDOW_NONE && isFocused(window);
  };
  if (waitUntil(isInFront, startDeadline)) return;
  if (!m_process->isRunning()) throw std::runtime_error("the target has ended");
  throw std::runtime_error("the target did not come to the front: its window is " +
                           std::to_string(window) + ", active is " +
                           std::to_string(activeWindow(connection)) + ", the focus is at " +
                           std::to_string(focusedWindow(connection)));
}

bool TargetApplication::isFocused(xcb_window_t window) const {
  const XConnection& connection = m_setting.connection;
  const xcb_window_t focus = focusedWindow(connection);
  return activeWindow(connection) == window && focus > XCB_INPUT_FOCUS_POINTER_ROOT &&
         focus != connection.root();
}

}  // namespace zarvy::e2e
