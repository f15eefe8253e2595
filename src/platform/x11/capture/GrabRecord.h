#pragma once

#include <functional>
#include <memory>
#include <thread>

#include <xcb/xcb.h>

#include "platform/x11/capture/GrabProtocol.h"
#include "platform/x11/connection/XcbReply.h"

struct xcb_record_enable_context_reply_t;

namespace zarvy::x11 {

class Connection;

// Has the server tell which client takes the keyboard for itself and which gives it back, on a
// connection and a thread of its own. The thread sleeps until that happens. The server sends what
// it has recorded along with its other output, so that the end of a client may be told no sooner
// than the next key is pressed. Where the server has no RECORD extension nothing is ever told.
class GrabRecord {
 public:
  // Called on this object's thread. A client is named by the base of its resources; times are the
  // server's, in milliseconds.
  struct Listener {
    std::function<void(const GrabChange& change, uint32_t client, xcb_timestamp_t time)> onChange;
    std::function<void(uint32_t client)> onClientGone;
  };

  GrabRecord(const Connection& connection, Listener listener);
  ~GrabRecord();  // ends the thread
  GrabRecord(const GrabRecord&) = delete;
  GrabRecord& operator=(const GrabRecord&) = delete;

 private:
  struct Disconnect {
    void operator()(xcb_connection_t* xcb) const { xcb_disconnect(xcb); }
  };

  using Part = XcbPtr<xcb_record_enable_context_reply_t>;

  void startRecording(uint8_t xinputOpcode);
  [[nodiscard]] Part nextPart() const;
  void read(const xcb_record_enable_context_reply_t& part);
  void readMessages(const xcb_record_enable_context_reply_t& part, bool areRequests);

  GrabProtocol m_protocol;
  Listener m_listener;
  std::unique_ptr<xcb_connection_t, Disconnect> m_xcb;
  unsigned int m_request = 0;  // the sequence number of the one that the record answers
  std::thread m_thread;
};

}  // namespace zarvy::x11
