#pragma once

#include <functional>
#include <utility>

#include "base/Sleeper.h"
#include "fakes/Journal.h"

namespace zarvy {

// Writes down each pause as "sleep 1000", in microseconds, and does not wait. Any thread.
class RecordingSleeper final : public Sleeper {
 public:
  explicit RecordingSleeper(Journal& journal) : m_journal(journal) {}

  void sleepFor(std::chrono::microseconds duration) override {
    m_journal.add(QStringLiteral("sleep %1").arg(duration.count()));
    if (m_onSleep) m_onSleep();
  }

  // What happens during each pause. Set before the first one.
  void setOnSleep(std::function<void()> onSleep) { m_onSleep = std::move(onSleep); }

 private:
  Journal& m_journal;
  std::function<void()> m_onSleep;
};

}  // namespace zarvy
