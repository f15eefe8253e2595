#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QHash>
#include <QObject>
#include <QTimer>

#include "platform/freedesktop/accessibility/AccessibleObject.h"

namespace zarvy {

class FieldSecrecy;
class FocusSearch;
class ToolkitKeyDetour;

// Follows the keyboard's focus from field to field, as applications tell it on one accessibility
// bus, and asks each field for its role; the first is looked for. What an application says changes
// nothing that is known of another one's field before it is clear that it can have the keyboard.
// Every question is asynchronous: an application that does not answer holds nothing up. One
// thread, which runs an event loop.
class FocusFollower final : public QObject {
  Q_OBJECT

 public:
  // What it keeps up to date. Both outlive it.
  struct Told {
    FieldSecrecy& secrecy;
    ToolkitKeyDetour& detour;
  };

  struct Options {
    // For how long a field counts as secret that has not said what it is.
    std::chrono::milliseconds patience;
    // Whose fields do not count: a menu of this program leaves the keyboard's window as it is.
    qint64 ownProcess;
    // Whether a process that says that a field of its own has the keyboard can be right. Called on
    // the follower's thread.
    std::function<bool(qint64 process)> canHaveKeyboard;
  };

  // `bus` is connected.
  FocusFollower(QDBusConnection bus, const Told& told, const Options& options);
  ~FocusFollower() override;  // nothing is secret any more

  // The keyboard has gone to another window: is the field still the one that has it? An application
  // that hangs does not tell.
  void lookAgain();

 private:
  using AnswerHandler = std::function<void(const QDBusMessage& answer)>;

  // A field that is said to have the keyboard.
  struct Claim {
    AccessibleObject field;
    bool isFound = false;  // by the search, so that it has had it all the time
  };

  Q_SLOT void handleFocus(const QDBusMessage& signal);
  Q_SLOT void handleDeactivatedWindow(const QDBusMessage& signal);
  Q_SLOT void handleNewRole(const QDBusMessage& signal);
  Q_SLOT void handleLostPeer(const QDBusMessage& signal);
  void listen();
  void askForEvents();
  void searchFocus();
  void consider(const Claim& claim);
  void learnProcess(const QString& peer, std::optional<uint> process);
  void judge(const Claim& claim, qint64 process);
  void accept(const Claim& claim, qint64 process);
  void begin();
  void endDoubtOfClaims();
  void dropClaims();
  void leave();
  void askForRole();
  void askForFocus();
  // `handler` is called with the answer, an error included, unless another question was asked by
  // then.
  void ask(const QDBusMessage& question, AnswerHandler handler);
  void settle(bool isSecret);
  void loseHope();

  QDBusConnection m_bus;
  FieldSecrecy& m_secrecy;
  ToolkitKeyDetour& m_detour;
  const qint64 m_ownProcess;
  const std::function<bool(qint64)> m_canHaveKeyboard;
  QTimer m_patience;                      // with a field that does not say what it is
  QTimer m_claimPatience;                 // with a bus that does not say whose a connection is
  std::unique_ptr<FocusSearch> m_search;  // absent once an application has told, which is newer

  QHash<QString, qint64> m_processes;  // of the connections that are known
  QHash<QString, Claim> m_claims;      // the latest of each connection that is not known yet
  // The latest of an application that could not have the keyboard: it may have been early.
  std::optional<std::pair<AccessibleObject, qint64>> m_refused;

  std::optional<AccessibleObject> m_field;  // the one that has the keyboard, as far as is known
  bool m_isSettled = true;                  // it has said what it is
  quint64 m_question = 0;  // number of the latest; answers to older ones are dropped
};

}  // namespace zarvy
