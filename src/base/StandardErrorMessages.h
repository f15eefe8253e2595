#pragma once

namespace zarvy {

// Has the toolkit's messages written to standard error without ever waiting for it: a terminal that
// is stopped, or a pipe that nobody reads, would hold up whichever thread has something to say.
// What does not fit is dropped. Once, at the start of the program.
void writeToolkitMessagesWithoutWaiting();

}  // namespace zarvy
