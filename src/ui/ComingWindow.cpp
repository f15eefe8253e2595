#include "ui/ComingWindow.h"

#include <QEvent>
#include <QLabel>
#include <QVBoxLayout>

#include "app/AppState.h"
#include "ui/HotKeyNotice.h"
#include "ui/Scenes.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

namespace {

constexpr int windowPadding = 40;
constexpr int textWidth = 420;

QString promiseOf(const QString& sceneId) {
  if (sceneId == scene::manageSnippets) {
    return u"Here you will find, write and sort your snippets. Until then they are edited in the "
           "file snippets.json, while Zarvy is not running."_s;
  }
  if (sceneId == scene::settings) {
    return u"Here you will choose the hot key, the sound and how Zarvy starts. Until then these "
           u"are "
           "edited in the file settings.json, while Zarvy is not running."_s;
  }
  if (sceneId == scene::statistics) {
    return u"Here you will see how often your snippets were expanded and how much typing they "
           u"saved. "
           "Expansions are counted already."_s;
  }
  return u"Here you will give names to texts that several snippets share. Until then they are "
         u"edited "
         "in the file global_variables.json, while Zarvy is not running."_s;
}

}  // namespace

ComingWindow::ComingWindow(const QString& sceneId, AppState& state) {
  auto* const text = new QLabel(promiseOf(sceneId), this);
  text->setWordWrap(true);
  text->setFixedWidth(textWidth);
  text->setAlignment(Qt::AlignCenter);
  auto* const layout = new QVBoxLayout(this);
  layout->setContentsMargins(windowPadding, windowPadding, windowPadding, windowPadding);
  const bool isAboutKeys = sceneId == scene::manageSnippets || sceneId == scene::settings;
  if (isAboutKeys) {
    const auto choose = [&state](const HotKey& key) { state.changeHotKey(key); };
    layout->addWidget(new HotKeyNotice(state.expansion(), choose, this), 0, Qt::AlignTop);
  }
  layout->addWidget(text, 0, Qt::AlignCenter);
}

// One that keeps to its content follows it.
bool ComingWindow::event(QEvent* event) {
  const bool keepsToContent = minimumSize() == maximumSize();
  if (event->type() == QEvent::LayoutRequest && keepsToContent) setFixedSize(sizeHint());
  return QWidget::event(event);
}

}  // namespace zarvy
