#pragma once

#include <memory>

#include "platform/ActivationPolicy.h"
#include "platform/HotKeys.h"
#include "platform/KeyEventPoster.h"
#include "platform/KeyEventSource.h"
#include "platform/SecureInput.h"
#include "platform/Workspace.h"

namespace zarvy {

// What the program stands on where there is no desktop to hear keys from: nothing is heard, typed
// or in front.
class NullDesktop final : public KeyEventSource,
                          public KeyEventPoster,
                          public Workspace,
                          public SecureInput,
                          public HotKeys,
                          public ActivationPolicy {
 public:
  [[nodiscard]] std::optional<Token> addGlobalMonitor(Handler /*handler*/,
                                                      std::function<void()> /*onForget*/) override {
    return std::nullopt;
  }
  [[nodiscard]] std::optional<Token> addLocalMonitor(Handler /*handler*/) override {
    return std::nullopt;
  }
  void removeMonitor(Token /*token*/) override {}

  [[nodiscard]] std::unique_ptr<TypingSession> beginTyping(const QString& /*text*/) override {
    return std::make_unique<NullSession>();
  }

  [[nodiscard]] std::optional<RunningApplication> frontmostApplication() const override {
    return std::nullopt;
  }
  [[nodiscard]] std::optional<QRect> frontmostWindowArea() const override { return std::nullopt; }
  [[nodiscard]] std::optional<RunningApplication> runningApplication(
      qint64 /*processIdentifier*/) const override {
    return std::nullopt;
  }
  [[nodiscard]] bool isActive(const RunningApplication& /*application*/) const override {
    return false;
  }
  bool activate(const RunningApplication& /*application*/) override { return false; }
  [[nodiscard]] std::optional<QString> ownBundleIdentifier() const override { return std::nullopt; }

  [[nodiscard]] bool isSecureEventInputEnabled() const override { return false; }
  [[nodiscard]] std::optional<qint32> ownerProcessIdentifier() const override {
    return std::nullopt;
  }

  [[nodiscard]] bool isTakenByAnother(const HotKey& /*key*/) const override { return false; }

  void setActivationPolicy(ActivationPolicy::Kind /*kind*/) override {}
  void windowOpened(quint64 /*nativeWindow*/) override {}
  void windowClosed(quint64 /*nativeWindow*/) override {}
  void leaveOut(quint64 /*nativeWindow*/) override {}

 private:
  class NullSession final : public TypingSession {
   public:
    bool pressKey(quint16 /*virtualKeyCode*/) override { return false; }
    bool pressText(QStringView /*run*/) override { return false; }
  };
};

}  // namespace zarvy
