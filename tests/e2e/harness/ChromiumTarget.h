#pragma once

#include "e2e/harness/DebuggingPipe.h"
#include "e2e/harness/TargetApplication.h"

namespace zarvy::e2e {

// A textarea in a local page, in a window of Chromium; read back unit by unit through the debugging
// pipe.
class ChromiumTarget final : public TargetApplication {
 public:
  explicit ChromiumTarget(TargetSetting setting) : TargetApplication(std::move(setting)) {}

  [[nodiscard]] EditorState state() override;

 protected:
  [[nodiscard]] ProcessSpecification program() override;
  void connect() override;
  void empty() override;

 private:
  [[nodiscard]] bool attachToPage();
  [[nodiscard]] QJsonValue evaluate(const QString& expression);

  DebuggingPipe m_pipe;
  QString m_session;
};

}  // namespace zarvy::e2e
