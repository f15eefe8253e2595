#include "platform/freedesktop/inputmethod/DesktopInputMethod.h"

#include <atomic>
#include <future>
#include <optional>
#include <utility>

#include <QDBusConnection>
#include <QUuid>

#include "platform/freedesktop/accessibility/DBusProbe.h"
#include "platform/freedesktop/inputmethod/Fcitx5.h"
#include "platform/freedesktop/inputmethod/IBus.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

class DesktopInputMethod::Services {
 public:
  explicit Services(Options options) : m_options(std::move(options)) {}

  // fcitx5 comes first: it answers on the bus of ibus as well, for the applications that know
  // nothing but that.
  [[nodiscard]] bool isComposing() {
    if (fcitx5IsThere(session(), m_options.limit)) {
      m_isThere = true;
      return fcitx5IsComposing(session(), m_options.limit);
    }
    m_isThere = connectToIBus();
    return m_isThere && ibusIsComposing(m_ibus->get(), m_options.limit);
  }

  // What is known by now. Any thread.
  [[nodiscard]] bool isThere() const { return m_isThere; }

 private:
  // A connection of this object's own, or that of the whole process.
  class BusConnection {
   public:
    explicit BusConnection(QDBusConnection shared) : m_connection(std::move(shared)) {}
    explicit BusConnection(const QString& address)
        : m_ownName(u"zarvy-input-method-"_s + QUuid::createUuid().toString()),
          m_connection(QDBusConnection::connectToBus(address, m_ownName)) {}
    ~BusConnection() {
      if (!m_ownName.isEmpty()) QDBusConnection::disconnectFromBus(m_ownName);
    }
    BusConnection(const BusConnection&) = delete;
    BusConnection& operator=(const BusConnection&) = delete;

    [[nodiscard]] const QDBusConnection& get() const { return m_connection; }
    [[nodiscard]] bool isConnected() const { return m_connection.isConnected(); }

   private:
    QString m_ownName;
    QDBusConnection m_connection;
  };

  const QDBusConnection& session() {
    if (!m_session && m_options.sessionAddress.isEmpty()) {
      m_session.emplace(QDBusConnection::sessionBus());
    } else if (!m_session) {
      m_session.emplace(m_options.sessionAddress);
    }
    return m_session->get();
  }

  // The bus ends with its daemon, and the next one has another address.
  bool connectToIBus() {
    if (m_ibus && m_ibus->isConnected()) return true;
    m_ibus.reset();
    const QString address = m_options.ibusAddress ? m_options.ibusAddress() : ibusAddress();
    const auto answering = partThatAnswers(address, m_options.limit);
    if (!answering) return false;
    m_ibus.emplace(*answering);
    return m_ibus->isConnected();
  }

  const Options m_options;
  std::atomic<bool> m_isThere = false;
  std::optional<BusConnection> m_session;
  std::optional<BusConnection> m_ibus;
};

DesktopInputMethod::DesktopInputMethod() : DesktopInputMethod(Options{}) {}

DesktopInputMethod::DesktopInputMethod(Options options)
    : m_patience(options.patience),
      m_services(std::make_unique<Services>(std::move(options))),
      m_queue("zarvy-im") {
  // Ahead of need, since it takes longer the first time.
  m_queue.post([this] { static_cast<void>(m_services->isComposing()); });
}

DesktopInputMethod::~DesktopInputMethod() = default;

bool DesktopInputMethod::isComposing() {
  const auto answer = std::make_shared<std::promise<bool>>();
  auto answered = answer->get_future();
  m_queue.post([this, wanted = std::weak_ptr(answer)] {
    if (wanted.expired()) return;  // the caller has gone on without it
    const bool isComposing = m_services->isComposing();
    if (const auto waiting = wanted.lock()) waiting->set_value(isComposing);
  });
  if (answered.wait_for(m_patience) == std::future_status::ready) return answered.get();
  return m_services->isThere();
}

}  // namespace zarvy
