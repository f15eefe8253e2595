#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QTimer>

#include "platform/freedesktop/accessibility/AccessibleObject.h"

namespace zarvy {

class FieldSecrecy;
class FocusSearch;
class ToolkitKeyDetour;

// Follows the keyboard's focus from field to field, as applications tell it on one accessibility
// bus, and asks each field for its role; the first is looked for. Every question is asynchronous:
// an application that does not answer keeps nobody waiting. One thread, which runs an event loop.
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
    // Whether a process that says that a field of its own has the keyboard can be right; 0 where
    // the bus does not tell which it is. Called on the follower's thread.
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

  Q_SLOT void handleFocus(const QDBusMessage& signal);
  Q_SLOT void handleDeactivatedWindow(const QDBusMessage& signal);
  Q_SLOT void handleNewRole(const QDBusMessage& signal);
  Q_SLOT void handleLostPeer(const QDBusMessage& signal);
  void listen();
  void askForEvents();
  void searchFocus();
  void enter(const AccessibleObject& field);
  void find(const AccessibleObject& field);
  [[nodiscard]] bool turnTo(const AccessibleObject& field);
  void begin();
  // What to ask of a field once its process counts.
  enum class Then { role, nothing };
  void askForProcess(Then then);
  void learnProcess(const AccessibleObject& field, qint64 process, Then then);
  void comeBack();
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
  QTimer m_patience;
  // Absent once anything is told of the focus, which is newer.
  std::unique_ptr<FocusSearch> m_search;
  std::optional<AccessibleObject> m_field;  // the one that has the keyboard, as far as is known
  // The one that had it before an application came whose process is not known yet.
  std::optional<AccessibleObject> m_before;
  QString m_peer;           // of the latest field whose process counts
  QString m_ownPeer;        // once it is known
  bool m_isSettled = true;  // it has said what it is
  quint64 m_question = 0;   // number of the latest; answers to older ones are dropped
};

}  // namespace zarvy
