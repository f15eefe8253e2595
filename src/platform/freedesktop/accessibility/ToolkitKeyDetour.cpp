#include "platform/freedesktop/accessibility/ToolkitKeyDetour.h"

#include <QDBusVariant>
#include <QDeadlineTimer>

#include "platform/freedesktop/accessibility/AccessibleObject.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

namespace {

// Answered by the thread that handles an application's keys, unlike questions to its connection.
QDBusMessage toolkitQuestion(const QString& peer) {
  auto question = QDBusMessage::createMethodCall(peer, u"/org/a11y/atspi/accessible/root"_s,
                                                 u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
  question << u"org.a11y.atspi.Application"_s << u"ToolkitName"_s;
  return question;
}

QDBusMessage questionToRegistry() {
  return QDBusMessage::createMethodCall(accessibilityRegistryName(), u"/org/a11y/atspi/registry"_s,
                                        accessibilityRegistryName(), u"GetRegisteredEvents"_s);
}

}  // namespace

void ToolkitKeyDetour::follow(const QDBusConnection& bus, const QString& peer, qint64 process,
                              QObject* owner) {
  {
    const std::lock_guard lock(m_mutex);
    if (m_application && m_application->peer == peer) return;
    m_application.emplace(
        Application{.bus = bus, .peer = peer, .process = process, .takesDetour = false});
  }
  askLater(bus, toolkitQuestion(peer), owner,
           [this, peer](const QDBusMessage& answer) { learnToolkit(peer, answer); });
}

void ToolkitKeyDetour::forget() {
  const std::lock_guard lock(m_mutex);
  m_application.reset();
}

void ToolkitKeyDetour::learnToolkit(const QString& peer, const QDBusMessage& answer) {
  const QVariant toolkit = answer.arguments().value(0).value<QDBusVariant>().variant();
  const std::lock_guard lock(m_mutex);
  if (!m_application || m_application->peer != peer) return;
  m_application->takesDetour = toolkit.toString() == u"Qt";
}

std::optional<ToolkitKeyDetour::Application> ToolkitKeyDetour::onDetour() {
  const std::lock_guard lock(m_mutex);
  return m_application && m_application->takesDetour ? m_application : std::nullopt;
}

qint64 ToolkitKeyDetour::process() {
  const auto there = onDetour();
  return there ? there->process : 0;
}

// The application answers once the bus has its keys; the registry, once it has sent them back; the
// application again, once it has got them.
bool ToolkitKeyDetour::awaitPassage() {
  const auto there = onDetour();
  if (!there) return true;
  const QDeadlineTimer limit(m_longestPassage);
  const auto isAnswered = [&](const QDBusMessage& question) {
    there->bus.call(question, QDBus::Block, static_cast<int>(limit.remainingTime()));
    return !limit.hasExpired();
  };
  return isAnswered(toolkitQuestion(there->peer)) && isAnswered(questionToRegistry()) &&
         isAnswered(toolkitQuestion(there->peer));
}

}  // namespace zarvy
