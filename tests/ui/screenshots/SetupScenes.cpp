#include "app/ExpansionHarness.h"
#include "ui/PermissionRequestView.h"
#include "ui/screenshots/ScreenScene.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

struct SetupStage {
  ExpansionHarness harness;
  std::unique_ptr<QWidget> window;
};

std::shared_ptr<void> open(bool isGranted, bool isAskable) {
  auto stage = std::make_shared<SetupStage>();
  stage->harness.permission.isAskable = isAskable;
  stage->harness.permission.setTrusted(isGranted);
  stage->harness.makeState();
  stage->window = std::make_unique<PermissionRequestView>(stage->harness.state->expansion(), [] {});
  stage->window->show();
  stage->window->activateWindow();
  return stage;
}

}  // namespace

QList<ScreenScene> setupScenes() {
  return {
      {u"setup"_s, [] { return open(false, true); }},
      {u"setup-granted"_s, [] { return open(true, true); }},
      {u"setup-unaskable"_s, [] { return open(false, false); }},
  };
}

}  // namespace zarvy
