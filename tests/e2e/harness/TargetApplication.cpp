#include "e2e/harness/TargetApplication.h"

#include <stdexcept>

#include "e2e/harness/WaitUntil.h"
#include "e2e/harness/Windows.h"

namespace zarvy::e2e {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr auto startDeadline = std::chrono::seconds(60);
constexpr auto emptyDeadline = std::chrono::seconds(20);

}  // namespace

void TargetApplication::start(Person& person) {
  const ProcessSpecification specification = program();
  const xcb_window_t before = activeWindow(m_setting.connection);
  m_process.emplace(specification);
  if (!waitUntil([&] { return isFocusedInsteadOf(before); }, startDeadline)) {
    throw std::runtime_error(specification.program + " did not come to the front");
  }
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

bool TargetApplication::isFocusedInsteadOf(xcb_window_t before) const {
  const XConnection& connection = m_setting.connection;
  const xcb_window_t active = activeWindow(connection);
  if (active == XCB_WINDOW_NONE || active == before) return false;
  const auto focus = owned(
      xcb_get_input_focus_reply(connection.get(), xcb_get_input_focus(connection.get()), nullptr));
  return focus && focus->focus > XCB_INPUT_FOCUS_POINTER_ROOT && focus->focus != connection.root();
}

}  // namespace zarvy::e2e
