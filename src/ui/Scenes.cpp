#include "ui/Scenes.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

namespace scene {

const QString manageSnippets = u"manage-snippets"_s;
const QString permissionRequest = u"permission-request"_s;
const QString settings = u"settings"_s;
const QString statistics = u"statistics"_s;
const QString globalVariables = u"global-variables"_s;

}  // namespace scene

const QList<Scene>& scenes() {
  static const QList<Scene> all = {
      {scene::manageSnippets, u"Manage Snippets"_s, QSize(900, 600)},
      {scene::permissionRequest, u"Setup"_s, std::nullopt},
      {scene::settings, u"Zarvy Settings"_s, std::nullopt},
      {scene::statistics, u"Statistics"_s, QSize(700, 550)},
      {scene::globalVariables, u"Global Variables"_s, QSize(500, 400)},
  };
  return all;
}

}  // namespace zarvy
