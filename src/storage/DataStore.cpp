#include "storage/DataStore.h"

#include <cerrno>
#include <sys/stat.h>
#include <utility>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include "base/json/JsonText.h"
#include "storage/DocumentFile.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

constexpr DocumentKind snippetsDocument{u"snippets.json", u"Error loading snippets: ",
                                        u"Error saving snippets: "};
constexpr DocumentKind foldersDocument{u"folders.json", u"Error loading folders: ",
                                       u"Error saving folders: "};
constexpr DocumentKind settingsDocument{u"settings.json", u"Error loading settings: ",
                                        u"Error saving settings: "};
constexpr DocumentKind globalVariablesDocument{u"global_variables.json",
                                               u"Error loading global variables: ",
                                               u"Error saving global variables: "};

std::optional<QString> desktopApplicationSupport() {
  QString path = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
  if (path.isEmpty()) return std::nullopt;
  return path;
}

// What went wrong; absent where the folder now exists.
std::optional<QString> makePrivateFolder(const QString& path) {
  const QString parent = QFileInfo(path).path();
  if (!QDir().mkpath(parent)) return u"cannot make the folder "_s + parent;
  if (::mkdir(QFile::encodeName(path).constData(), S_IRWXU) == 0 || errno == EEXIST) {
    return std::nullopt;
  }
  return qt_error_string(errno);
}

}  // namespace

DataStore::DataStore(LineOutput& output) : DataStore(output, desktopApplicationSupport) {}

DataStore::DataStore(LineOutput& output, ApplicationSupportLookup applicationSupport)
    : m_output(output), m_applicationSupport(std::move(applicationSupport)) {}

QString DataStore::dataDirectory() const {
  const auto applicationSupport = m_applicationSupport();
  if (!applicationSupport) {
    m_output.print(
        u"Warning: Application Support directory unavailable, using temporary directory"_s);
    return QDir::tempPath() + u"/Zarvy"_s;
  }
  QString path = *applicationSupport + u"/Zarvy"_s;
  if (QFileInfo::exists(path)) return path;
  if (const auto error = makePrivateFolder(path)) {
    m_output.print(u"Error creating data directory: "_s + *error);
  }
  return path;
}

QList<Snippet> DataStore::loadSnippets() const {
  return DocumentFile(snippetsDocument, dataDirectory(), m_output)
      .load(recordsFromJson<Snippet>)
      .value_or(QList<Snippet>());
}

void DataStore::saveSnippets(const QList<Snippet>& snippets) const {
  DocumentFile(snippetsDocument, dataDirectory(), m_output).save(recordsToJson(snippets));
}

QList<Folder> DataStore::loadFolders() const {
  return DocumentFile(foldersDocument, dataDirectory(), m_output)
      .load(recordsFromJson<Folder>)
      .value_or(QList<Folder>());
}

void DataStore::saveFolders(const QList<Folder>& folders) const {
  DocumentFile(foldersDocument, dataDirectory(), m_output).save(recordsToJson(folders));
}

Settings DataStore::loadSettings() const {
  return DocumentFile(settingsDocument, dataDirectory(), m_output)
      .load(Settings::fromJson)
      .value_or(Settings());
}

void DataStore::saveSettings(const Settings& settings) const {
  DocumentFile(settingsDocument, dataDirectory(), m_output).save(writeJson(settings.toJson()));
}

QList<GlobalVariable> DataStore::loadGlobalVariables() const {
  return DocumentFile(globalVariablesDocument, dataDirectory(), m_output)
      .load(recordsFromJson<GlobalVariable>)
      .value_or(QList<GlobalVariable>());
}

void DataStore::saveGlobalVariables(const QList<GlobalVariable>& globalVariables) const {
  DocumentFile(globalVariablesDocument, dataDirectory(), m_output)
      .save(recordsToJson(globalVariables));
}

}  // namespace zarvy
