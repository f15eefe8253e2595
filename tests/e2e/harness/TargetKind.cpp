#include "e2e/harness/TargetKind.h"

#include <algorithm>
#include <functional>
#include <stdexcept>

#include "e2e/harness/AccessibleTarget.h"
#include "e2e/harness/ChromiumTarget.h"
#include "e2e/harness/FirefoxTarget.h"
#include "e2e/harness/ReportingTarget.h"

namespace zarvy::e2e {

namespace {

using Maker = std::function<std::unique_ptr<TargetApplication>(TargetSetting)>;

struct Entry {
  TargetKind kind;
  std::string name;
  Maker make;
};

std::string script(const std::string& name) {
  return std::string(ZARVY_E2E_SCRIPTS) + "/" + name;
}

Maker reporting(std::vector<std::string> command, Environment further = {}) {
  return [command = std::move(command), further = std::move(further)](TargetSetting setting) {
    for (const auto& [name, value] : further) setting.environment[name] = value;
    return std::make_unique<ReportingTarget>(std::move(setting), command);
  };
}

// By the Python that finds the modules that come as packages; it leaves nothing beside the script.
Maker python(const std::string& name, Environment further = {}) {
  further["PYTHONDONTWRITEBYTECODE"] = "yes";
  return reporting({"/usr/bin/python3", script(name)}, std::move(further));
}

// A terminal emulator with a program in it that reads keys as a line editor does.
Maker terminal(std::vector<std::string> command, Environment further = {}) {
  command.emplace_back(ZARVY_E2E_TERMINAL_PROBE);
  return reporting(std::move(command), std::move(further));
}

std::vector<std::string> behindInputMethod(const std::vector<std::string>& command) {
  std::vector<std::string> whole = {script("behind_input_method.sh")};
  for (const std::string& word : command) whole.push_back(word);
  return whole;
}

template <typename Target>
Maker made() {
  return [](TargetSetting setting) { return std::make_unique<Target>(std::move(setting)); };
}

const std::vector<Entry>& entries() {
  static const std::vector<std::string> xterm = {
      "xterm", "-u8", "-fa", "DejaVu Sans Mono", "-fs", "9", "-geometry", "100x40", "-e"};
  static const std::vector<Entry> all = {
      {TargetKind::xterm, "xterm",
       terminal(
           {"xterm", "-u8", "-fa", "DejaVu Sans Mono", "-fs", "9", "-geometry", "100x40", "-e"})},
      {TargetKind::qt6, "qt6", reporting({ZARVY_E2E_QT6_EDITOR})},
      {TargetKind::mousepad, "mousepad", made<MousepadTarget>()},
      {TargetKind::featherpad, "featherpad", made<FeatherpadTarget>()},
      {TargetKind::chromium, "chromium", made<ChromiumTarget>()},
      {TargetKind::gtk4, "gtk4",
       python("gtk4_editor.py", {{"GSK_RENDERER", "cairo"}, {"GDK_BACKEND", "x11"}})},
      {TargetKind::kwrite, "kwrite", made<KwriteTarget>()},
      {TargetKind::firefox, "firefox", made<FirefoxTarget>()},
      {TargetKind::tk, "tk", python("tk_editor.py")},
      {TargetKind::swing, "swing", reporting({"java", script("SwingEditor.java")})},
      {TargetKind::gvim, "gvim",
       reporting({"gvim", "-f", "-u", script("vim_editor.vim"), "-U", "NONE", "-i", "NONE"})},
      {TargetKind::emacs, "emacs", reporting({"emacs", "-Q", "-l", script("emacs_editor.el")})},
      {TargetKind::sakura, "sakura", terminal({"sakura", "-e"})},
      {TargetKind::kitty, "kitty",
       terminal({"kitty", "--config", "NONE"}, {{"LIBGL_ALWAYS_SOFTWARE", "1"}})},
      {TargetKind::xim, "xim", terminal(behindInputMethod(xterm))},
  };
  return all;
}

const Entry& entryOf(TargetKind kind) {
  const auto found = std::find_if(entries().begin(), entries().end(),
                                  [&](const Entry& entry) { return entry.kind == kind; });
  if (found == entries().end()) throw std::logic_error("no such target");
  return *found;
}

}  // namespace

const std::vector<TargetKind>& allTargetKinds() {
  static const std::vector<TargetKind> kinds = [] {
    std::vector<TargetKind> all;
    for (const Entry& entry : entries()) all.push_back(entry.kind);
    return all;
  }();
  return kinds;
}

std::string nameOf(TargetKind kind) {
  return entryOf(kind).name;
}

std::unique_ptr<TargetApplication> makeTarget(TargetKind kind, TargetSetting setting) {
  return entryOf(kind).make(std::move(setting));
}

}  // namespace zarvy::e2e
