#pragma once

#include <chrono>
#include <functional>
#include <optional>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QTimer>

namespace zarvy {

class FieldSecrecy;

// Follows the keyboard's focus from field to field, as applications tell it on one accessibility
// bus, and asks each field for its role. Every question is asynchronous: an application that does
// not answer keeps nobody waiting. One thread, which runs an event loop.
class FocusFollower final : public QObject {
  Q_OBJECT

 public:
  // A field that has not said what it is counts as secret for `patience`. `bus` is connected.
  FocusFollower(QDBusConnection bus, FieldSecrecy& secrecy, std::chrono::milliseconds patience);
  ~FocusFollower() override;  // nothing is secret any more

  // The keyboard has gone to another window: is the field still the one that has it? An application
  // that hangs does not tell.
  void lookAgain();

 private Q_SLOTS:
  void handleFocus(const QDBusMessage& signal);
  void handleDeactivatedWindow(const QDBusMessage& signal);
  void handleNewRole(const QDBusMessage& signal);
  void handleLostPeer(const QDBusMessage& signal);

 private:
  struct Field {
    QString peer;  // the unique name of the application's connection
    QString path;
    bool operator==(const Field&) const = default;
  };
  using AnswerHandler = std::function<void(const QDBusMessage& answer)>;

  void listen();
  void askForEvents();
  void enter(const Field& field);
  void leave();
  void askForProcess();
  void askForRole();
  void askForFocus();
  // `handler` is called with the answer, an error included, unless another question was asked by
  // then.
  void ask(const QDBusMessage& question, AnswerHandler handler);
  [[nodiscard]] QDBusMessage questionToField(const QString& member) const;
  void settle(bool isSecret);
  void loseHope();

  QDBusConnection m_bus;
  FieldSecrecy& m_secrecy;
  QTimer m_patience;
  std::optional<Field> m_field;  // the one that has the keyboard, as far as is known
  bool m_isSettled = true;       // it has said what it is
  quint64 m_question = 0;        // number of the latest; answers to older ones are dropped
};

}  // namespace zarvy
