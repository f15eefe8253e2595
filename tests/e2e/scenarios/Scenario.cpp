#include "e2e/scenarios/Scenario.h"

#include <algorithm>
#include <stdexcept>

#include <QList>

namespace zarvy::e2e {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString cursorMarker = u"{{cursor}}"_s;

const ScenarioSnippet& snippetNamed(const std::string& name) {
  const auto& snippets = scenarioSnippets();
  const auto found = std::find_if(snippets.begin(), snippets.end(),
                                  [&](const auto& snippet) { return snippet.name == name; });
  if (found == snippets.end()) throw std::logic_error("no snippet " + name);
  return *found;
}

}  // namespace

const std::vector<MatrixLayout>& matrixLayouts() {
  static const std::vector<MatrixLayout> layouts = {
      {.name = "us", .layouts = "us"}, {.name = "de", .layouts = "de"},
      {.name = "fr", .layouts = "fr"}, {.name = "ru", .layouts = "ru,us", .latin = false},
      {.name = "jp", .layouts = "jp"},
  };
  return layouts;
}

std::vector<TestSnippet> matrixLibrary() {
  std::vector<TestSnippet> library;
  for (const ScenarioSnippet& snippet : scenarioSnippets()) {
    library.push_back({snippet.latinTrigger, snippet.replacement});
    if (snippet.cyrillicTrigger != snippet.latinTrigger) {
      library.push_back({snippet.cyrillicTrigger, snippet.replacement});
    }
  }
  return library;
}

bool isPlayedOn(const Scenario& scenario, const MatrixLayout& layout) {
  return !scenario.inSecondGroup || layout.layouts.find(',') != std::string::npos;
}

bool isInShortForm(const Scenario& scenario) {
  return scenario.form == ScenarioForm::usual;
}

EditorState expectedAfter(EditorState before, const Turn& turn) {
  EditorState after = std::move(before);
  after.caret = std::max<qsizetype>(0, after.caret - turn.leftArrows);
  after.text.insert(after.caret, turn.typed);
  after.caret += turn.typed.size();
  if (turn.snippet.empty()) return after;

  QString replacement = snippetNamed(turn.snippet).replacement;
  const qsizetype marker = replacement.indexOf(cursorMarker);
  replacement.remove(cursorMarker);
  after.text.insert(after.caret, replacement);
  after.caret += marker < 0 ? replacement.size() : marker;
  return after;
}

QString keysOf(const Turn& turn, bool latin) {
  if (turn.snippet.empty()) return turn.typed;
  const ScenarioSnippet& snippet = snippetNamed(turn.snippet);
  return turn.typed + (latin ? snippet.latinTrigger : snippet.cyrillicTrigger);
}

qsizetype charactersOf(const Turn& turn) {
  if (turn.snippet.empty()) return 0;
  QString replacement = snippetNamed(turn.snippet).replacement;
  return replacement.remove(cursorMarker).toUcs4().size();
}

}  // namespace zarvy::e2e
