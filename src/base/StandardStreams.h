#pragma once

namespace zarvy {

// What the start of the program does about standard input, output and error. Each once.

// Opens /dev/null in place of each standard stream that the process was started without. Otherwise
// the next files and sockets that it opens take their numbers, and what it prints goes into them.
// Before anything else is opened.
void openMissingStandardDescriptors();

// Has the toolkit's messages written to standard error only where it takes them at once: a stopped
// terminal, or a pipe without a reader, would hold up the thread that writes. What a full pipe does
// not take is dropped.
void writeToolkitMessagesWithoutWaiting();

}  // namespace zarvy
