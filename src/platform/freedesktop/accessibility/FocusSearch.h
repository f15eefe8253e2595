#pragma once

#include <functional>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QString>

#include "platform/freedesktop/accessibility/AccessibleObject.h"

namespace zarvy {

// Looks once for the field that has the keyboard by now: applications tell only of changes. Goes
// through what the windows in front show, from the outside inwards. Every question is asynchronous,
// and their number and time are bounded: a field that is not found by then is not found. Ends with
// this object. One thread, which runs an event loop.
class FocusSearch final : public QObject {
  Q_OBJECT

 public:
  // Called for each object that says it has the focus, an inner one after the one around it.
  using FoundHandler = std::function<void(const AccessibleObject& object)>;

  // `bus` is connected.
  FocusSearch(QDBusConnection bus, FoundHandler onFound);

 private:
  using ObjectHandler = std::function<void(const AccessibleObject& object)>;
  using AnswerHandler = std::function<void(const QDBusMessage& answer)>;

  void lookIntoWindow(const AccessibleObject& window);
  void lookInto(const AccessibleObject& object);
  void lookInto(const AccessibleObject& object, quint64 states);
  void forEachChild(const AccessibleObject& object, const ObjectHandler& handler);
  void ask(const AccessibleObject& object, const QString& member, AnswerHandler handler);

  QDBusConnection m_bus;
  const FoundHandler m_onFound;
  int m_questionsLeft;
  bool m_isOver = false;
};

}  // namespace zarvy
