#pragma once

#include <cstdint>
#include <functional>
#include <utility>

#include "platform/SecureInput.h"
#include "platform/x11/capture/GrabProbe.h"

namespace zarvy::x11 {

class Connection;
class GrabWatch;

// Takes a keyboard grab for secure input once it has lasted for a moment, unless it is that of a
// menu. Window managers grab for the time of a key press.
class X11SecureInput final : public SecureInput {
 public:
  // This program's own menus grab the keyboard too: `isOwnClient` knows the program by the base of
  // its resources, `isForThisProgram` says whether a window or a menu of its own has the keyboard,
  // where it is not known who holds it. Both are asked on the main thread.
  X11SecureInput(Connection& connection, GrabWatch& grabs,
                 std::function<bool(uint32_t client)> isOwnClient,
                 std::function<bool()> isForThisProgram)
      : m_connection(connection),
        m_grabs(grabs),
        m_probe(connection),
        m_isOwnClient(std::move(isOwnClient)),
        m_isForThisProgram(std::move(isForThisProgram)) {}

  // Where a client holds the keyboard, asks the server whether it still does.
  [[nodiscard]] bool isSecureEventInputEnabled() const override;

  // Asks the server. Absent where that lacks RECORD or X-Resource, for a client of another machine,
  // and for one that has held the keyboard since before this program began.
  [[nodiscard]] std::optional<qint32> ownerProcessIdentifier() const override;

 private:
  [[nodiscard]] bool isOwnGrab() const;
  [[nodiscard]] bool isMenusGrab() const;

  Connection& m_connection;
  GrabWatch& m_grabs;
  const GrabProbe m_probe;
  const std::function<bool(uint32_t client)> m_isOwnClient;
  const std::function<bool()> m_isForThisProgram;
};

}  // namespace zarvy::x11
