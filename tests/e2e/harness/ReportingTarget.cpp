#include "e2e/harness/ReportingTarget.h"

namespace zarvy::e2e {

ReportingTarget::ReportingTarget(TargetSetting setting, std::vector<std::string> command)
    : TargetApplication(std::move(setting)),
      m_channel(this->setting().folder + "/state"),
      m_command(std::move(command)) {}

ProcessSpecification ReportingTarget::program() {
  Environment environment = setting().environment;
  environment["ZARVY_E2E_CHANNEL"] = m_channel.path();
  return {.program = m_command.front(),
          .arguments = {m_command.begin() + 1, m_command.end()},
          .environment = environment,
          .errorFile = setting().folder + "/error.log",
          .descriptors = {}};
}

}  // namespace zarvy::e2e
