#pragma once

#include <optional>
#include <string>

#include <QString>

#include "e2e/harness/AccessibleTree.h"
#include "e2e/harness/EditorState.h"

namespace zarvy::e2e {

// How an application counts the positions of its text on the accessibility bus.
enum class PositionUnit { codePoint, utf16 };

// The focused text field of one application, read as a screen reader reads it. One thread.
class AccessibleText {
 public:
  // Connects to the accessibility bus at `address`.
  explicit AccessibleText(const std::string& address) : m_tree(address) {}

  // Looks for the focused, editable text of the process; false while there is none.
  [[nodiscard]] bool find(qint64 processIdentifier);

  // Throws std::runtime_error where the application does not answer.
  [[nodiscard]] EditorState state(PositionUnit unit) const;
  void setText(const QString& text) const;

 private:
  AccessibleTree m_tree;
  AccessibleTree::Object m_text;
};

}  // namespace zarvy::e2e
