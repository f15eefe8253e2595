#pragma once

#include <chrono>
#include <memory>
#include <optional>

#include <QDBusConnection>
#include <QObject>
#include <QTimer>

#include "platform/freedesktop/accessibility/BrowserWaker.h"
#include "platform/freedesktop/accessibility/FocusFollower.h"

namespace zarvy {

// Finds the accessibility bus of the user's session and follows the focus on it. Where there is no
// such bus it waits for one; where it goes away, it asks for another one, which starts it, after a
// pause that grows from one question to the next; where it does not answer, it tries again with
// each lookAgain(). Toolkits that speak on the bus only to a listener are told that there is one,
// until close(). One thread, which runs an event loop and may wait for the buses: for half a
// second where one does not say its first words.
class AccessibilityBus final : public QObject {
  Q_OBJECT

 public:
  // See PasswordFields.
  struct Options {
    FocusFollower::Options follower;
    QString sessionAddress;
    std::chrono::milliseconds pauseWithoutBus;
    bool wakesBrowsers;
  };
  AccessibilityBus(const FocusFollower::Told& told, Options options);
  ~AccessibilityBus() override;

  void open();
  void close();

  // See FocusFollower.
  void lookAgain();

 private:
  using AnswerHandler = void (AccessibilityBus::*)(const QDBusMessage& answer);

  [[nodiscard]] QDBusConnection sessionBus() const;
  void findBus();
  Q_SLOT void loseBus();
  void dropBus();
  void askForAnotherBus();
  void useBus(const QDBusMessage& addressAnswer);
  void followBus();
  void announceListener();
  void announceUnlessAnnounced(const QDBusMessage& isEnabledAnswer);
  void takeBackAnnouncement();
  void ask(const QDBusMessage& question, AnswerHandler handler);

  const FocusFollower::Told m_told;
  const Options m_options;
  std::optional<QDBusConnection> m_session;
  std::optional<QDBusConnection> m_bus;  // present exactly while it is connected
  QString m_address;                     // of m_bus, or of one that has not answered
  std::unique_ptr<FocusFollower> m_follower;
  std::unique_ptr<BrowserWaker> m_waker;  // beside the follower, where browsers are woken
  bool m_hasAnnounced = false;            // no other program had before
  QTimer m_later;                         // for the next question for a bus
};

}  // namespace zarvy
