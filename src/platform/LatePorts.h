#pragma once

#include <atomic>
#include <memory>

#include "platform/ActivationPolicy.h"
#include "platform/Desktop.h"
#include "platform/HotKeys.h"
#include "platform/KeyEventPoster.h"
#include "platform/KeyEventSource.h"
#include "platform/SecureInput.h"
#include "platform/Workspace.h"

namespace zarvy {

// What a desktop has adapters for, in one object.
class AllPorts : public KeyEventSource,
                 public KeyEventPoster,
                 public Workspace,
                 public SecureInput,
                 public HotKeys,
                 public ActivationPolicy {};

// The ports of a desktop that is not there: nothing is heard, typed or in front.
class NullPorts final : public AllPorts {
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

// A desktop that may come after those who stand on it have been made: absent until it has come, and
// again once it is gone. Each call goes to where its port says that it may be made.
class LatePorts final : public AllPorts {
 public:
  // `parts`, and what they name, outlive this object or its next leave(). Main thread.
  void come(const DesktopParts& parts) { m_parts = &parts; }

  // After everything that hears and types has ended. Main thread.
  void leave() { m_parts = &m_nullParts; }

  [[nodiscard]] std::optional<Token> addGlobalMonitor(Handler handler,
                                                      std::function<void()> onForget) override {
    return now().keyEventSource.addGlobalMonitor(std::move(handler), std::move(onForget));
  }
  [[nodiscard]] std::optional<Token> addLocalMonitor(Handler handler) override {
    return now().keyEventSource.addLocalMonitor(std::move(handler));
  }
  void removeMonitor(Token token) override { now().keyEventSource.removeMonitor(token); }

  [[nodiscard]] std::unique_ptr<TypingSession> beginTyping(const QString& text) override {
    return now().keyEventPoster.beginTyping(text);
  }
  void prepare(const QString& characters) override { now().keyEventPoster.prepare(characters); }

  [[nodiscard]] std::optional<RunningApplication> frontmostApplication() const override {
    return now().workspace.frontmostApplication();
  }
  [[nodiscard]] std::optional<QRect> frontmostWindowArea() const override {
    return now().workspace.frontmostWindowArea();
  }
  [[nodiscard]] std::optional<RunningApplication> runningApplication(
      qint64 processIdentifier) const override {
    return now().workspace.runningApplication(processIdentifier);
  }
  [[nodiscard]] bool isActive(const RunningApplication& application) const override {
    return now().workspace.isActive(application);
  }
  bool activate(const RunningApplication& application) override {
    return now().workspace.activate(application);
  }
  [[nodiscard]] std::optional<QString> ownBundleIdentifier() const override {
    return now().workspace.ownBundleIdentifier();
  }

  [[nodiscard]] bool isSecureEventInputEnabled() const override {
    return now().secureInput.isSecureEventInputEnabled();
  }
  [[nodiscard]] std::optional<qint32> ownerProcessIdentifier() const override {
    return now().secureInput.ownerProcessIdentifier();
  }

  [[nodiscard]] bool isTakenByAnother(const HotKey& key) const override {
    return now().hotKeys.isTakenByAnother(key);
  }

  void setActivationPolicy(ActivationPolicy::Kind kind) override {
    now().activationPolicy.setActivationPolicy(kind);
  }
  void windowOpened(quint64 nativeWindow) override {
    now().activationPolicy.windowOpened(nativeWindow);
  }
  void windowClosed(quint64 nativeWindow) override {
    now().activationPolicy.windowClosed(nativeWindow);
  }
  void leaveOut(quint64 nativeWindow) override { now().activationPolicy.leaveOut(nativeWindow); }

 private:
  [[nodiscard]] const DesktopParts& now() const { return *m_parts.load(); }

  NullPorts m_null;
  const DesktopParts m_nullParts = partsOf(m_null);
  std::atomic<const DesktopParts*> m_parts = &m_nullParts;
};

}  // namespace zarvy
