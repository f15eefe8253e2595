#pragma once

#include "e2e/harness/StateChannel.h"
#include "e2e/harness/TargetApplication.h"

namespace zarvy::e2e {

// A target that runs a program of ours, which tells each change of its text by itself.
class ReportingTarget : public TargetApplication {
 public:
  explicit ReportingTarget(TargetSetting setting)
      : TargetApplication(std::move(setting)), m_channel(this->setting().folder + "/state") {}

  [[nodiscard]] EditorState state() override { return m_channel.state(); }
  [[nodiscard]] bool waitForState(const EditorState& wanted,
                                  std::chrono::milliseconds deadline) override {
    return m_channel.waitForState(wanted, deadline);
  }

 protected:
  void connect() override { m_channel.accept(std::chrono::seconds(30)); }
  void empty() override { m_channel.clear(std::chrono::seconds(20)); }

  [[nodiscard]] const std::string& channelPath() const { return m_channel.path(); }

 private:
  StateChannel m_channel;
};

// The terminal emulator xterm, with a program in it that reads keys as a line editor does.
class XtermTarget final : public ReportingTarget {
 public:
  XtermTarget(TargetSetting setting, std::string probeProgram)
      : ReportingTarget(std::move(setting)), m_probeProgram(std::move(probeProgram)) {}

 protected:
  [[nodiscard]] ProcessSpecification program() override;

 private:
  std::string m_probeProgram;
};

// A Qt 6 window with nothing but a QPlainTextEdit in it.
class Qt6EditorTarget final : public ReportingTarget {
 public:
  Qt6EditorTarget(TargetSetting setting, std::string editorProgram)
      : ReportingTarget(std::move(setting)), m_editorProgram(std::move(editorProgram)) {}

 protected:
  [[nodiscard]] ProcessSpecification program() override;

 private:
  std::string m_editorProgram;
};

}  // namespace zarvy::e2e
