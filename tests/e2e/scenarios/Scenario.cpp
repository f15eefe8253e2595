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
      {.name = "us", .layouts = "us"},
      {.name = "de", .layouts = "de"},
      {.name = "fr", .layouts = "fr"},
      {.name = "ru", .layouts = "ru,us", .script = Script::cyrillic},
      {.name = "jp", .layouts = "jp"},
      {.name = "es", .layouts = "es"},
      {.name = "cz", .layouts = "cz"},
      {.name = "tr", .layouts = "tr"},
      {.name = "gr", .layouts = "gr", .script = Script::greek},
      {.name = "il", .layouts = "il", .script = Script::hebrew},
      {.name = "ara", .layouts = "ara", .script = Script::arabic},
      {.name = "br", .layouts = "br"},
      {.name = "us-intl", .layouts = "us(intl)"},
      {.name = "bepo", .layouts = "fr(bepo)"},
      {.name = "us-ru-locked",
       .layouts = "us,ru",
       .script = Script::cyrillic,
       .lockedByHand = true},
  };
  return layouts;
}

QString triggerIn(Script script, const QString& trigger) {
  const QString latin = u"abcdefghijklmnopqrstuvwxyzQ;?"_s;
  const QString other = [script] {
    switch (script) {
      case Script::cyrillic:
        return u"фисвуапршолдьтщзйкыегмцчняЙ;?"_s;
      case Script::greek:
        return u"αβψδεφγηιξκλμνοπωρστθωςχυζΩ;?"_s;
      case Script::hebrew:
        return u"שנבגקכעיןחלךצמםפתרדאוהץסטזQ;?"_s;
      case Script::arabic:
        return u"شةؤيثبلاهتنمىوخحضقسفعرصءغئإ-؟"_s;
      case Script::latin:
        break;
    }
    return QString();
  }();
  if (other.isEmpty()) return trigger;
  QString translated;
  for (const QChar character : trigger) translated += other.at(latin.indexOf(character));
  return translated;
}

std::vector<TestSnippet> matrixLibrary() {
  std::vector<TestSnippet> library;
  for (const Script script :
       {Script::latin, Script::cyrillic, Script::greek, Script::hebrew, Script::arabic}) {
    for (const ScenarioSnippet& snippet : scenarioSnippets()) {
      library.push_back({triggerIn(script, snippet.trigger), snippet.replacement});
    }
  }
  return library;
}

// From a key KDE's editor takes no character beyond the first 65,536, and Java none whole.
bool isPlayedIn(const Scenario& scenario, TargetKind kind, const MatrixLayout& layout) {
  const bool hasSecondGroup = layout.layouts.find(',') != std::string::npos;
  if (scenario.inSecondGroup && (!hasSecondGroup || layout.lockedByHand)) return false;
  return (kind != TargetKind::kwrite && kind != TargetKind::swing) ||
         std::none_of(scenario.turns.begin(), scenario.turns.end(), [](const Turn& turn) {
           return charactersOf(turn) != expectedAfter({}, {.snippet = turn.snippet}).text.size();
         });
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

QString keysOf(const Turn& turn, Script script) {
  if (turn.snippet.empty()) return turn.typed;
  return turn.typed + triggerIn(script, snippetNamed(turn.snippet).trigger);
}

qsizetype charactersOf(const Turn& turn) {
  if (turn.snippet.empty()) return 0;
  QString replacement = snippetNamed(turn.snippet).replacement;
  return replacement.remove(cursorMarker).toUcs4().size();
}

}  // namespace zarvy::e2e
