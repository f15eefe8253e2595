#include <utility>

#include <gtest/gtest.h>

#include "app/LibraryFixture.h"

namespace zarvy {
namespace {

using namespace Qt::Literals::StringLiterals;

class LibraryOperationsTest : public LibraryFixture {
 protected:
  // What the documents hold in the end is what the state holds now.
  void expectSaved() {
    rest();
    EXPECT_EQ(savedSnippets(), state().library().snippets());
    EXPECT_EQ(m_harness.store.loadFolders(), state().library().folders());
    EXPECT_EQ(m_harness.store.loadGlobalVariables(), state().library().globalVariables());
  }
};

TEST_F(LibraryOperationsTest, AddASnippetAtTheEndAndSelectIt) {
  const Snippet added = m_harness.snippet(u";d"_s, u"Delta"_s);
  state().operations().addSnippet(added);
  EXPECT_EQ(state().library().snippets(), (QList{a, b, c, added}));
  EXPECT_EQ(state().selection().selectedSnippetID(), added.id);
  EXPECT_EQ(state().operations().selectedSnippet(), added);
  EXPECT_EQ(engineSnippets(), state().library().snippets());
  expectSaved();
}

TEST_F(LibraryOperationsTest, ReplaceTheSelectedSnippetAtItsPlace) {
  Snippet changed = b;
  changed.title = u"new"_s;
  state().operations().setSelectedSnippet(changed);
  EXPECT_EQ(state().library().snippets(), (QList{a, changed, c}));
  EXPECT_EQ(state().selection().selectedSnippetID(), std::nullopt);
  EXPECT_EQ(engineSnippets(), state().library().snippets());
  expectSaved();
}

TEST_F(LibraryOperationsTest, DoNothingForASnippetThatIsNotThere) {
  const auto changes = count(state().library(), &Library::snippetsChanged);
  state().operations().setSelectedSnippet(std::nullopt);
  state().operations().setSelectedSnippet(m_harness.snippet(u";x"_s, u"x"_s));
  state().selection().setSelectedSnippetID(QUuid::createUuid());
  EXPECT_EQ(state().operations().selectedSnippet(), std::nullopt);
  EXPECT_EQ(*changes, 0);
  EXPECT_EQ(m_harness.documentQueue.pendingCount(), 0U);
}

TEST_F(LibraryOperationsTest, DeleteASnippetFromTheListAndBothSelections) {
  LibrarySelection& selection = state().selection();
  selection.setSelectedSnippetID(b.id);
  selection.setSelectedSnippetIDs({a.id, b.id});
  state().operations().deleteSnippet(b.id);
  EXPECT_EQ(state().library().snippets(), (QList{a, c}));
  EXPECT_EQ(selection.selectedSnippetID(), std::nullopt);
  EXPECT_EQ(selection.selectedSnippetIDs(), QSet{a.id});
  EXPECT_EQ(engineSnippets(), state().library().snippets());
  expectSaved();
}

TEST_F(LibraryOperationsTest, KeepTheSelectionOfOthers) {
  LibrarySelection& selection = state().selection();
  selection.setSelectedSnippetID(a.id);
  state().operations().deleteSnippet(b.id);
  EXPECT_EQ(selection.selectedSnippetID(), a.id);
}

TEST_F(LibraryOperationsTest, DeleteEverySnippetOfASet) {
  LibrarySelection& selection = state().selection();
  selection.setSelectedSnippetID(c.id);
  selection.setSelectedSnippetIDs({a.id, b.id, c.id});
  state().operations().deleteSnippets({a.id, c.id});
  EXPECT_EQ(state().library().snippets(), QList{b});
  EXPECT_EQ(selection.selectedSnippetID(), std::nullopt);
  EXPECT_EQ(selection.selectedSnippetIDs(), QSet{b.id});
  EXPECT_EQ(engineSnippets(), state().library().snippets());
  expectSaved();
}

TEST_F(LibraryOperationsTest, DeleteNothingForAnEmptySet) {
  const auto changes = count(state().library(), &Library::snippetsChanged);
  state().operations().deleteSnippets({});
  EXPECT_EQ(*changes, 0);
  EXPECT_EQ(m_harness.scheduler.pendingCount(), 1U) << "nothing but the watch";
}

TEST_F(LibraryOperationsTest, TellWhatHasBecomeOfTheList) {
  QList<ListChange> changes;
  QObject::connect(&state().library(), &Library::snippetsChanged, &state(),
                   [&changes](const ListChange& change) { changes.append(change); });
  using Kind = ListChange::Kind;
  state().operations().addSnippet(m_harness.snippet(u";d"_s, u"Delta"_s));
  EXPECT_EQ(std::exchange(changes, {}), (QList<ListChange>{{Kind::added, 3, 1}}));
  Snippet changed = b;
  changed.title = u"new"_s;
  state().operations().setSelectedSnippet(changed);
  state().operations().setSelectedSnippet(changed);
  EXPECT_EQ(std::exchange(changes, {}), (QList<ListChange>{{Kind::updated, 1, 1}}));
  state().operations().deleteSnippets({a.id, b.id, QUuid::createUuid()});
  EXPECT_EQ(std::exchange(changes, {}), (QList<ListChange>{{Kind::removed, 0, 2}}));
  state().operations().addSnippet(a);
  state().operations().addSnippet(b);
  changes.clear();
  state().operations().deleteSnippets({c.id, a.id});
  EXPECT_EQ(std::exchange(changes, {}),
            (QList<ListChange>{{Kind::removed, 2, 1}, {Kind::removed, 0, 1}}))
      << "the last place first, so that the others hold";
  EXPECT_EQ(engineSnippets(), state().library().snippets());
}

TEST_F(LibraryOperationsTest, TellOfADeletionInVeryManyPlacesAsOfAnotherList) {
  QSet<QUuid> ids;
  for (int number = 0; number < 200; ++number) {
    const Snippet snippet = m_harness.snippet(u";many"_s + QString::number(number), u"x"_s);
    state().operations().addSnippet(snippet);
    if (number % 2 == 0) ids.insert(snippet.id);
  }
  QList<ListChange> changes;
  QObject::connect(&state().library(), &Library::snippetsChanged, &state(),
                   [&changes](const ListChange& change) { changes.append(change); });
  state().operations().deleteSnippets(ids);
  EXPECT_EQ(changes, QList{ListChange()});
  EXPECT_EQ(state().library().snippets().size(), 103);
  EXPECT_EQ(engineSnippets(), state().library().snippets());
  EXPECT_FALSE(m_harness.engine.findMatch(u";many0"_s));
  EXPECT_TRUE(m_harness.engine.findMatch(u";many1"_s));
  expectSaved();
}

TEST_F(LibraryOperationsTest, AddAFolderWithoutTellingTheEngine) {
  const Folder added{QUuid::createUuid(), u"New"_s, FolderColor::pink, 2};
  state().operations().addFolder(added);
  EXPECT_EQ(state().library().folders(), (QList{work, home, added}));
  expectSaved();
}

TEST_F(LibraryOperationsTest, DeleteAFolderAndKeepItsSnippets) {
  state().selection().setSelectedFolderID(work.id);
  state().operations().deleteFolder(work.id);
  EXPECT_EQ(state().library().folders(), QList{home});
  ASSERT_EQ(state().library().snippets().size(), 3);
  EXPECT_EQ(state().library().snippets()[0].folderID, std::nullopt);
  EXPECT_EQ(state().library().snippets()[1].folderID, home.id);
  EXPECT_EQ(state().library().snippets()[2].folderID, std::nullopt);
  EXPECT_EQ(state().selection().selectedFolderID(), std::nullopt);
  EXPECT_EQ(engineSnippets(), (QList{a, b, c})) << "until the next hand-over";
  expectSaved();
  state().operations().setSelectedSnippet(state().library().snippets().front());
  EXPECT_EQ(engineSnippets(), state().library().snippets());
}

TEST_F(LibraryOperationsTest, HandOverTheFoldersOfExpressionsWithTheNextChange) {
  Snippet expression = m_harness.snippet(u"x+y"_s, u"text"_s);
  expression.isRegexTrigger = true;
  expression.folderID = work.id;
  state().operations().addSnippet(expression);
  state().operations().deleteFolder(work.id);
  ASSERT_TRUE(m_harness.engine.findMatch(u"xy"_s));
  EXPECT_EQ(m_harness.engine.findMatch(u"xy"_s)->snippet.folderID, work.id);
  state().operations().addSnippet(m_harness.snippet(u";new"_s, u"new"_s));
  ASSERT_TRUE(m_harness.engine.findMatch(u"xy"_s));
  EXPECT_EQ(m_harness.engine.findMatch(u"xy"_s)->snippet.folderID, std::nullopt);
}

TEST_F(LibraryOperationsTest, KeepTheSelectionOfAnotherFolder) {
  state().selection().setSelectedFolderID(home.id);
  state().operations().deleteFolder(work.id);
  EXPECT_EQ(state().selection().selectedFolderID(), home.id);
}

TEST_F(LibraryOperationsTest, AddChangeAndDeleteGlobalVariables) {
  const GlobalVariable added{QUuid::createUuid(), u"City"_s, u"Turin"_s, name.createdAt,
                             name.modifiedAt};
  state().operations().addGlobalVariable(added);
  EXPECT_EQ(state().library().globalVariables(), (QList{name, added}));
  EXPECT_EQ(m_harness.engine.globalVariables(), state().library().globalVariables());
  expectSaved();

  m_harness.clock.advance(std::chrono::seconds(5));
  GlobalVariable changed = name;
  changed.value = u"Eve"_s;
  state().operations().updateGlobalVariable(changed);
  changed.modifiedAt = m_harness.clock.now();
  EXPECT_EQ(state().library().globalVariables(), (QList{changed, added}));
  EXPECT_EQ(m_harness.engine.globalVariables(), state().library().globalVariables());
  expectSaved();

  state().operations().deleteGlobalVariable(name.id);
  EXPECT_EQ(state().library().globalVariables(), QList{added});
  EXPECT_EQ(m_harness.engine.globalVariables(), state().library().globalVariables());
  expectSaved();
}

TEST_F(LibraryOperationsTest, ForgetAVariableThatWasDeletedMeanwhile) {
  state().operations().deleteGlobalVariable(name.id);
  rest();
  const auto changes = count(state().library(), &Library::globalVariablesChanged);
  state().operations().updateGlobalVariable(name);
  EXPECT_EQ(*changes, 0);
  EXPECT_EQ(m_harness.documentQueue.pendingCount(), 0U);
}

TEST_F(LibraryOperationsTest, TellTriggersApartByCaseAndVariablesNot) {
  EXPECT_TRUE(state().operations().isTriggerDuplicate(u";a"_s));
  EXPECT_FALSE(state().operations().isTriggerDuplicate(u";A"_s));
  EXPECT_FALSE(state().operations().isTriggerDuplicate(u";a"_s, a.id));
  EXPECT_TRUE(state().operations().isTriggerDuplicate(u";a"_s, b.id));
  EXPECT_FALSE(state().operations().isTriggerDuplicate(u""_s));
  EXPECT_TRUE(state().operations().isVariableNameDuplicate(u"nAME"_s));
  EXPECT_FALSE(state().operations().isVariableNameDuplicate(u"nAME"_s, name.id));
  EXPECT_TRUE(state().operations().isVariableNameDuplicate(u"name"_s, a.id));
  EXPECT_FALSE(state().operations().isVariableNameDuplicate(u"nam"_s));
  state().operations().deleteSnippets({a.id, b.id, c.id});
  EXPECT_FALSE(state().operations().isTriggerDuplicate(u";a"_s));
}

TEST_F(LibraryOperationsTest, ShowWhatFolderAndSearchTextLeave) {
  LibrarySelection& selection = state().selection();
  EXPECT_EQ(state().filteredSnippets(), (QList{a, b, c}));
  selection.setSelectedFolderID(work.id);
  EXPECT_EQ(state().filteredSnippets(), (QList{a, c}));
  selection.setSearchText(u"gAMM"_s);
  EXPECT_EQ(state().filteredSnippets(), QList{c});
  selection.setSelectedFolderID(std::nullopt);
  selection.setSearchText(u";B"_s);
  EXPECT_EQ(state().filteredSnippets(), QList{b});
  selection.setSearchText(u"TITLE"_s);
  EXPECT_EQ(state().filteredSnippets(), (QList{a, b, c}));
  selection.setSearchText(u"nowhere"_s);
  EXPECT_EQ(state().filteredSnippets(), QList<Snippet>());
  selection.setSearchText({});
  selection.setSelectedFolderID(QUuid::createUuid());
  EXPECT_EQ(state().filteredSnippets(), QList<Snippet>());
}

TEST_F(LibraryOperationsTest, AreFoundByTheirTextsAsTheyAreNow) {
  LibrarySelection& selection = state().selection();
  selection.setSearchText(u"alpha"_s);
  EXPECT_EQ(state().filteredSnippets(), QList{a});
  selection.setSelectedSnippetID(a.id);
  Snippet edited = a;
  edited.replacement = u"Omega"_s;
  state().operations().setSelectedSnippet(edited);
  EXPECT_EQ(state().filteredSnippets(), QList<Snippet>());
  selection.setSearchText(u"OMEGA"_s);
  EXPECT_EQ(state().filteredSnippets().size(), 1);
  state().operations().deleteSnippets({a.id, b.id});
  EXPECT_EQ(state().filteredSnippets(), QList<Snippet>());
  selection.setSearchText(u"gamma"_s);
  EXPECT_EQ(state().filteredSnippets(), QList{c});
}

TEST_F(LibraryOperationsTest, TellOfTheSelectionOnlyWhenItChanges) {
  LibrarySelection& selection = state().selection();
  const auto folder = count(selection, &LibrarySelection::selectedFolderIDChanged);
  const auto one = count(selection, &LibrarySelection::selectedSnippetIDChanged);
  const auto several = count(selection, &LibrarySelection::selectedSnippetIDsChanged);
  const auto text = count(selection, &LibrarySelection::searchTextChanged);
  const auto fresh = count(selection, &LibrarySelection::pendingNewSnippetChanged);
  for (int time = 0; time < 2; ++time) {
    selection.setSelectedFolderID(work.id);
    selection.setSelectedSnippetID(a.id);
    selection.setSelectedSnippetIDs({a.id});
    selection.setSearchText(u"x"_s);
    selection.setPendingNewSnippet(true);
  }
  for (const auto& calls : {folder, one, several, text, fresh}) EXPECT_EQ(*calls, 1);
}

}  // namespace
}  // namespace zarvy
