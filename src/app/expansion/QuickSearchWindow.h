#pragma once

#include <functional>

#include <QList>

#include "core/model/Folder.h"
#include "core/model/SnippetList.h"

namespace zarvy {

// The panel in which the user finds a snippet by its name, above the application in front. Main
// thread; the callback comes on it.
class QuickSearchWindow {
 public:
  using OnSelect = std::function<void(const Snippet& snippet)>;

  virtual ~QuickSearchWindow() = default;

  // The panel is there, and on the screen.
  [[nodiscard]] virtual bool isVisible() const = 0;

  // Takes the panel away, if there is one. A closing without a choice is not reported.
  virtual void hide() = 0;

  // Opens the panel again on these lists, which do not follow later changes. `onSelect` is called
  // at most once, with the choice, after the panel has been hidden.
  virtual void show(const SnippetList& snippets, const QList<Folder>& folders,
                    OnSelect onSelect) = 0;
};

}  // namespace zarvy
