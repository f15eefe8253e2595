#pragma once

namespace zarvy {

// The toolkit offers the program's own windows on the accessibility bus, and the main thread waits
// without limit for a bus that hangs. Has it leave such a bus alone; the windows are then not to be
// found there until the next start. Main thread, between the making of the QApplication and its
// exec(); waits where something hangs, for four seconds at most.
void keepToolkitFromBusThatHangs();

}  // namespace zarvy
