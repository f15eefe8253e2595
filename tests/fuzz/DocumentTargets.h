#pragma once

#include "fuzz/FuzzText.h"

// What the fuzzers call, and what the test of the corpus calls in every run. Each ends the process
// where something is wrong.
namespace zarvy::fuzz {

// The content of a file in the data folder, or of the one that machines share, read as each of the
// documents. What can be read comes out the same when it is written and read once more.
void readDocuments(Bytes bytes);

}  // namespace zarvy::fuzz
