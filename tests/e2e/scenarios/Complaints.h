#pragma once

#include <string>

#include "e2e/harness/ProgramUnderTest.h"
#include "e2e/harness/XConnection.h"

namespace zarvy::e2e {

// What is wrong with the program: it has ended, or has announced another number of expansions since
// its start. Waits a moment for what is still to come. Empty where all is well, as below.
[[nodiscard]] std::string complaintAboutProgram(ProgramUnderTest& program, int expectedExpansions);

// Which keys and modifiers are down or locked, where none should be.
[[nodiscard]] std::string complaintAboutKeyboard(const XConnection& connection);

// Adds `line` to what there is of complaints.
void appendLine(std::string& text, const std::string& line);

}  // namespace zarvy::e2e
