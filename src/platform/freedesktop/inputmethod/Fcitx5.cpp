#include "platform/freedesktop/inputmethod/Fcitx5.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QString>

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

namespace {

QString serviceName() {
  return u"org.fcitx.Fcitx5"_s;
}

// Empty where no answer comes.
QString ask(const QDBusConnection& session, const QString& question,
            std::chrono::milliseconds limit) {
  auto message = QDBusMessage::createMethodCall(serviceName(), u"/controller"_s,
                                                u"org.fcitx.Fcitx.Controller1"_s, question);
  message.setAutoStartService(false);
  const auto answer = session.call(message, QDBus::Block, static_cast<int>(limit.count()));
  if (answer.type() != QDBusMessage::ReplyMessage) return {};
  return answer.arguments().value(0).toString();
}

}  // namespace

bool fcitx5IsThere(const QDBusConnection& session, std::chrono::milliseconds limit) {
  auto question =
      QDBusMessage::createMethodCall(u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s,
                                     u"org.freedesktop.DBus"_s, u"NameHasOwner"_s);
  question << serviceName();
  const auto answer = session.call(question, QDBus::Block, static_cast<int>(limit.count()));
  return answer.type() == QDBusMessage::ReplyMessage && answer.arguments().value(0).toBool();
}

bool fcitx5IsComposing(const QDBusConnection& session, std::chrono::milliseconds limit) {
  const QString method = ask(session, u"CurrentInputMethod"_s, limit);
  return fcitx5MethodComposes(method) && fcitx5IsUsed(ask(session, u"DebugInfo"_s, limit));
}

// Its plain keyboards have the name of their layout, "keyboard-us" for example.
bool fcitx5MethodComposes(QStringView method) {
  return !method.isEmpty() && !method.startsWith(u"keyboard-");
}

// Nothing but the text that is meant for developers tells; one that looks otherwise counts for
// nothing.
bool fcitx5IsUsed(QStringView debugInfo) {
  return !debugInfo.contains(u" focus:") || debugInfo.contains(u" focus:1");
}

}  // namespace zarvy
