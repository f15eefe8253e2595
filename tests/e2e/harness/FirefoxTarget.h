#pragma once

#include "e2e/harness/RemoteControl.h"
#include "e2e/harness/TargetApplication.h"

namespace zarvy::e2e {

// A textarea on a page in Firefox.
class FirefoxTarget final : public TargetApplication {
 public:
  using TargetApplication::TargetApplication;

  [[nodiscard]] EditorState state() override;

 protected:
  [[nodiscard]] ProcessSpecification program() override;
  void connect() override;
  void empty() override;

 private:
  [[nodiscard]] std::string profile() const { return setting().folder + "/profile"; }
  [[nodiscard]] std::string page() const { return setting().folder + "/page.html"; }
  [[nodiscard]] std::string address() const { return std::string("file://").append(page()); }
  [[nodiscard]] bool connectToBrowser();
  [[nodiscard]] QJsonValue evaluate(const QString& expression);

  RemoteControl m_control;
};

}  // namespace zarvy::e2e
