#include "e2e/harness/TextareaPage.h"

#include <fstream>

#include <QStringList>

namespace zarvy::e2e {

using namespace Qt::Literals::StringLiterals;

namespace {

const char* const page =
    "<!doctype html><meta charset=utf-8><title>Page</title>"
    "<textarea id=field autofocus spellcheck=false style='width:95vw;height:90vh'></textarea>";

}  // namespace

void writeTextareaPage(const std::string& path) {
  std::ofstream(path) << page;
}

// The caret, and the units of the text in hexadecimal: JSON would not carry a lone surrogate.
QString readTextarea() {
  return u"(() => { const f = document.getElementById('field');"
         "return f.selectionEnd + ' ' + Array.from({length: f.value.length}, (_, i) =>"
         "f.value.charCodeAt(i).toString(16).padStart(4, '0')).join(''); })()"_s;
}

EditorState textareaState(const QString& read) {
  const QStringList parts = read.split(u' ');
  EditorState state{.text = {}, .caret = parts.value(0).toLongLong()};
  const QString digits = parts.value(1);
  for (qsizetype at = 0; at + 4 <= digits.size(); at += 4) {
    state.text += QChar(digits.mid(at, 4).toUShort(nullptr, 16));
  }
  return state;
}

QString emptyTextarea() {
  return u"document.getElementById('field').value = ''"_s;
}

}  // namespace zarvy::e2e
