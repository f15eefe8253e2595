#pragma once

#include "e2e/harness/AccessibleText.h"
#include "e2e/harness/TargetApplication.h"

namespace zarvy::e2e {

// An editor of the distribution with a file open, read through the accessibility bus.
class AccessibleTarget : public TargetApplication {
 public:
  AccessibleTarget(TargetSetting setting, PositionUnit unit);

  [[nodiscard]] EditorState state() override { return m_text.state(m_unit); }

  // Has `person` save by Ctrl+S and gives the file's bytes once they are `expected`, or what they
  // are at the deadline.
  [[nodiscard]] std::string saveAndReadFile(Person& person, const std::string& expected);

 protected:
  void connect() override;
  void empty() override { m_text.setText({}); }

  [[nodiscard]] const std::string& file() const { return m_file; }

 private:
  PositionUnit m_unit;
  std::string m_file;
  AccessibleText m_text;
};

// Xfce's editor, a GTK 3 text view.
class MousepadTarget final : public AccessibleTarget {
 public:
  explicit MousepadTarget(TargetSetting setting)
      : AccessibleTarget(std::move(setting), PositionUnit::codePoint) {}

 protected:
  [[nodiscard]] ProcessSpecification program() override;
};

// A Qt 5 editor.
class FeatherpadTarget final : public AccessibleTarget {
 public:
  explicit FeatherpadTarget(TargetSetting setting)
      : AccessibleTarget(std::move(setting), PositionUnit::utf16) {}

 protected:
  [[nodiscard]] ProcessSpecification program() override;
};

// The editor of KDE, a Qt 5 program on Debian 12. It cannot be written to but by the keyboard.
class KwriteTarget final : public AccessibleTarget {
 public:
  explicit KwriteTarget(TargetSetting setting)
      : AccessibleTarget(std::move(setting), PositionUnit::utf16) {}

 protected:
  [[nodiscard]] ProcessSpecification program() override;
};

}  // namespace zarvy::e2e
