#include "platform/freedesktop/inputmethod/FakeFcitx5.h"

#include <stdexcept>

#include <QDBusMessage>

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

FakeFcitx5::FakeFcitx5(const QString& sessionAddress) : m_bus(sessionAddress) {
  if (!m_bus.get().registerVirtualObject(u"/controller"_s, this) ||
      !m_bus.get().registerService(u"org.fcitx.Fcitx5"_s)) {
    throw std::runtime_error("the name of fcitx5 is taken");
  }
}

bool FakeFcitx5::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
  if (message.interface() != u"org.fcitx.Fcitx.Controller1") return false;
  ++m_questionCount;
  if (!answers) return true;
  if (message.member() == u"CurrentInputMethod") {
    return connection.send(message.createReply(currentInputMethod));
  }
  if (message.member() == u"DebugInfo") return connection.send(message.createReply(debugInfo));
  return false;
}

}  // namespace zarvy
