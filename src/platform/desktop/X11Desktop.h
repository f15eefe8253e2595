#pragma once

#include <functional>
#include <memory>
#include <optional>

#include <QString>

#include "base/LineOutput.h"
#include "base/Scheduler.h"
#include "platform/Desktop.h"
#include "platform/LatePorts.h"
#include "platform/SecureInput.h"
#include "platform/UserDefaults.h"
#include "platform/freedesktop/accessibility/PasswordFields.h"
#include "platform/freedesktop/inputmethod/DesktopInputMethod.h"
#include "platform/posix/FocusClaims.h"
#include "platform/posix/TerminalPasswords.h"
#include "platform/x11/X11Session.h"
#include "platform/x11/clipboard/X11Pasteboard.h"

namespace zarvy {

// Secure input of two kinds as one. Where both are on, the first one's owner is named. Main thread.
class EitherSecureInput final : public SecureInput {
 public:
  // Both outlive this.
  EitherSecureInput(const SecureInput& first, const SecureInput& second)
      : m_first(first), m_second(second) {}

  [[nodiscard]] bool isSecureEventInputEnabled() const override {
    return m_first.isSecureEventInputEnabled() || m_second.isSecureEventInputEnabled();
  }

  [[nodiscard]] std::optional<qint32> ownerProcessIdentifier() const override {
    const SecureInput& active = m_first.isSecureEventInputEnabled() ? m_first : m_second;
    return active.ownerProcessIdentifier();
  }

 private:
  const SecureInput& m_first;
  const SecureInput& m_second;
};

// The X display, with what the session's services and the terminals know of passwords. Dropping it
// gives the keyboard mapping back.
class X11Desktop final : public Desktop {
 public:
  // Whether Chromium and its relatives are made to tell of their password fields: a user's default.
  static constexpr QStringView browsersKey = u"ZarvyAskBrowsersForPasswordFields";

  // As makeDesktop().
  X11Desktop(Scheduler& scheduler, LineOutput& output, const UserDefaults& defaults,
             std::function<void()> onLost);
  ~X11Desktop() override;
  X11Desktop(const X11Desktop&) = delete;
  X11Desktop& operator=(const X11Desktop&) = delete;

  [[nodiscard]] const DesktopParts& parts() const override { return m_parts; }
  [[nodiscard]] const Pasteboard& othersClipboard() const override { return m_clipboard; }
  [[nodiscard]] InputMethod& inputMethod() override { return m_inputMethod; }
  [[nodiscard]] bool hasCompositor() const override;
  void abandonTyping() override;
  void close() override;

  [[nodiscard]] bool isTrusted() const override;
  [[nodiscard]] QString reasonForMissing() const override;
  // Tries once more where there is no display yet.
  void lookAgain() override;
  // A display has what the program needs or has not: there is nothing to ask for, or to grant.
  [[nodiscard]] bool canBeAskedFor() const override { return false; }
  [[nodiscard]] QString remedy() const override;
  void ask() override {}
  void openSettings() override {}

 private:
  void openSession();
  void sayThatDisplayHasGone();

  Scheduler& m_scheduler;
  LineOutput& m_output;
  const std::function<void()> m_onLost;
  bool m_hasSaidSo = false;
  QString m_reason;           // why there is no session
  FocusClaims m_focusClaims;  // asked by what follows alone
  // These listen only where there is a session.
  PasswordFields m_passwordFields;
  TerminalPasswords m_terminalPasswords;
  EitherSecureInput m_passwords{m_passwordFields, m_terminalPasswords};
  std::unique_ptr<x11::X11Session> m_session;
  // These are present exactly while there is a session.
  std::optional<EitherSecureInput> m_secureInput;
  std::optional<DesktopParts> m_sessionParts;
  LatePorts m_late;
  const DesktopParts m_parts = partsOf(m_late);
  bool m_isClosed = false;
  const x11::X11Pasteboard m_clipboard;
  DesktopInputMethod m_inputMethod;
};

}  // namespace zarvy
