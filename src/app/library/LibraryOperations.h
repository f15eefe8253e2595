#pragma once

#include <optional>

#include <QSet>
#include <QUuid>

#include "base/Clock.h"
#include "core/TextExpansionEngine.h"
#include "core/model/Folder.h"
#include "core/model/GlobalVariable.h"
#include "core/model/Snippet.h"
#include "core/model/SnippetList.h"

namespace zarvy {

class Library;
class LibrarySaver;
class LibrarySelection;

// What the user does to the library: each operation changes the lists and the selection, tells the
// engine where that matters, and has the change saved. Main thread; nothing here fails.
class LibraryOperations {
 public:
  // All of it outlives this object.
  LibraryOperations(Library& library, LibrarySelection& selection, LibrarySaver& saver,
                    TextExpansionEngine& engine, const Clock& clock);

  // Behind the others; it becomes the selected one.
  void addSnippet(const Snippet& snippet);
  void deleteSnippet(const QUuid& id);
  void deleteSnippets(const QSet<QUuid>& ids);

  // The first snippet that has the selected id; absent without one.
  [[nodiscard]] std::optional<Snippet> selectedSnippet() const;
  // Puts `snippet` in the place of the one with its id. Does nothing where it is absent or no
  // snippet has its id.
  void setSelectedSnippet(const std::optional<Snippet>& snippet);

  // For a change of folders themselves: LibrarySaver::scheduleSave() behind it.
  void setFolders(const QList<Folder>& folders);
  void addFolder(const Folder& folder);
  // Its snippets stay, in no folder. The engine's copies of them keep the folder until snippets are
  // next handed over; it makes nothing of it.
  void deleteFolder(const QUuid& id);

  void addGlobalVariable(const GlobalVariable& variable);
  // Changed now. Does nothing if no record has its id.
  void updateGlobalVariable(GlobalVariable variable);
  void deleteGlobalVariable(const QUuid& id);

  // Whether a snippet has exactly this trigger, the one with `excludedID` left out.
  [[nodiscard]] bool isTriggerDuplicate(const QString& trigger,
                                        const std::optional<QUuid>& excludedID = {}) const;
  // The same of the names of global variables, where case makes no difference.
  [[nodiscard]] bool isVariableNameDuplicate(const QString& name,
                                             const std::optional<QUuid>& excludedID = {}) const;

 private:
  void afterChange(const ListChange& change);
  void handOver(const ListChange& change);
  void changeGlobalVariables(const QList<GlobalVariable>& variables);

  Library& m_library;
  LibrarySelection& m_selection;
  LibrarySaver& m_saver;
  TextExpansionEngine& m_engine;
  const Clock& m_clock;
  bool m_isEngineBehind = false;  // it has not been told of the last change of folders
};

}  // namespace zarvy
