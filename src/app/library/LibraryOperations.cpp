#include "app/library/LibraryOperations.h"

#include <algorithm>

#include "app/library/Library.h"
#include "app/library/LibrarySaver.h"
#include "app/library/LibrarySelection.h"
#include "base/text/CaseMapping.h"

namespace zarvy {

namespace {

template <typename Record>
auto withId(const QUuid& id) {
  return [id](const Record& record) { return record.id == id; };
}

template <typename Record>
QList<Record> without(QList<Record> records, const QUuid& id) {
  records.removeIf(withId<Record>(id));
  return records;
}

// Absent where none has the record's id.
template <typename Record>
std::optional<QList<Record>> replaced(QList<Record> records, const Record& record) {
  const auto place = std::find_if(records.cbegin(), records.cend(), withId<Record>(record.id));
  if (place == records.cend()) return std::nullopt;
  records.replace(place - records.cbegin(), record);
  return records;
}

}  // namespace

LibraryOperations::LibraryOperations(Library& library, LibrarySelection& selection,
                                     LibrarySaver& saver, TextExpansionEngine& engine,
                                     const Clock& clock)
    : m_library(library),
      m_selection(selection),
      m_saver(saver),
      m_engine(engine),
      m_clock(clock) {}

void LibraryOperations::addSnippet(const Snippet& snippet) {
  changeSnippets(m_library.snippets() + QList{snippet});
  m_selection.setSelectedSnippetID(snippet.id);
}

void LibraryOperations::deleteSnippet(const QUuid& id) {
  deleteSnippets({id});
}

void LibraryOperations::deleteSnippets(const QSet<QUuid>& ids) {
  if (ids.isEmpty()) return;
  QList<Snippet> left = m_library.snippets();
  left.removeIf([&ids](const Snippet& snippet) { return ids.contains(snippet.id); });
  changeSnippets(left);
  m_selection.forgetSnippets(ids);
}

std::optional<Snippet> LibraryOperations::selectedSnippet() const {
  const auto& id = m_selection.selectedSnippetID();
  if (!id) return std::nullopt;
  const QList<Snippet>& snippets = m_library.snippets();
  const auto found = std::find_if(snippets.begin(), snippets.end(), withId<Snippet>(*id));
  return found == snippets.end() ? std::nullopt : std::optional(*found);
}

void LibraryOperations::setSelectedSnippet(const std::optional<Snippet>& snippet) {
  if (!snippet) return;
  if (const auto changed = replaced(m_library.snippets(), *snippet)) changeSnippets(*changed);
}

void LibraryOperations::setFolders(const QList<Folder>& folders) {
  m_library.setFolders(folders);
}

void LibraryOperations::addFolder(const Folder& folder) {
  m_library.setFolders(m_library.folders() + QList{folder});
  m_saver.scheduleSave();
}

void LibraryOperations::deleteFolder(const QUuid& id) {
  QList<Snippet> snippets = m_library.snippets();
  for (Snippet& snippet : snippets) {
    if (snippet.folderID == id) snippet.folderID.reset();
  }
  m_library.setSnippets(snippets);
  m_library.setFolders(without(m_library.folders(), id));
  m_selection.forgetFolder(id);
  m_saver.scheduleSave();
}

void LibraryOperations::addGlobalVariable(const GlobalVariable& variable) {
  changeGlobalVariables(m_library.globalVariables() + QList{variable});
}

void LibraryOperations::updateGlobalVariable(GlobalVariable variable) {
  variable.modifiedAt = m_clock.now();
  if (const auto changed = replaced(m_library.globalVariables(), variable)) {
    changeGlobalVariables(*changed);
  }
}

void LibraryOperations::deleteGlobalVariable(const QUuid& id) {
  changeGlobalVariables(without(m_library.globalVariables(), id));
}

bool LibraryOperations::isTriggerDuplicate(const QString& trigger,
                                           const std::optional<QUuid>& excludedID) const {
  const auto isOther = [&](const Snippet& snippet) {
    return snippet.trigger == trigger && snippet.id != excludedID;
  };
  return std::any_of(m_library.snippets().begin(), m_library.snippets().end(), isOther);
}

bool LibraryOperations::isVariableNameDuplicate(const QString& name,
                                                const std::optional<QUuid>& excludedID) const {
  const auto isOther = [lower = lowerCased(name), &excludedID](const GlobalVariable& variable) {
    return lowerCased(variable.name) == lower && variable.id != excludedID;
  };
  const QList<GlobalVariable>& variables = m_library.globalVariables();
  return std::any_of(variables.begin(), variables.end(), isOther);
}

void LibraryOperations::changeSnippets(const QList<Snippet>& snippets) {
  m_library.setSnippets(snippets);
  m_engine.setSnippets(m_library.snippets());
  m_saver.scheduleSave();
}

void LibraryOperations::changeGlobalVariables(const QList<GlobalVariable>& variables) {
  m_library.setGlobalVariables(variables);
  m_saver.saveGlobalVariablesAndUpload();
}

}  // namespace zarvy
