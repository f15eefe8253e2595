#pragma once

#include <memory>
#include <string>

#include "e2e/harness/XConnection.h"

namespace zarvy::e2e {

// Counts how often the server tells an ordinary client that the keyboard's mapping has changed.
class MappingChanges {
 public:
  explicit MappingChanges(const std::string& display)
      : m_connection(xcb_connect(display.c_str(), nullptr)) {}
  MappingChanges(const MappingChanges&) = delete;
  MappingChanges& operator=(const MappingChanges&) = delete;
  ~MappingChanges() { xcb_disconnect(m_connection); }

  // Since the last call, or the beginning.
  [[nodiscard]] int take() {
    // Events arrive ahead of the answer to a later request.
    const auto answer =
        owned(xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
    int count = 0;
    while (const auto event = owned(xcb_poll_for_event(m_connection))) {
      count += (event->response_type & 0x7F) == XCB_MAPPING_NOTIFY ? 1 : 0;
    }
    return count;
  }

 private:
  xcb_connection_t* m_connection;
};

}  // namespace zarvy::e2e
