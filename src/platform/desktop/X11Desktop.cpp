#include "platform/desktop/X11Desktop.h"

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

PasswordFields::Options optionsFrom(const UserDefaults& defaults) {
  PasswordFields::Options options;
  options.wakesBrowsers = defaults.string(X11Desktop::browsersKey.toString()) == u"true";
  return options;
}

}  // namespace

X11Desktop::X11Desktop(Scheduler& scheduler, LineOutput& output, const UserDefaults& defaults,
                       std::function<void()> onLost)
    : m_scheduler(scheduler),
      m_output(output),
      m_onLost(std::move(onLost)),
      m_focusClaims([this] { return static_cast<pid_t>(m_session->keyboardOwner()); }),
      m_passwordFields(optionsFrom(defaults)),
      m_terminalPasswords([this] { return m_session->keyboardOwner(); }) {
  openSession();
}

// Its thread calls the session.
X11Desktop::~X11Desktop() {
  m_passwordFields.stop();
  m_terminalPasswords.stop();
}

void X11Desktop::openSession() {
  m_session = x11::X11Session::open(
      m_scheduler, m_output,
      {.ownBundleIdentifier = QCoreApplication::applicationName(),
       .isOwnWindow = [toolkit = toolkitConnection()](
                          quint32 window) { return toolkit && x11::isMadeOn(toolkit, window); },
       .ownMenuIsOpen = [] { return QApplication::activePopupWidget() != nullptr; },
       .mustNotBeHeard =
           [this] {
             return m_passwordFields.mustNotBeHeard() || m_terminalPasswords.mustNotBeHeard();
           },
       .keyDetour = &m_passwordFields.keyDetour(),
       .onFocusMoved =
           [this](qint64 process) {
             m_passwordFields.lookAgain();
             m_terminalPasswords.follow(process);
           },
       .onConnectionLost =
           [this] {
             sayThatDisplayHasGone();
             m_onLost();
           }},
      &m_reason);
  if (!m_session) return;
  m_secureInput.emplace(m_session->secureInput(), m_passwords);
  m_sessionParts.emplace(DesktopParts{m_session->keyEventSource(), m_session->keyEventPoster(),
                                      m_session->workspace(), *m_secureInput, m_session->hotKeys(),
                                      m_session->activationPolicy()});
  m_late.come(*m_sessionParts);
  m_passwordFields.start(
      [this] { m_session->forgetWhatWasTyped(); }, [this] { m_session->fenceKeys(); },
      [this](qint64 process) { return m_focusClaims.isCredible(static_cast<pid_t>(process)); });
  m_terminalPasswords.start([this] { m_session->fenceKeys(); });
}

void X11Desktop::lookAgain() {
  if (!m_session && !m_isClosed) openSession();
}

bool X11Desktop::hasCompositor() const {
  return m_session && m_session->hasCompositor();
}

void X11Desktop::abandonTyping() {
  if (m_session) m_session->abandonTyping();
}

void X11Desktop::close() {
  if (m_session && !m_session->isAlive()) sayThatDisplayHasGone();
  m_isClosed = true;
  m_passwordFields.stop();
  m_terminalPasswords.stop();
  m_late.leave();
  m_sessionParts.reset();
  m_secureInput.reset();
  m_session.reset();
}

void X11Desktop::sayThatDisplayHasGone() {
  if (!std::exchange(m_hasSaidSo, true)) m_output.print(displayHasGone());
}

bool X11Desktop::isTrusted() const {
  return m_session && m_session->isAlive();
}

QString X11Desktop::reasonForMissing() const {
  if (isTrusted()) return {};
  return m_session ? displayHasGone() : m_reason;
}

QString X11Desktop::remedy() const {
  if (isTrusted()) return {};
  if (x11::canReachDisplay())
    return u"Turn that on where the X server is started, and log in again."_s;
  return u"Let Zarvy reach the display, for example by the command \"xhost +si:localuser:$USER\", "
         "and click \"Check Permission\"."_s;
}

}  // namespace zarvy
