#include "e2e/harness/ChromiumTarget.h"

#include <stdexcept>

#include <QJsonArray>

#include "e2e/harness/TextareaPage.h"
#include "e2e/harness/WaitUntil.h"

namespace zarvy::e2e {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr auto startDeadline = std::chrono::seconds(90);

}  // namespace

ProcessSpecification ChromiumTarget::program() {
  const std::string& folder = setting().folder;
  writeTextareaPage(folder + "/page.html");
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
  return textareaState(evaluate(readTextarea()).toString());
}

void ChromiumTarget::empty() {
  static_cast<void>(evaluate(emptyTextarea()));
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
