#include "platform/freedesktop/accessibility/FocusSearch.h"

#include <chrono>
#include <utility>

#include <QTimer>

#include "platform/freedesktop/accessibility/AccessibleObject.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

namespace {

constexpr int mostQuestions = 2000;
constexpr std::chrono::seconds longest{3};

}  // namespace

FocusSearch::FocusSearch(QDBusConnection bus, FoundHandler onFound)
    : m_bus(std::move(bus)), m_onFound(std::move(onFound)), m_questionsLeft(mostQuestions) {
  QTimer::singleShot(longest, this, [this] { m_isOver = true; });
  forEachChild(accessibleDesktop(), [this](const AccessibleObject& application) {
    forEachChild(application, [this](const AccessibleObject& window) { lookIntoWindow(window); });
  });
}

void FocusSearch::lookIntoWindow(const AccessibleObject& window) {
  ask(window, u"GetState"_s, [this, window](const QDBusMessage& answer) {
    const quint64 states = statesIn(answer);
    if ((states & accessiblestate::active) != 0) lookInto(window, states);
  });
}

void FocusSearch::lookInto(const AccessibleObject& object) {
  ask(object, u"GetState"_s,
      [this, object](const QDBusMessage& answer) { lookInto(object, statesIn(answer)); });
}

void FocusSearch::lookInto(const AccessibleObject& object, quint64 states) {
  if ((states & accessiblestate::focused) != 0) m_onFound(object);
  const bool hasShownChildren = (states & accessiblestate::showing) != 0 &&
                                (states & accessiblestate::managesDescendants) == 0;
  if (hasShownChildren)
    forEachChild(object, [this](const AccessibleObject& child) { lookInto(child); });
}

void FocusSearch::forEachChild(const AccessibleObject& object, const ObjectHandler& handler) {
  ask(object, u"GetChildren"_s, [handler](const QDBusMessage& answer) {
    for (const AccessibleObject& child : objectsIn(answer)) handler(child);
  });
}

void FocusSearch::ask(const AccessibleObject& object, const QString& member,
                      AnswerHandler handler) {
  if (m_questionsLeft == 0) return;
  --m_questionsLeft;
  askLater(m_bus, questionTo(object, member), this,
           [this, handler = std::move(handler)](const QDBusMessage& answer) {
             if (!m_isOver) handler(answer);
           });
}

}  // namespace zarvy
