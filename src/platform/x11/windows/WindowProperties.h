#pragma once

#include <optional>
#include <vector>

#include <QRect>
#include <QString>

#include <xcb/xcb.h>

namespace zarvy::x11 {

class Connection;

// What windows say of themselves and which of them is in front. Each call asks the server. Any
// thread.
class WindowProperties {
 public:
  explicit WindowProperties(Connection& connection) : m_connection(connection) {}

  // The window that has the keyboard, as the window manager tells it; without one the top-level
  // window that has the input focus. XCB_WINDOW_NONE if there is none.
  [[nodiscard]] xcb_window_t activeWindow() const;

  // The window of an application that the window with the input focus belongs to: the one that
  // carries its properties. `focus` can be XCB_INPUT_FOCUS_POINTER_ROOT. XCB_WINDOW_NONE where it
  // is gone.
  [[nodiscard]] xcb_window_t topLevelOf(xcb_window_t focus) const;

  // The same for the window that has the input focus now.
  [[nodiscard]] xcb_window_t focusedTopLevel() const;

  // Whether the window is on the screen, or minimised in the care of a window manager. False for
  // one that is gone, and for one that its application has hidden.
  [[nodiscard]] bool isInUse(xcb_window_t window) const;

  // Whether a window manager of that screen brings windows to the front on request.
  [[nodiscard]] bool activatesOnRequest(xcb_window_t root) const;

  [[nodiscard]] qint64 processIdentifier(xcb_window_t window) const;  // 0 where it does not tell
  // The process of this machine that the window belongs to, as this machine counts processes: what
  // the window tells is compared with what the server knows. 0 for another machine's.
  [[nodiscard]] qint64 localProcess(xcb_window_t window) const;

  // The input method servers of this machine. Applications that use the protocol of X for input
  // methods have these read their keys, and get them back later.
  [[nodiscard]] std::vector<qint64> inputMethodProcesses() const;

  [[nodiscard]] std::optional<QString> windowClass(xcb_window_t window) const;
  [[nodiscard]] bool answersPing(xcb_window_t window) const;

  // Where it is on its screen, without its border; absent for one that is gone.
  [[nodiscard]] std::optional<QRect> areaOf(xcb_window_t window) const;

  // The root window of the screen that `window` is on; that of the screen which the environment
  // names where the window is gone.
  [[nodiscard]] xcb_window_t rootOf(xcb_window_t window) const;

  // Whether windows may let through what is behind them: a compositor runs.
  [[nodiscard]] bool hasCompositor() const;

  // A managed window of the process, the one in front first; XCB_WINDOW_NONE where it has none.
  [[nodiscard]] xcb_window_t windowOfProcess(qint64 processIdentifier) const;

 private:
  [[nodiscard]] bool isManaged(xcb_window_t window) const;
  [[nodiscard]] xcb_window_t windowProperty(xcb_window_t window, xcb_atom_t property) const;
  [[nodiscard]] xcb_window_t rootInFront() const;
  [[nodiscard]] xcb_window_t windowUnderPointer() const;
  [[nodiscard]] bool hasClass(xcb_window_t window) const;

  Connection& m_connection;
};

}  // namespace zarvy::x11
