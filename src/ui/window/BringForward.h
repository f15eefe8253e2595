#pragma once

class QWidget;

namespace zarvy {

class Workspace;

// Takes `window`, a window of this program that is on the screen, to the front and gives it the
// keyboard. Asks the desktop on the user's behalf, since a window manager may hold back what a
// program asks for itself: the user has called for the window by a key that another application
// got. Main thread.
void bringForward(QWidget& window, Workspace& workspace);

// Shows `window`, which is hidden, in front of all others and with the keyboard. Main thread;
// `workspace` outlives the window.
void showInFront(QWidget& window, Workspace& workspace);

}  // namespace zarvy
