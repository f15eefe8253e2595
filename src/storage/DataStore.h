#pragma once

#include <functional>
#include <optional>

#include <QList>
#include <QString>

#include "base/LineOutput.h"
#include "core/model/Folder.h"
#include "core/model/GlobalVariable.h"
#include "core/model/Settings.h"
#include "core/model/Snippet.h"

namespace zarvy {

// Where the documents of the program live and how they are written. Holds none of them: a load
// reads the file, a save replaces it.
//
// Every operation does its work before it returns and takes no lock: the caller runs all of them
// on one serial queue, off the main thread, which is what keeps saves in order.
//
// Failures do not travel: each prints one line; a failed load gives what a missing file gives, a
// failed save leaves the old file.
class DataStore {
 public:
  // Finds the folder that holds the data folders of the user's applications; absent where the
  // system names none.
  using ApplicationSupportLookup = std::function<std::optional<QString>()>;

  // The one of the desktop: $XDG_DATA_HOME, else ~/.local/share.
  explicit DataStore(LineOutput& output);
  DataStore(LineOutput& output, ApplicationSupportLookup applicationSupport);

  // The folder of the documents, found anew and made where it is missing, for the user alone.
  [[nodiscard]] QString dataDirectory() const;

  [[nodiscard]] QList<Snippet> loadSnippets() const;
  void saveSnippets(const QList<Snippet>& snippets) const;

  [[nodiscard]] QList<Folder> loadFolders() const;
  void saveFolders(const QList<Folder>& folders) const;

  [[nodiscard]] Settings loadSettings() const;
  void saveSettings(const Settings& settings) const;

  [[nodiscard]] QList<GlobalVariable> loadGlobalVariables() const;
  void saveGlobalVariables(const QList<GlobalVariable>& globalVariables) const;

 private:
  LineOutput& m_output;
  ApplicationSupportLookup m_applicationSupport;
};

}  // namespace zarvy
