#pragma once

#include <QStringList>

#include "platform/AccessibilityPermission.h"

namespace zarvy {

// A permission that the test grants and takes away. Main thread.
class FakePermission final : public AccessibilityPermission {
 public:
  explicit FakePermission(bool trusted = true) : m_trusted(trusted) {}

  void setTrusted(bool trusted) { m_trusted = trusted; }

  [[nodiscard]] bool isTrusted() const override { return m_trusted; }
  [[nodiscard]] QString reasonForMissing() const override {
    return m_trusted ? QString() : QStringLiteral("the test took it away");
  }
  [[nodiscard]] QString remedy() const override { return QStringLiteral("give it back"); }
  [[nodiscard]] bool canBeAskedFor() const override { return isAskable; }
  void lookAgain() override {
    if (comesAtNextLook) m_trusted = true;
  }
  void ask() override { calls.append(QStringLiteral("ask")); }
  void openSettings() override { calls.append(QStringLiteral("settings")); }

  QStringList calls;
  bool isAskable = true;
  bool comesAtNextLook = false;

 private:
  bool m_trusted;
};

}  // namespace zarvy
