#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "e2e/harness/XConnection.h"

namespace zarvy::x11 {

// Another client of the display that owns the clipboard and does with a request as a test says. On
// a thread of its own. Gives the clipboard up with the object.
class ScriptedClipboardOwner {
 public:
  struct Request {
    std::string target;
    xcb_selection_request_event_t event;
  };
  using Answer = std::function<void(ScriptedClipboardOwner& owner, const Request& request)>;

  ScriptedClipboardOwner(const std::string& display, Answer answer);
  ~ScriptedClipboardOwner();
  ScriptedClipboardOwner(const ScriptedClipboardOwner&) = delete;
  ScriptedClipboardOwner& operator=(const ScriptedClipboardOwner&) = delete;

  // For an answer.
  void refuse(const Request& request);
  void give(const Request& request, const std::string& bytes);
  // In the pieces given, each once the one before has been taken and after a pause; an empty one is
  // the end.
  void giveInPieces(const Request& request, const std::vector<std::string>& pieces,
                    std::chrono::milliseconds pauseBetween = {});
  void die();

  [[nodiscard]] int requests() const { return m_requests; }

 private:
  void serve();
  // Sleeps until the object ends, at most so long.
  void pause(std::chrono::milliseconds time) const;
  void notify(const Request& request, xcb_atom_t property);
  void put(const Request& request, xcb_atom_t type, const std::string& bytes);
  [[nodiscard]] bool waitUntilTaken(const Request& request);
  // Null where the object ends.
  [[nodiscard]] e2e::Reply<xcb_generic_event_t> nextEvent();

  e2e::XConnection m_connection;
  const Answer m_answer;
  xcb_window_t m_window = XCB_WINDOW_NONE;
  std::atomic<int> m_requests = 0;
  std::atomic<bool> m_ends = false;
  std::jthread m_thread;
};

}  // namespace zarvy::x11
