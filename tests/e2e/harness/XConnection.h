#pragma once

#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <xcb/xcb.h>

namespace zarvy::e2e {

template <typename Type>
struct FreeReply {
  void operator()(Type* reply) const { std::free(reply); }
};

// What xcb hands out and wants back with free().
template <typename Type>
using Reply = std::unique_ptr<Type, FreeReply<Type>>;

template <typename Type>
[[nodiscard]] Reply<Type> owned(Type* reply) {
  return Reply<Type>(reply);
}

// The harness's own connection to the server under test, with the extensions that a stand-in for a
// person needs. One thread. The constructor throws std::runtime_error where it cannot connect.
class XConnection {
 public:
  explicit XConnection(const std::string& display);
  XConnection(const XConnection&) = delete;
  XConnection& operator=(const XConnection&) = delete;
  ~XConnection();

  [[nodiscard]] xcb_connection_t* get() const { return m_connection; }
  [[nodiscard]] xcb_window_t root() const { return m_root; }

  [[nodiscard]] xcb_atom_t atom(const std::string& name) const;

  // The 32-bit items of a property; empty where it is absent.
  [[nodiscard]] std::vector<std::uint32_t> property(xcb_window_t window,
                                                    const std::string& name) const;

  // The server has carried out every request so far when this returns.
  void synchronise() const;

 private:
  xcb_connection_t* m_connection;
  xcb_window_t m_root = XCB_WINDOW_NONE;
};

}  // namespace zarvy::e2e
