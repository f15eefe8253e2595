#pragma once

#include "fuzz/FuzzText.h"

// The form for a snippet's fields. Each ends the process where something is wrong.
namespace zarvy::fuzz {

// A snippet; behind 0x1E names and answers by turns. Fields and answers are those that the regular
// expressions of the language find.
void fillIns(Bytes bytes);

// A snippet; behind 0x1E a snippet ";a", and answers to its fields. The preview keeps the text
// around what it knows, and shows what is typed where answers alone decide it.
void preview(Bytes bytes);

}  // namespace zarvy::fuzz
