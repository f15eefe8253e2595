#pragma once

#include <QList>
#include <QMap>
#include <QString>

#include "core/model/Folder.h"
#include "core/model/GlobalVariable.h"
#include "core/model/Settings.h"
#include "core/model/Snippet.h"

namespace zarvy {

// What the program reads from its documents at start.
struct Library {
  QList<Snippet> snippets;
  QList<Folder> folders;
  Settings settings;
  QList<GlobalVariable> globalVariables;
  QMap<QString, qint64> counters = {};        // values by name
  QMap<QString, QString> fieldDefaults = {};  // remembered texts by the field's name
};

}  // namespace zarvy
