#pragma once

#include "app/expansion/FillInWindow.h"
#include "app/expansion/QuickSearchWindow.h"

namespace zarvy {

// Until there is a form, what asks for one is not expanded.
class FillInWindowController final : public FillInWindow {
 public:
  void show(const Snippet& /*snippet*/, FolderColor /*folderColor*/, OnComplete /*onComplete*/,
            OnCancel onCancel) override {
    onCancel();
  }
  void close() override {}
};

// Until there is a panel, the hot key does nothing.
class QuickSearchWindowController final : public QuickSearchWindow {
 public:
  [[nodiscard]] bool isVisible() const override { return false; }
  void hide() override {}
  void show(const QList<Snippet>& /*snippets*/, const QList<Folder>& /*folders*/,
            OnSelect /*onSelect*/) override {}
};

}  // namespace zarvy
