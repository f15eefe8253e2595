#pragma once

#include "app/AppStateFixture.h"
#include "support/QtPrinters.h"

namespace zarvy {

// AppState with a library of three snippets in two folders and one variable, all on the disk.
class LibraryFixture : public AppStateFixture {
 protected:
  void SetUp() override {
    a.folderID = work.id;
    b.folderID = home.id;
    c.folderID = work.id;
    m_harness.load({{a, b, c}, {work, home}, {}, {name}});
    m_harness.finish();
    (void)m_harness.takeJournal();
  }

  // Lets everything come to rest: debounces, file work, sync.
  void rest() { m_harness.pass(std::chrono::milliseconds{400}); }

  [[nodiscard]] QList<Snippet> savedSnippets() { return m_harness.store.loadSnippets(); }
  [[nodiscard]] QList<Snippet> engineSnippets() { return m_harness.engine.snippets().toList(); }

  const Folder work{QUuid::createUuid(), QStringLiteral("Work"), FolderColor::red, 0};
  const Folder home{QUuid::createUuid(), QStringLiteral("Home"), FolderColor::blue, 1};
  Snippet a = m_harness.snippet(QStringLiteral(";a"), QStringLiteral("Alpha"));
  Snippet b = m_harness.snippet(QStringLiteral(";b"), QStringLiteral("Beta"));
  Snippet c = m_harness.snippet(QStringLiteral(";c"), QStringLiteral("Gamma"));
  const GlobalVariable name{QUuid::createUuid(), QStringLiteral("Name"), QStringLiteral("Ada"),
                            m_harness.clock.now(), m_harness.clock.now()};
};

}  // namespace zarvy
