#pragma once

#include <QString>

namespace zarvy::e2e {

// What an application holds.
struct EditorState {
  QString text;
  qsizetype caret = 0;  // in UTF-16 units from the start of `text`
  bool operator==(const EditorState&) const = default;
};

}  // namespace zarvy::e2e
