#pragma once

#include <utility>

#include "app/expansion/QuickSearchWindow.h"
#include "fakes/Journal.h"

namespace zarvy {

// A panel whose user is the test. Written down as "panel of 3 snippets, 1 folders" and "panel
// hides".
class FakeQuickSearchWindow final : public QuickSearchWindow {
 public:
  explicit FakeQuickSearchWindow(Journal& journal) : m_journal(journal) {}

  [[nodiscard]] bool isVisible() const override { return m_onSelect != nullptr; }

  void hide() override {
    if (!m_onSelect) return;
    m_journal.add(QStringLiteral("panel hides"));
    m_onSelect = nullptr;
  }

  void show(const SnippetList& snippets, const QList<Folder>& folders, OnSelect onSelect) override {
    hide();
    m_journal.add(QStringLiteral("panel of %1 snippets, %2 folders")
                      .arg(snippets.size())
                      .arg(folders.size()));
    m_onSelect = std::move(onSelect);
  }

  void select(const Snippet& snippet) {
    const OnSelect selected = m_onSelect;
    hide();
    selected(snippet);
  }

 private:
  Journal& m_journal;
  OnSelect m_onSelect;
};

}  // namespace zarvy
