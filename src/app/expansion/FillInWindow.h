#pragma once

#include <functional>

#include <QMap>
#include <QString>

#include "core/model/FolderColor.h"
#include "core/model/Snippet.h"

namespace zarvy {

// The form that asks for the values of a snippet's fields, in a window that takes the keyboard.
// At most one is open. Main thread; the callbacks come on it.
class FillInWindow {
 public:
  // The answers by the name of the field.
  using OnComplete = std::function<void(const QMap<QString, QString>& values)>;
  using OnCancel = std::function<void()>;
  // Gives what was typed into the application between the trigger and the form: the first keys of
  // the first field.
  using TakeTypedAhead = std::function<QString()>;

  virtual ~FillInWindow() = default;

  // Closes the form that is open, and opens one for `snippet`, whose trigger stands in a badge of
  // `folderColor`. Exactly one of the callbacks is called for it: `onComplete` once, ahead of the
  // window's closing; or `onCancel`, which may come twice for one press.
  // `takeTypedAhead` is asked once, when the first field has the keyboard.
  virtual void show(const Snippet& snippet, FolderColor folderColor, TakeTypedAhead takeTypedAhead,
                    OnComplete onComplete, OnCancel onCancel) = 0;

  // Closes the form, as its user does by the window's own button, and forgets it. Nothing happens
  // where none is open.
  virtual void close() = 0;
};

}  // namespace zarvy
