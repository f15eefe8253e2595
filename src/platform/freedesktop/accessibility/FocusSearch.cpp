#include "platform/freedesktop/accessibility/FocusSearch.h"

#include <chrono>
#include <utility>

#include <QDBusArgument>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QTimer>

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

namespace {

constexpr int mostQuestions = 2000;
constexpr std::chrono::seconds longest{3};

// States of the accessibility protocol, by their bits.
constexpr quint64 activeState = 1ULL << 1U;
constexpr quint64 focusedState = 1ULL << 12U;
constexpr quint64 showingState = 1ULL << 25U;
constexpr quint64 managesDescendantsState = 1ULL << 31U;  // a table, with cells without number

quint64 statesIn(const QDBusMessage& answer) {
  if (answer.type() != QDBusMessage::ReplyMessage || answer.signature() != u"au") return 0;
  const auto words = qdbus_cast<QList<uint>>(answer.arguments().value(0));
  return words.isEmpty() ? 0 : words.constFirst();
}

QList<FocusSearch::Place> placesIn(const QDBusMessage& answer) {
  QList<FocusSearch::Place> places;
  if (answer.type() != QDBusMessage::ReplyMessage || answer.signature() != u"a(so)") return places;
  const auto list = answer.arguments().value(0).value<QDBusArgument>();
  list.beginArray();
  while (!list.atEnd()) {
    QString peer;
    QDBusObjectPath path;
    list.beginStructure();
    list >> peer >> path;
    list.endStructure();
    places.append({.peer = peer, .path = path.path()});
  }
  list.endArray();
  return places;
}

}  // namespace

FocusSearch::FocusSearch(QDBusConnection bus, FoundHandler onFound)
    : m_bus(std::move(bus)), m_onFound(std::move(onFound)), m_questionsLeft(mostQuestions) {
  QTimer::singleShot(longest, this, [this] { m_isOver = true; });
  const Place desktop{.peer = u"org.a11y.atspi.Registry"_s,
                      .path = u"/org/a11y/atspi/accessible/root"_s};
  forEachChild(desktop, [this](const Place& application) {
    forEachChild(application, [this](const Place& window) { lookIntoWindow(window); });
  });
}

void FocusSearch::lookIntoWindow(const Place& window) {
  ask(window, u"GetState"_s, [this, window](const QDBusMessage& answer) {
    const quint64 states = statesIn(answer);
    if ((states & activeState) != 0) lookInto(window, states);
  });
}

void FocusSearch::lookInto(const Place& place) {
  ask(place, u"GetState"_s,
      [this, place](const QDBusMessage& answer) { lookInto(place, statesIn(answer)); });
}

void FocusSearch::lookInto(const Place& place, quint64 states) {
  if ((states & focusedState) != 0) m_onFound(place);
  const bool hasShownChildren =
      (states & showingState) != 0 && (states & managesDescendantsState) == 0;
  if (hasShownChildren) forEachChild(place, [this](const Place& child) { lookInto(child); });
}

void FocusSearch::forEachChild(const Place& place, const PlaceHandler& handler) {
  ask(place, u"GetChildren"_s, [handler](const QDBusMessage& answer) {
    for (const Place& child : placesIn(answer)) handler(child);
  });
}

void FocusSearch::ask(const Place& place, const QString& member, AnswerHandler handler) {
  if (m_questionsLeft == 0) return;
  --m_questionsLeft;
  const auto question = QDBusMessage::createMethodCall(place.peer, place.path,
                                                       u"org.a11y.atspi.Accessible"_s, member);
  auto* watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(question), this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this,
          [this, handler = std::move(handler)](QDBusPendingCallWatcher* call) {
            call->deleteLater();
            if (!m_isOver) handler(call->reply());
          });
}

}  // namespace zarvy
