#pragma once

#include <chrono>
#include <mutex>
#include <optional>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QString>

#include "platform/KeyDetour.h"

namespace zarvy {

// The detour of the application that has the keyboard, as the follower of the focus tells it.
class ToolkitKeyDetour final : public KeyDetour {
 public:
  explicit ToolkitKeyDetour(
      std::chrono::milliseconds longestPassage = std::chrono::milliseconds(200))
      : m_longestPassage(longestPassage) {}

  // The keyboard is with `process`, which `peer` is on the accessibility bus. Learns its toolkit
  // from its answer, which comes on the thread of `owner`; that runs an event loop. `owner` ends
  // before this.
  void follow(const QDBusConnection& bus, const QString& peer, qint64 process, QObject* owner);

  // There is no such bus any more. Any thread.
  void forget();

  [[nodiscard]] qint64 process() override;
  [[nodiscard]] bool awaitPassage() override;

 private:
  struct Application {
    QDBusConnection bus;
    QString peer;
    qint64 process = 0;
    bool takesDetour = false;
  };

  void learnToolkit(const QString& peer, const QDBusMessage& answer);
  [[nodiscard]] std::optional<Application> onDetour();

  const std::chrono::milliseconds m_longestPassage;
  std::mutex m_mutex;
  std::optional<Application> m_application;
};

}  // namespace zarvy
