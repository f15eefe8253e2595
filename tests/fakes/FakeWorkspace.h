#pragma once

#include <atomic>
#include <mutex>
#include <optional>
#include <utility>

#include "fakes/Journal.h"
#include "platform/Workspace.h"

namespace zarvy {

// A desktop with one application in front, which the test picks. An activation is written down as
// "activate name" and takes place at once. Any thread.
class FakeWorkspace final : public Workspace {
 public:
  explicit FakeWorkspace(Journal& journal) : m_journal(journal) {}

  [[nodiscard]] std::optional<RunningApplication> frontmostApplication() const override {
    const std::scoped_lock guard(m_lock);
    return m_frontmost;
  }

  [[nodiscard]] std::optional<QRect> frontmostWindowArea() const override {
    const std::scoped_lock guard(m_lock);
    return m_area;
  }

  [[nodiscard]] std::optional<RunningApplication> runningApplication(
      qint64 processIdentifier) const override {
    const auto frontmost = frontmostApplication();
    return frontmost && frontmost->processIdentifier == processIdentifier ? frontmost
                                                                          : std::nullopt;
  }

  [[nodiscard]] bool isActive(const RunningApplication& application) const override {
    return frontmostApplication() == application;
  }

  bool activate(const RunningApplication& application) override {
    m_journal.add(QStringLiteral("activate %1").arg(application.localizedName.value_or(QString())));
    if (goneApplication() == application) return false;
    if (!m_isSlow) setFrontmost(application);
    return true;
  }

  // From now on an application that is activated comes to the front when setFrontmost() says so.
  void setSlow() { m_isSlow = true; }

  [[nodiscard]] std::optional<QString> ownBundleIdentifier() const override {
    const std::scoped_lock guard(m_lock);
    return m_own;
  }

  void setFrontmost(std::optional<RunningApplication> application) {
    const std::scoped_lock guard(m_lock);
    m_frontmost = std::move(application);
  }

  // Where the window of the application in front is; nowhere at first.
  void setFrontmostArea(std::optional<QRect> area) {
    const std::scoped_lock guard(m_lock);
    m_area = area;
  }

  // From now on that application runs no more.
  void setGone(const RunningApplication& application) {
    const std::scoped_lock guard(m_lock);
    m_gone = application;
  }

  void setOwnBundleIdentifier(std::optional<QString> identifier) {
    const std::scoped_lock guard(m_lock);
    m_own = std::move(identifier);
  }

 private:
  [[nodiscard]] std::optional<RunningApplication> goneApplication() const {
    const std::scoped_lock guard(m_lock);
    return m_gone;
  }

  Journal& m_journal;
  std::atomic<bool> m_isSlow = false;
  mutable std::mutex m_lock;
  std::optional<RunningApplication> m_frontmost;
  std::optional<QRect> m_area;
  std::optional<RunningApplication> m_gone;
  std::optional<QString> m_own = QStringLiteral("zarvy");
};

}  // namespace zarvy
