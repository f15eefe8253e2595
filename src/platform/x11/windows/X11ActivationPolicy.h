#pragma once

#include <QSet>

#include "platform/ActivationPolicy.h"

namespace zarvy::x11 {

class Connection;
class WindowProperties;

// Asks the window manager to leave the program's windows out of the taskbar and the pager.
class X11ActivationPolicy final : public ActivationPolicy {
 public:
  X11ActivationPolicy(Connection& connection, const WindowProperties& windows)
      : m_connection(connection), m_properties(windows) {}

  void setActivationPolicy(Kind kind) override;
  void leaveOut(quint64 nativeWindow) override;
  void windowOpened(quint64 nativeWindow) override;
  void windowClosed(quint64 nativeWindow) override;

 private:
  void ask(quint64 nativeWindow) const;

  Connection& m_connection;
  const WindowProperties& m_properties;
  Kind m_kind = Kind::regular;
  QSet<quint64> m_windows;
  QSet<quint64> m_leftOut;  // none of these is among the others
};

}  // namespace zarvy::x11
