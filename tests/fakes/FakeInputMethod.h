#pragma once

#include <atomic>

#include "platform/InputMethod.h"

namespace zarvy {

// An input method that the test turns on and off. Any thread.
class FakeInputMethod final : public InputMethod {
 public:
  [[nodiscard]] bool isComposing() override { return m_isComposing; }
  void setComposing(bool isComposing) { m_isComposing = isComposing; }

 private:
  std::atomic<bool> m_isComposing = false;
};

}  // namespace zarvy
