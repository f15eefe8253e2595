#pragma once

#include <chrono>
#include <functional>
#include <memory>

#include <QString>

#include "base/ThreadQueues.h"
#include "platform/InputMethod.h"

namespace zarvy {

// fcitx5 or ibus, whichever runs, asked over D-Bus each time: they are started, ended and
// switched at any moment. A thread of its own asks, so that no caller waits for longer than
// `patience` where a service or a bus hangs; one that is there and does not answer counts as
// composing. The end waits for a question that is under way, for some times `limit`.
class DesktopInputMethod final : public InputMethod {
 public:
  struct Options {
    QString sessionAddress = {};                // of the session bus; empty for the desktop's
    std::function<QString()> ibusAddress = {};  // empty for the desktop's
    std::chrono::milliseconds patience{150};    // of the caller
    std::chrono::milliseconds limit{500};       // of each question that the thread asks
  };

  DesktopInputMethod();
  explicit DesktopInputMethod(Options options);
  ~DesktopInputMethod() override;

  [[nodiscard]] bool isComposing() override;

 private:
  class Services;

  const std::chrono::milliseconds m_patience;
  std::unique_ptr<Services> m_services;  // on the thread of the queue
  ThreadSerialQueue m_queue;
};

}  // namespace zarvy
