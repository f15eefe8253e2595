#include "e2e/harness/FirefoxTarget.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "e2e/harness/TextareaPage.h"
#include "e2e/harness/WaitUntil.h"

namespace zarvy::e2e {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr auto startDeadline = std::chrono::seconds(90);

// A free port for the remote control, which it then tells in its profile; no first-run pages, and
// nothing that goes to the network by itself.
const char* const preferences =
    "user_pref('marionette.port', 0);\n"
    "user_pref('browser.shell.checkDefaultBrowser', false);\n"
    "user_pref('browser.aboutwelcome.enabled', false);\n"
    "user_pref('datareporting.policy.dataSubmissionEnabled', false);\n"
    "user_pref('toolkit.telemetry.enabled', false);\n"
    "user_pref('app.normandy.enabled', false);\n"
    "user_pref('app.update.enabled', false);\n"
    "user_pref('network.captive-portal-service.enabled', false);\n"
    "user_pref('network.connectivity-service.enabled', false);\n"
    "user_pref('services.settings.server', 'data:,');\n"
    "user_pref('extensions.getAddons.cache.enabled', false);\n"
    "user_pref('browser.safebrowsing.malware.enabled', false);\n"
    "user_pref('browser.safebrowsing.phishing.enabled', false);\n"
    "user_pref('accessibility.force_disabled', 1);\n";

}  // namespace

ProcessSpecification FirefoxTarget::program() {
  std::filesystem::create_directories(profile());
  std::ofstream(profile() + "/user.js") << preferences;
  writeTextareaPage(page());
  Environment environment = setting().environment;
  environment["HOME"] = setting().folder;
  environment["GDK_BACKEND"] = "x11";
  return {.program = "firefox-esr",
          .arguments = {"--no-remote", "--profile", profile(), "--marionette", address()},
          .environment = environment,
          .errorFile = setting().folder + "/error.log",
          .descriptors = {}};
}

void FirefoxTarget::connect() {
  if (!waitUntil([this] { return connectToBrowser(); }, startDeadline,
                 std::chrono::milliseconds(200))) {
    throw std::runtime_error("the browser cannot be asked");
  }
  m_control.call(u"WebDriver:NewSession"_s, {});
  m_control.call(u"WebDriver:Navigate"_s,
                 {{u"url"_s, QString::fromStdString("file://" + setting().folder + "/page.html")}});
  const auto hasFocus = [this] {
    return evaluate(u"document.hasFocus() && document.activeElement.id == 'field'"_s).toBool();
  };
  if (!waitUntil(hasFocus, startDeadline, std::chrono::milliseconds(100))) {
    throw std::runtime_error("the page in the browser does not get the focus");
  }
}

EditorState FirefoxTarget::state() {
  return textareaState(evaluate(readTextarea()).toString());
}

void FirefoxTarget::empty() {
  static_cast<void>(evaluate(emptyTextarea()));
}

bool FirefoxTarget::connectToBrowser() {
  std::ifstream file(profile() + "/MarionetteActivePort");
  std::uint16_t port = 0;
  return (file >> port) && m_control.connectTo(port);
}

QJsonValue FirefoxTarget::evaluate(const QString& expression) {
  return m_control.call(
      u"WebDriver:ExecuteScript"_s,
      {{u"script"_s, QString(u"return "_s + expression)}, {u"args"_s, QJsonArray{}}})[u"value"_s];
}

}  // namespace zarvy::e2e
