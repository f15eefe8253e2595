#pragma once

#include "fuzz/FuzzText.h"

// What the fuzzers call, and what the test of the corpus calls in every run. Each ends the process
// where something is wrong.
namespace zarvy::fuzz {

// A snippet; behind 0x1E, if there, the clipboard, a variable "a", a snippet ";a" and a capture
// "a".
void pipeline(Bytes bytes);

// A text.
void parseFillInFields(Bytes bytes);

// A snippet; behind 0x1E names and answers by turns.
void applyFillInValues(Bytes bytes);

}  // namespace zarvy::fuzz
