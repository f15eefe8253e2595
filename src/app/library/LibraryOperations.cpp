#include "app/library/LibraryOperations.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

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

// The first snippet of that id; absent without one.
std::optional<qsizetype> positionOf(const SnippetList& snippets, const QUuid& id) {
  qsizetype position = 0;
  for (const Snippet& snippet : snippets) {
    if (snippet.id == id) return position;
    ++position;
  }
  return std::nullopt;
}

struct Stretch {
  qsizetype first = 0;
  qsizetype count = 0;
};

// Where the snippets of these ids stand, from the last to the first, so that removing one does not
// move those behind it in the result.
std::vector<Stretch> stretchesOf(const SnippetList& snippets, const QSet<QUuid>& ids) {
  std::vector<Stretch> stretches;
  qsizetype position = 0;
  for (const Snippet& snippet : snippets) {
    if (ids.contains(snippet.id)) {
      const bool goesOn =
          !stretches.empty() && stretches.back().first + stretches.back().count == position;
      if (!goesOn) stretches.push_back({position, 0});
      ++stretches.back().count;
    }
    ++position;
  }
  std::reverse(stretches.begin(), stretches.end());
  return stretches;
}

// A deletion of very much is told as another list: following it would take longer.
bool isTooMuchToFollow(const std::vector<Stretch>& stretches) {
  constexpr std::size_t mostStretches = 64;
  constexpr qsizetype mostSnippets = 1000;
  qsizetype snippets = 0;
  for (const Stretch& stretch : stretches) snippets += stretch.count;
  return stretches.size() > mostStretches || snippets > mostSnippets;
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
  afterChange(m_library.appendSnippet(snippet));
  m_selection.setSelectedSnippetID(snippet.id);
}

void LibraryOperations::deleteSnippet(const QUuid& id) {
  deleteSnippets({id});
}

void LibraryOperations::deleteSnippets(const QSet<QUuid>& ids) {
  if (ids.isEmpty()) return;
  const std::vector<Stretch> stretches = stretchesOf(m_library.snippets(), ids);
  if (isTooMuchToFollow(stretches)) {
    QList<Snippet> left = m_library.snippets().toList();
    left.removeIf([&ids](const Snippet& snippet) { return ids.contains(snippet.id); });
    m_library.setSnippets(left);
    afterChange({});
  } else {
    for (const Stretch& stretch : stretches) {
      const ListChange change = m_library.removeSnippets(stretch.first, stretch.count);
      handOver(change);
    }
    if (stretches.empty()) m_engine.setSnippets(m_library.snippets());
    m_saver.scheduleSave();
  }
  m_selection.forgetSnippets(ids);
}

std::optional<Snippet> LibraryOperations::selectedSnippet() const {
  const auto& id = m_selection.selectedSnippetID();
  if (!id) return std::nullopt;
  const auto position = positionOf(m_library.snippets(), *id);
  return position ? std::optional(m_library.snippets().at(*position)) : std::nullopt;
}

void LibraryOperations::setSelectedSnippet(const std::optional<Snippet>& snippet) {
  if (!snippet) return;
  const auto position = positionOf(m_library.snippets(), snippet->id);
  if (position) afterChange(m_library.replaceSnippet(*position, *snippet));
}

void LibraryOperations::setFolders(const QList<Folder>& folders) {
  m_library.setFolders(folders);
}

void LibraryOperations::addFolder(const Folder& folder) {
  m_library.setFolders(m_library.folders() + QList{folder});
  m_saver.scheduleSave();
}

void LibraryOperations::deleteFolder(const QUuid& id) {
  QList<Snippet> snippets = m_library.snippets().toList();
  for (Snippet& snippet : snippets) {
    if (snippet.folderID != id) continue;
    snippet.folderID.reset();
    m_isEngineBehind = true;
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
  QList<GlobalVariable> variables = m_library.globalVariables();
  const auto place =
      std::find_if(variables.begin(), variables.end(), withId<GlobalVariable>(variable.id));
  if (place == variables.end()) return;
  *place = variable;
  changeGlobalVariables(variables);
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

void LibraryOperations::afterChange(const ListChange& change) {
  handOver(change);
  m_saver.scheduleSave();
}

void LibraryOperations::handOver(const ListChange& change) {
  if (std::exchange(m_isEngineBehind, false)) {
    m_engine.setSnippets(m_library.snippets());
  } else {
    m_engine.changeSnippets(m_library.snippets(), change);
  }
}

void LibraryOperations::changeGlobalVariables(const QList<GlobalVariable>& variables) {
  m_library.setGlobalVariables(variables);
  m_saver.saveGlobalVariablesAndUpload();
}

}  // namespace zarvy
