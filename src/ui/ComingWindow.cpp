#include "ui/ComingWindow.h"

#include <QLabel>
#include <QVBoxLayout>

#include "app/AppState.h"
#include "ui/HotKeyNotice.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

namespace {

constexpr int windowPadding = 40;
constexpr int textWidth = 420;

QString promiseOf(Scene scene) {
  switch (scene) {
    case Scene::manageSnippets:
      return u"Here you will find, write and sort your snippets. Until then they are edited in "
             "the file snippets.json, while Zarvy is not running."_s;
    case Scene::settings:
      return u"Here you will choose the hot key, the sound and how Zarvy starts. Until then these "
             "are edited in the file settings.json, while Zarvy is not running."_s;
    case Scene::statistics:
      return u"Here you will see how often your snippets were expanded and how much typing they "
             "saved. Expansions are counted already."_s;
    case Scene::globalVariables:
      return u"Here you will give names to texts that several snippets share. Until then they are "
             "edited in the file global_variables.json, while Zarvy is not running."_s;
    case Scene::permissionRequest:
      break;
  }
  return {};
}

}  // namespace

ComingWindow::ComingWindow(Scene scene, AppState& state) {
  auto* const text = new QLabel(promiseOf(scene), this);
  text->setWordWrap(true);
  text->setFixedWidth(textWidth);
  text->setAlignment(Qt::AlignCenter);
  auto* const layout = new QVBoxLayout(this);
  layout->setContentsMargins(windowPadding, windowPadding, windowPadding, windowPadding);
  const bool isAboutKeys = scene == Scene::manageSnippets || scene == Scene::settings;
  if (isAboutKeys) {
    const auto choose = [&state](const HotKey& key) { state.changeHotKey(key); };
    layout->addWidget(new HotKeyNotice(state.expansion(), choose, this), 0, Qt::AlignTop);
  }
  layout->addWidget(text, 0, Qt::AlignCenter);
}

}  // namespace zarvy
