#pragma once

#include <optional>

#include <QList>
#include <QSize>
#include <QString>

namespace zarvy {

// The windows of the program, each of which is open at most once.
struct Scene {
  QString id;
  QString title;
  std::optional<QSize> defaultSize;  // absent: that of its content, which it keeps to
};

namespace scene {

// Ids.
extern const QString manageSnippets;
extern const QString permissionRequest;
extern const QString settings;
extern const QString statistics;
extern const QString globalVariables;

}  // namespace scene

// In the order in which they are declared.
[[nodiscard]] const QList<Scene>& scenes();

}  // namespace zarvy
