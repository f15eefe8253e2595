#pragma once

#include <optional>
#include <string>

#include "e2e/harness/ChildProcess.h"

namespace zarvy::e2e {

// An input method of the distribution with an engine for Chinese, which is off at first. Ends with
// the object. Throws std::runtime_error where it does not come up.
class InputMethodDaemon {
 public:
  virtual ~InputMethodDaemon() = default;

  // What applications, and the program, are to be started with.
  [[nodiscard]] virtual Environment environment() const = 0;

  // The application that has the keyboard gets the engine, or a plain keyboard. Throws where that
  // does not come about.
  virtual void setEngineOn(bool isOn) = 0;
};

// `environment` has the display and the session bus; `folder` is empty.
class Fcitx5Daemon final : public InputMethodDaemon {
 public:
  Fcitx5Daemon(Environment environment, const std::string& folder);

  [[nodiscard]] Environment environment() const override { return m_environment; }
  void setEngineOn(bool isOn) override;

 private:
  Environment m_environment;
  std::optional<ChildProcess> m_process;
};

class IBusDaemon final : public InputMethodDaemon {
 public:
  IBusDaemon(Environment environment, const std::string& folder);

  [[nodiscard]] Environment environment() const override { return m_environment; }
  void setEngineOn(bool isOn) override;

 private:
  Environment m_environment;
  std::optional<ChildProcess> m_process;
};

}  // namespace zarvy::e2e
