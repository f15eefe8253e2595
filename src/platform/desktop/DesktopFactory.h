#pragma once

#include <functional>
#include <memory>

namespace zarvy {

class Desktop;
class LineOutput;
class Scheduler;
class UserDefaults;

// Makes the desktop of the user's session, whether or not it can be reached yet. The references
// outlive it. `onLost` is called on the main thread if the desktop goes away. Main thread, within
// the life of the QCoreApplication.
[[nodiscard]] std::unique_ptr<Desktop> makeDesktop(Scheduler& scheduler, LineOutput& output,
                                                   const UserDefaults& defaults,
                                                   std::function<void()> onLost);

}  // namespace zarvy
