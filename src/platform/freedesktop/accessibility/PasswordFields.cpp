#include "platform/freedesktop/accessibility/PasswordFields.h"

#include <utility>

#include <QDeadlineTimer>

#include "platform/freedesktop/accessibility/AccessibilityBus.h"

using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace zarvy {

namespace {

// Longer than a farewell to the buses takes.
constexpr auto patienceWithBuses = 1s;

}  // namespace

PasswordFields::PasswordFields(const Options& options)
    : m_bus(std::make_unique<AccessibilityBus>(
          FocusFollower::Told{.secrecy = m_secrecy, .detour = m_detour},
          AccessibilityBus::Options{.follower = {.patience = options.patience,
                                                 .ownProcess = options.ownProcess,
                                                 .canHaveKeyboard =
                                                     [this](qint64 process) {
                                                       const std::lock_guard lock(m_mutex);
                                                       return m_isAbandoned ||
                                                              m_canHaveKeyboard(process);
                                                     }},
                                    .sessionAddress = options.sessionBusAddress,
                                    .pauseWithoutBus = options.pauseWithoutBus,
                                    .wakesBrowsers = options.wakesBrowsers})) {
  m_thread.setObjectName(u"zarvy-focus"_s);
}

PasswordFields::~PasswordFields() {
  stop();
  m_thread.wait();
}

void PasswordFields::start(std::function<void()> onSecret, std::function<void()> onSecretEnds,
                           std::function<bool(qint64)> canHaveKeyboard) {
  m_canHaveKeyboard = std::move(canHaveKeyboard);
  m_secrecy.onSecret = unlessAbandoned(std::move(onSecret));
  m_secrecy.onSecretEnds = unlessAbandoned(std::move(onSecretEnds));
  m_bus->moveToThread(&m_thread);
  QObject::connect(&m_thread, &QThread::started, m_bus.get(), &AccessibilityBus::open);
  // On that thread, as its last deed.
  QObject::connect(&m_thread, &QThread::finished, m_bus.get(), &AccessibilityBus::close,
                   Qt::DirectConnection);
  m_thread.start();
}

void PasswordFields::stop() {
  m_thread.quit();
  if (m_thread.wait(QDeadlineTimer(patienceWithBuses))) return;
  const std::lock_guard lock(m_mutex);
  m_isAbandoned = true;
}

std::function<void()> PasswordFields::unlessAbandoned(std::function<void()> call) {
  return [this, call = std::move(call)] {
    const std::lock_guard lock(m_mutex);
    if (!m_isAbandoned) call();
  };
}

void PasswordFields::lookAgain() {
  QMetaObject::invokeMethod(m_bus.get(), &AccessibilityBus::lookAgain, Qt::QueuedConnection);
}

bool PasswordFields::isSecureEventInputEnabled() const {
  return m_secrecy.isPasswordField();
}

std::optional<qint32> PasswordFields::ownerProcessIdentifier() const {
  return m_secrecy.process();
}

}  // namespace zarvy
