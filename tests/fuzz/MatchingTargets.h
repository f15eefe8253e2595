#pragma once

#include "fuzz/FuzzText.h"

// From the keys to a trigger. Each ends the process where something is wrong.
namespace zarvy::fuzz {

// A regular expression; behind 0x1E texts. None of them is ruled out ahead of the search where the
// search finds something.
void requiredCharacters(Bytes bytes);

// What was typed; behind 0x1E triggers, those that begin with a slash regular expressions without
// it. The snippet found is the one that two plain walks over the library find.
void findMatch(Bytes bytes);

// A length, and characters typed. A byte 0x08 takes the last one back, 0x1B all. The buffer holds
// what a list of characters does.
void rollingBuffer(Bytes bytes);

}  // namespace zarvy::fuzz
