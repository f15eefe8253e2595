#include "app/expansion/SecureInputWatch.h"

#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

namespace {

constexpr std::chrono::milliseconds interval{500};

QString nameOf(const std::optional<RunningApplication>& application) {
  if (!application) return u"Unknown"_s;
  if (application->localizedName) return *application->localizedName;
  return application->bundleIdentifier.value_or(u"Unknown"_s);
}

}  // namespace

SecureInputWatch::SecureInputWatch(const SecureInput& secureInput, const Workspace& workspace,
                                   Scheduler& scheduler)
    : m_secureInput(secureInput), m_workspace(workspace), m_scheduler(scheduler) {}

SecureInputWatch::~SecureInputWatch() {
  m_timer.cancel();
}

void SecureInputWatch::start() {
  checkSecureInput();
  m_timer.cancel();
  m_timer = m_scheduler.repeatEvery(interval, [this] { checkSecureInput(); });
}

void SecureInputWatch::stop() {
  m_timer.cancel();
  setAppName(std::nullopt);
  m_wasSecureInputEnabled = false;
}

void SecureInputWatch::checkSecureInput() {
  const bool enabled = m_secureInput.isSecureEventInputEnabled();
  const bool was = std::exchange(m_wasSecureInputEnabled, enabled);
  if (enabled && !was) setAppName(secureInputOwnerName());
  if (!enabled && was) setAppName(std::nullopt);
}

// Where the holder cannot be told, the application in front is the likely one.
QString SecureInputWatch::secureInputOwnerName() const {
  const std::optional<qint32> pid = m_secureInput.ownerProcessIdentifier();
  if (!pid || *pid <= 0) return nameOf(m_workspace.frontmostApplication());
  const auto owner = m_workspace.runningApplication(*pid);
  if (!owner) return u"Unknown (PID: "_s + QString::number(*pid) + u")"_s;
  return nameOf(owner);
}

void SecureInputWatch::setAppName(const std::optional<QString>& name) {
  if (std::exchange(m_appName, name) == name) return;
  if (m_onChange) m_onChange();
}

}  // namespace zarvy
