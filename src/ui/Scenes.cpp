#include "ui/Scenes.h"

#include "app/AppState.h"
#include "ui/ComingWindow.h"
#include "ui/PermissionRequestView.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

namespace {

template <Scene scene>
std::unique_ptr<QWidget> makeComing(const SceneServices& services) {
  return std::make_unique<ComingWindow>(scene, services.state);
}

std::unique_ptr<QWidget> makePermissionRequest(const SceneServices& services) {
  return std::make_unique<PermissionRequestView>(
      services.state.expansion(), [open = services.open] { open(Scene::manageSnippets); });
}

void warmUp(AppState& state) {
  state.loadData();
  state.expansion().warmUp();
}

}  // namespace

const QList<SceneRow>& allScenes() {
  static const QList<SceneRow> all = {
      {.scene = Scene::manageSnippets,
       .id = u"manage-snippets"_s,
       .title = u"Manage Snippets"_s,
       .defaultSize = QSize(900, 600),
       .make = makeComing<Scene::manageSnippets>,
       .prepare = warmUp},
      {.scene = Scene::permissionRequest,
       .id = u"permission-request"_s,
       .title = u"Setup"_s,
       .defaultSize = std::nullopt,
       .closesOnEscape = true,
       .make = makePermissionRequest},
      {.scene = Scene::settings,
       .id = u"settings"_s,
       .title = u"Zarvy Settings"_s,
       .defaultSize = std::nullopt,
       .closesOnEscape = true,
       .make = makeComing<Scene::settings>},
      {.scene = Scene::statistics,
       .id = u"statistics"_s,
       .title = u"Statistics"_s,
       .defaultSize = QSize(700, 550),
       .closesOnEscape = true,
       .make = makeComing<Scene::statistics>},
      // What is typed here is taken over a moment later: no key is to take it away.
      {.scene = Scene::globalVariables,
       .id = u"global-variables"_s,
       .title = u"Global Variables"_s,
       .defaultSize = QSize(500, 400),
       .make = makeComing<Scene::globalVariables>},
  };
  return all;
}

const SceneRow& rowOf(Scene scene) {
  return allScenes().at(static_cast<qsizetype>(scene));
}

}  // namespace zarvy
