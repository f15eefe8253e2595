#pragma once

#include <string>

#include <QString>

#include "e2e/harness/EditorState.h"

namespace zarvy::e2e {

// A page with nothing but a textarea, for browsers, and the expressions by which a script reads it.
void writeTextareaPage(const std::string& path);

// Gives what textareaState() takes.
[[nodiscard]] QString readTextarea();
[[nodiscard]] EditorState textareaState(const QString& read);

[[nodiscard]] QString emptyTextarea();

}  // namespace zarvy::e2e
