#include "e2e/harness/ChromiumTarget.h"

#include <fstream>
#include <stdexcept>

#include <QJsonArray>

#include "e2e/harness/WaitUntil.h"

namespace zarvy::e2e {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr auto startDeadline = std::chrono::seconds(90);

const char* const page =
    "<!doctype html><meta charset=utf-8><title>Page</title>"
    "<textarea id=field autofocus spellcheck=false style='width:95vw;height:90vh'></textarea>";

// The caret, and the units of the text in hexadecimal: JSON would not carry a lone surrogate.
const QString readField =
    u"(() => { const f = document.getElementById('field');"
    "return f.selectionEnd + ' ' + Array.from({length: f.value.length}, (_, i) =>"
    "f.value.charCodeAt(i).toString(16).padStart(4, '0')).join(''); })()"_s;

}  // namespace

ProcessSpecification ChromiumTarget::program() {
  const std::string& folder = setting().folder;
  std::ofstream(folder + "/page.html") << page;
  Environment environment = setting().environment;
  environment["HOME"] = folder;
  return {.program = "chromium",
          .arguments = {"--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
                        "--disable-background-networking", "--disable-component-update",
                        "--disable-sync", "--no-default-browser-check", "--password-store=basic",
                        "--disable-dev-shm-usage", "--ozone-platform=x11",
                        "--user-data-dir=" + folder + "/profile", "--remote-debugging-pipe",
                        "--app=file://" + folder + "/page.html"},
          .environment = environment,
          .errorFile = folder + "/error.log",
          .descriptors = m_pipe.childDescriptors()};
}

void ChromiumTarget::connect() {
  m_pipe.closeChildEnds();
  const auto hasFocus = [this] {
    return attachToPage() && evaluate(
                                 u"document.readyState == 'complete' && document.hasFocus() &&"
                                 "document.activeElement.id == 'field' &&"
                                 "performance.getEntriesByType('paint').length > 0"_s)
                                 .toBool();
  };
  if (!waitUntil(hasFocus, startDeadline, std::chrono::milliseconds(100))) {
    throw std::runtime_error("the page in the browser does not get the focus");
  }
}

EditorState ChromiumTarget::state() {
  const QStringList parts = evaluate(readField).toString().split(u' ');
  EditorState state{.text = {}, .caret = parts.value(0).toLongLong()};
  const QString digits = parts.value(1);
  for (qsizetype at = 0; at + 4 <= digits.size(); at += 4) {
    state.text += QChar(digits.mid(at, 4).toUShort(nullptr, 16));
  }
  return state;
}

void ChromiumTarget::empty() {
  static_cast<void>(evaluate(u"document.getElementById('field').value = ''"_s));
}

bool ChromiumTarget::attachToPage() {
  if (!m_session.isEmpty()) return true;
  const QJsonArray targets =
      m_pipe.call(u"Target.getTargets"_s, {}, {})[u"targetInfos"_s].toArray();
  for (const auto& target : targets) {
    if (target[u"type"_s].toString() != u"page"_s ||
        !target[u"url"_s].toString().endsWith(u"page.html"_s)) {
      continue;
    }
    m_session = m_pipe
                    .call(u"Target.attachToTarget"_s,
                          {{u"targetId"_s, target[u"targetId"_s]}, {u"flatten"_s, true}},
                          {})[u"sessionId"_s]
                    .toString();
  }
  return !m_session.isEmpty();
}

QJsonValue ChromiumTarget::evaluate(const QString& expression) {
  const QJsonObject result =
      m_pipe.call(u"Runtime.evaluate"_s,
                  {{u"expression"_s, expression}, {u"returnByValue"_s, true}}, m_session);
  return result[u"result"_s][u"value"_s];
}

}  // namespace zarvy::e2e
