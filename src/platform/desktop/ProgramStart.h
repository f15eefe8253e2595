#pragma once

#include <functional>
#include <memory>
#include <sys/types.h>

#include <QByteArray>

// What the start of the program asks of the desktop: a desktop that it can stand on, and what is
// to be done ahead of that.
namespace zarvy {

class Desktop;
class LineOutput;
class Scheduler;
class UserDefaults;

// The platform plugins that Qt is to try, in their order, as its option -platform takes them. Where
// none loads, Qt ends the program; the last of these loads everywhere, and the program stays up to
// say why nothing expands. Asks the display. Before the QApplication is made.
[[nodiscard]] QByteArray toolkitPlugins();

// Releases the keys that the process, a run of this program, had down on the desktop when it died.
// For a process that outlives it. Has the desktop answer, however long that takes.
void releaseKeysLeftBy(pid_t died);

// Has the toolkit leave services of the session alone that hang: the main thread would wait for
// them without limit. Main thread, between the making of the QApplication and its exec(); waits
// where something hangs, for four seconds at most.
void keepToolkitFromServicesThatHang();

// Makes the desktop of the user's session, whether or not it can be reached yet. The references
// outlive it. `onLost` is called on the main thread if the desktop goes away. Main thread, within
// the life of the QCoreApplication.
[[nodiscard]] std::unique_ptr<Desktop> makeDesktop(Scheduler& scheduler, LineOutput& output,
                                                   const UserDefaults& defaults,
                                                   std::function<void()> onLost);

}  // namespace zarvy
