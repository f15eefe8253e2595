#pragma once

#include "app/expansion/QuickSearchWindow.h"

namespace zarvy {

// Until there is a panel, the hot key does nothing.
class QuickSearchWindowController final : public QuickSearchWindow {
 public:
  [[nodiscard]] bool isVisible() const override { return false; }
  void hide() override {}
  void show(const QList<Snippet>& /*snippets*/, const QList<Folder>& /*folders*/,
            OnSelect /*onSelect*/) override {}
};

}  // namespace zarvy
