#include "Desktop.h"

#include <utility>

#include <QApplication>
#include <QtGui/qguiapplication_platform.h>

#include "platform/x11/windows/WindowOwner.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

namespace {

QString displayHasGone() {
  return u"The X display has gone away."_s;
}

// The connection on which the toolkit makes the program's windows; null where it makes none on a
// display.
xcb_connection_t* toolkitConnection() {
  if (QGuiApplication::platformName() != u"xcb") return nullptr;
  const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  return x11 ? x11->connection() : nullptr;
}

}  // namespace

Desktop::Desktop(Scheduler& scheduler, LineOutput& output, std::function<void()> onLost)
    : m_output(output),
      m_session(x11::X11Session::open(
          scheduler, output,
          {.ownBundleIdentifier = QCoreApplication::applicationName(),
           .isOwnWindow = [toolkit = toolkitConnection()](
                              quint32 window) { return toolkit && x11::isMadeOn(toolkit, window); },
           .ownMenuIsOpen = [] { return QApplication::activePopupWidget() != nullptr; },
           .mustNotBeHeard = [this] { return m_passwordFields.mustNotBeHeard(); },
           .onFocusMoved = [this] { m_passwordFields.lookAgain(); },
           .onConnectionLost =
               [this, onLost = std::move(onLost)] {
                 sayThatDisplayHasGone();
                 onLost();
               }},
          &m_reason)) {
  if (!m_session) return;
  m_secureInput.emplace(m_session->secureInput(), m_passwordFields);
  m_passwordFields.start([this] { m_session->forgetWhatWasTyped(); },
                         [this] { m_session->fenceKeys(); });
}

// Its thread calls the session.
Desktop::~Desktop() {
  m_passwordFields.stop();
}

KeyEventSource& Desktop::keyEventSource() {
  if (m_session) return m_session->keyEventSource();
  return m_absent;
}

KeyEventPoster& Desktop::keyEventPoster() {
  if (m_session) return m_session->keyEventPoster();
  return m_absent;
}

Workspace& Desktop::workspace() {
  if (m_session) return m_session->workspace();
  return m_absent;
}

SecureInput& Desktop::secureInput() {
  if (m_secureInput) return *m_secureInput;
  return m_absent;
}

HotKeys& Desktop::hotKeys() {
  if (m_session) return m_session->hotKeys();
  return m_absent;
}

ActivationPolicy& Desktop::activationPolicy() {
  if (m_session) return m_session->activationPolicy();
  return m_absent;
}

bool Desktop::hasCompositor() const {
  return m_session && m_session->hasCompositor();
}

void Desktop::abandonTyping() {
  if (m_session) m_session->abandonTyping();
}

void Desktop::close() {
  if (m_session && !m_session->isAlive()) sayThatDisplayHasGone();
  m_passwordFields.stop();
  m_secureInput.reset();
  m_session.reset();
}

void Desktop::sayThatDisplayHasGone() {
  if (!std::exchange(m_hasSaidSo, true)) m_output.print(displayHasGone());
}

bool Desktop::isTrusted() const {
  return m_session && m_session->isAlive();
}

QString Desktop::reasonForMissing() const {
  if (isTrusted()) return {};
  return m_session ? displayHasGone() : m_reason;
}

}  // namespace zarvy
