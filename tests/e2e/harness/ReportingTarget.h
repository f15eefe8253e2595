#pragma once

#include "e2e/harness/StateChannel.h"
#include "e2e/harness/TargetApplication.h"

namespace zarvy::e2e {

// A target that tells each change of its text by itself: a program of ours, something of ours that
// runs in a terminal, or an editor that a script of ours has taught it.
class ReportingTarget final : public TargetApplication {
 public:
  // The path of the channel is in the variable ZARVY_E2E_CHANNEL of the `command`.
  ReportingTarget(TargetSetting setting, std::vector<std::string> command);

  [[nodiscard]] EditorState state() override { return m_channel.state(); }
  [[nodiscard]] bool waitForState(const EditorState& wanted,
                                  std::chrono::milliseconds deadline) override {
    return m_channel.waitForState(wanted, deadline);
  }

 protected:
  [[nodiscard]] ProcessSpecification program() override;
  void connect() override { m_channel.accept(std::chrono::seconds(30)); }
  void empty() override { m_channel.clear(std::chrono::seconds(20)); }

 private:
  StateChannel m_channel;
  std::vector<std::string> m_command;
};

}  // namespace zarvy::e2e
