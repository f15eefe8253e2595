#pragma once

#include <functional>
#include <memory>
#include <optional>

#include <QString>

#include "EitherSecureInput.h"
#include "base/LineOutput.h"
#include "base/Scheduler.h"
#include "platform/AccessibilityPermission.h"
#include "platform/LateDesktop.h"
#include "platform/UserDefaults.h"
#include "platform/freedesktop/accessibility/PasswordFields.h"
#include "platform/posix/FocusClaims.h"
#include "platform/posix/TerminalPasswords.h"
#include "platform/x11/X11Session.h"

namespace zarvy {

// The desktop that the program has found: the X display, or none, or one that is found later. Made
// and dropped on the main thread, after everything that types has ended; dropping it gives the
// keyboard mapping back.
class Desktop final : public AccessibilityPermission {
 public:
  // Whether Chromium and its relatives are made to tell of their password fields: a user's default.
  static constexpr QStringView browsersKey = u"ZarvyAskBrowsersForPasswordFields";

  // `onLost` is called on the main thread if the display goes away.
  Desktop(Scheduler& scheduler, LineOutput& output, const UserDefaults& defaults,
          std::function<void()> onLost);
  ~Desktop() override;
  Desktop(const Desktop&) = delete;
  Desktop& operator=(const Desktop&) = delete;

  // What the display offers; nothing until there is one.
  [[nodiscard]] LateDesktop& parts() { return m_desktop; }

  // Whether windows may let through what is behind them.
  [[nodiscard]] bool hasCompositor() const;

  // Typing that is still under way stops at once. Any thread.
  void abandonTyping();

  // Gives the keyboard mapping back. After everything that hears and types has ended. Says that the
  // display has gone where that has not been said.
  void close();

  [[nodiscard]] bool isTrusted() const override;
  [[nodiscard]] QString reasonForMissing() const override;
  // Tries once more where there is no display yet.
  void lookAgain() override;
  // A display has what the program needs or has not: there is nobody to ask, and nothing to grant.
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
  std::optional<DesktopParts> m_parts;
  LateDesktop m_desktop;
  bool m_isClosed = false;
};

}  // namespace zarvy
