#pragma once

namespace zarvy {

// Has the toolkit's messages written to standard error only where it takes them at once: a terminal
// that is stopped, or a pipe that nobody reads, would hold up whichever thread has something to
// say. What a full pipe does not take is dropped. Once, at the start of the program.
void writeToolkitMessagesWithoutWaiting();

}  // namespace zarvy
