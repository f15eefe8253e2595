#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <mutex>

#include <QCoreApplication>
#include <QString>
#include <QThread>

#include "platform/SecureInput.h"
#include "platform/freedesktop/accessibility/FieldSecrecy.h"
#include "platform/freedesktop/accessibility/ToolkitKeyDetour.h"

namespace zarvy {

class AccessibilityBus;

// Takes a password field that has the keyboard for secure input, in whatever window it is. Its
// application tells of it on the accessibility bus: GTK and Qt do so, browsers where accessibility
// is turned on in them, terminals never. A field that has the focus already when this starts is
// searched for once.
//
// The bus is listened to on a thread of this object's own, so that it is heard also while the main
// thread is busy. Made, started, stopped and ended on the main thread.
class PasswordFields final : public SecureInput {
 public:
  struct Options {
    // For how long a field that does not say what it is counts as a secret. A user who types into
    // an application that hangs does not go on for long.
    std::chrono::milliseconds patience{1000};
    QString sessionBusAddress;  // that of the user's session where it is empty
    // From the end of the accessibility bus to the question for another one.
    std::chrono::milliseconds pauseWithoutBus{1000};
    // Has Chromium and its relatives tell of their fields, which costs them memory and time.
    bool wakesBrowsers = false;
    // The program's own: what it says of its menus does not matter.
    qint64 ownProcess = QCoreApplication::applicationPid();
  };

  explicit PasswordFields(const Options& options);
  PasswordFields() : PasswordFields(Options{}) {}
  ~PasswordFields() override;
  PasswordFields(const PasswordFields&) = delete;
  PasswordFields& operator=(const PasswordFields&) = delete;

  // Begins to listen, once. Both are called on a thread of this object's own: `onSecret` each time
  // that the keyboard turns out to be in a password field, to have what was typed before forgotten;
  // `onSecretEnds` each time that it has left one, to keep unknown what was typed there and has not
  // been read yet.
  //
  // `canHaveKeyboard` is asked there too, each time that a process says that a field of its own has
  // the keyboard: whether that can be. The process is 0 where the bus does not tell.
  void start(
      std::function<void()> onSecret, std::function<void()> onSecretEnds,
      std::function<bool(qint64 process)> canHaveKeyboard = [](qint64) { return true; });

  // Nothing is called and nothing is secret any more. Does not wait for a bus that hangs; the
  // destructor does.
  void stop();

  // Whether what is typed now must not be heard: in a password field, and in a field of
  // which nothing is known yet. Any thread, as long as this lives.
  [[nodiscard]] bool mustNotBeHeard() const { return m_secrecy.mustNotBeHeard(); }

  // To be called when the keyboard goes to another window. Any thread, as long as this lives.
  void lookAgain();

  // What the same bus does to the keys of some applications. Lives as long as this.
  [[nodiscard]] KeyDetour& keyDetour() { return m_detour; }

  [[nodiscard]] bool isSecureEventInputEnabled() const override;
  [[nodiscard]] std::optional<qint32> ownerProcessIdentifier() const override;

 private:
  [[nodiscard]] std::function<void()> unlessAbandoned(std::function<void()> call);

  FieldSecrecy m_secrecy;
  ToolkitKeyDetour m_detour;
  std::function<bool(qint64)> m_canHaveKeyboard;
  std::mutex m_mutex;
  bool m_isAbandoned = false;  // under m_mutex: its thread waits for a bus and cannot end
  std::unique_ptr<AccessibilityBus> m_bus;  // lives on m_thread once that runs
  QThread m_thread;
};

}  // namespace zarvy
