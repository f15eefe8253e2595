#pragma once

#include "fuzz/FuzzText.h"

// From a text to the keys that type it. Each ends the process where something is wrong.
namespace zarvy::fuzz {

// The length of a trigger, and a snippet's text. Carried out on a text field, the plan leaves the
// text where the trigger was, and the caret where its marker was.
void injectionPlan(Bytes bytes);

// A text; behind 0x1E where it is cut. The keys are those of the text with line breaks of one kind
// and without what no key can carry, wherever it is cut.
void typedText(Bytes bytes);

}  // namespace zarvy::fuzz
