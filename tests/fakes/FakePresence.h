#pragma once

#include <optional>

#include "app/presence/DesktopPresence.h"
#include "fakes/Journal.h"

namespace zarvy {

// A desktop that writes down what it is asked for: "regular", "accessory", "login item on",
// "login item off". The windows are those that the test says.
class FakePresence final : public ActivationPolicy, public LoginItem, public OpenWindows {
 public:
  explicit FakePresence(Journal& journal) : m_journal(journal) {}

  [[nodiscard]] PresenceServices services(Scheduler& scheduler, LineOutput& output) {
    return {*this, *this, *this, scheduler, output};
  }

  void setActivationPolicy(Kind kind) override {
    m_journal.add(kind == Kind::regular ? QStringLiteral("regular") : QStringLiteral("accessory"));
  }

  void leaveOut(quint64 /*nativeWindow*/) override {}
  void windowOpened(quint64 /*nativeWindow*/) override {}
  void windowClosed(quint64 /*nativeWindow*/) override {}

  [[nodiscard]] std::optional<QString> enable() override { return answer(QStringLiteral("on")); }
  [[nodiscard]] std::optional<QString> disable() override { return answer(QStringLiteral("off")); }

  [[nodiscard]] QList<Window> windows() const override { return openWindows; }

  QList<Window> openWindows;
  std::optional<QString> loginItemError;

 private:
  std::optional<QString> answer(const QString& state) {
    m_journal.add(QStringLiteral("login item ") + state);
    return loginItemError;
  }

  Journal& m_journal;
};

}  // namespace zarvy
