#pragma once

#include <memory>
#include <optional>

#include <QDBusConnection>
#include <QObject>

#include "platform/freedesktop/accessibility/FocusFollower.h"

namespace zarvy {

// Finds the accessibility bus of the user's session and follows the focus on it. Where there is no
// such bus it waits for one; where it goes away, for the next; where it does not answer, it tries
// again with each lookAgain(). Toolkits that speak on the bus only if somebody listens are told
// that somebody does, until close(). One thread, which runs an event loop and may wait for the
// buses: for half a second where one does not say its first words.
class AccessibilityBus final : public QObject {
  Q_OBJECT

 public:
  // See PasswordFields.
  AccessibilityBus(const FocusFollower::Told& told, const FocusFollower::Options& options,
                   QString sessionAddress);
  ~AccessibilityBus() override;

  void open();
  void close();

  // See FocusFollower.
  void lookAgain();

 private:
  using AnswerHandler = void (AccessibilityBus::*)(const QDBusMessage& answer);

  [[nodiscard]] QDBusConnection sessionBus() const;
  void findBus();
  Q_SLOT void dropBus();
  void useBus(const QDBusMessage& addressAnswer);
  void followBus();
  void announceListener();
  void announceWhereNobodyHas(const QDBusMessage& isEnabledAnswer);
  void takeBackAnnouncement();
  void ask(const QDBusMessage& question, AnswerHandler handler);

  const FocusFollower::Told m_told;
  const FocusFollower::Options m_options;
  const QString m_sessionAddress;
  std::optional<QDBusConnection> m_session;
  std::optional<QDBusConnection> m_bus;  // present exactly while it is connected
  QString m_address;                     // of m_bus, or of one that has not answered
  std::unique_ptr<FocusFollower> m_follower;
  bool m_hasAnnounced = false;  // nobody had before
};

}  // namespace zarvy
