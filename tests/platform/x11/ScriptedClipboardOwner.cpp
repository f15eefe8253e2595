#include "platform/x11/ScriptedClipboardOwner.h"

#include <poll.h>
#include <utility>

namespace zarvy::x11 {

using e2e::owned;

ScriptedClipboardOwner::ScriptedClipboardOwner(const std::string& display, Answer answer)
    : m_connection(display), m_answer(std::move(answer)) {
  xcb_connection_t* const xcb = m_connection.get();
  m_window = xcb_generate_id(xcb);
  xcb_create_window(xcb, XCB_COPY_FROM_PARENT, m_window, m_connection.root(), 0, 0, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
  xcb_set_selection_owner(xcb, m_window, m_connection.atom("CLIPBOARD"), XCB_CURRENT_TIME);
  m_connection.synchronise();
  m_thread = std::jthread([this] { serve(); });
}

ScriptedClipboardOwner::~ScriptedClipboardOwner() {
  m_ends = true;
  m_thread.join();
}

void ScriptedClipboardOwner::serve() {
  while (const auto event = nextEvent()) {
    if ((event->response_type & 0x7F) != XCB_SELECTION_REQUEST) continue;
    const auto& asked = reinterpret_cast<const xcb_selection_request_event_t&>(*event);
    const auto name = owned(xcb_get_atom_name_reply(
        m_connection.get(), xcb_get_atom_name(m_connection.get(), asked.target), nullptr));
    ++m_requests;
    m_answer(*this, {{xcb_get_atom_name_name(name.get()),
                      static_cast<std::size_t>(xcb_get_atom_name_name_length(name.get()))},
                     asked});
  }
}

void ScriptedClipboardOwner::refuse(const Request& request) {
  notify(request, XCB_ATOM_NONE);
}

void ScriptedClipboardOwner::give(const Request& request, const std::string& bytes) {
  put(request, request.event.target, bytes);
  notify(request, request.event.property);
}

void ScriptedClipboardOwner::giveInPieces(const Request& request,
                                          const std::vector<std::string>& pieces,
                                          std::chrono::milliseconds pauseBetween) {
  const uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
  xcb_change_window_attributes(m_connection.get(), request.event.requestor, XCB_CW_EVENT_MASK,
                               &events);
  put(request, m_connection.atom("INCR"), "");
  notify(request, request.event.property);
  for (const std::string& piece : pieces) {
    if (!waitUntilTaken(request)) return;
    pause(pauseBetween);
    put(request, request.event.target, piece);
  }
}

void ScriptedClipboardOwner::die() {
  xcb_destroy_window(m_connection.get(), m_window);
  m_connection.synchronise();
}

void ScriptedClipboardOwner::pause(std::chrono::milliseconds time) const {
  const auto end = std::chrono::steady_clock::now() + time;
  while (!m_ends && std::chrono::steady_clock::now() < end) {
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
}

void ScriptedClipboardOwner::notify(const Request& request, xcb_atom_t property) {
  xcb_selection_notify_event_t event{};
  event.response_type = XCB_SELECTION_NOTIFY;
  event.time = request.event.time;
  event.requestor = request.event.requestor;
  event.selection = request.event.selection;
  event.target = request.event.target;
  event.property = property;
  xcb_send_event(m_connection.get(), 0, request.event.requestor, XCB_EVENT_MASK_NO_EVENT,
                 reinterpret_cast<const char*>(&event));
  m_connection.synchronise();
}

void ScriptedClipboardOwner::put(const Request& request, xcb_atom_t type,
                                 const std::string& bytes) {
  xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, request.event.requestor,
                      request.event.property, type, 8, static_cast<uint32_t>(bytes.size()),
                      bytes.data());
  m_connection.synchronise();
}

bool ScriptedClipboardOwner::waitUntilTaken(const Request& request) {
  while (const auto event = nextEvent()) {
    if ((event->response_type & 0x7F) != XCB_PROPERTY_NOTIFY) continue;
    const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(*event);
    if (change.window == request.event.requestor && change.atom == request.event.property &&
        change.state == XCB_PROPERTY_DELETE) {
      return true;
    }
  }
  return false;
}

e2e::Reply<xcb_generic_event_t> ScriptedClipboardOwner::nextEvent() {
  while (!m_ends) {
    if (auto event = owned(xcb_poll_for_event(m_connection.get()))) return event;
    pollfd watched{xcb_get_file_descriptor(m_connection.get()), POLLIN, 0};
    poll(&watched, 1, 10);
  }
  return nullptr;
}

}  // namespace zarvy::x11
