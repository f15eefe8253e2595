#pragma once

namespace zarvy {

// Opens /dev/null in place of each of standard input, output and error that the process was started
// without. Otherwise the next files and sockets that it opens take their numbers, and what it
// prints goes into them. Before anything else is opened.
void openMissingStandardDescriptors();

}  // namespace zarvy
