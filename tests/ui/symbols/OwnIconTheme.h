#pragma once

#include <functional>

#include <QDir>
#include <QFile>
#include <QIcon>
#include <QImage>
#include <QPainter>
#include <QPixmapCache>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace zarvy {

// A desktop without any icon theme, until the test adds icons: then one that has just these.
class OwnIconTheme {
 public:
  static constexpr int extent = 28;  // of its icons, in pixels

  OwnIconTheme() {
    QPixmapCache::clear();
    QIcon::setThemeSearchPaths({m_folder.path()});
    QIcon::setFallbackThemeName({});
    QIcon::setThemeName(QStringLiteral("none"));
  }
  ~OwnIconTheme() {
    QIcon::setThemeSearchPaths(m_paths);
    QIcon::setFallbackThemeName(m_fallbackName);
    QIcon::setThemeName(m_themeName);
    QPixmapCache::clear();
  }
  OwnIconTheme(const OwnIconTheme&) = delete;
  OwnIconTheme& operator=(const OwnIconTheme&) = delete;

  void add(const QString& iconName, const std::function<void(QPainter&)>& paint) {
    QImage image(extent, extent, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    paint(painter);
    painter.end();
    ASSERT_TRUE(image.save(fileFor(iconName)));
    QIcon::setThemeName(m_ownName);
  }

  // One whose file holds no picture.
  void addBroken(const QString& iconName) {
    QFile file(fileFor(iconName));
    ASSERT_TRUE(file.open(QFile::WriteOnly));
    file.write("no picture");
    file.close();
    QIcon::setThemeName(m_ownName);
  }

 private:
  [[nodiscard]] QString fileFor(const QString& iconName) const {
    const QString folder = m_ownName + QStringLiteral("/actions");
    QDir(m_folder.path()).mkpath(folder);
    QFile index(m_folder.filePath(m_ownName + QStringLiteral("/index.theme")));
    EXPECT_TRUE(index.open(QFile::WriteOnly));
    index.write("[Icon Theme]\nName=own\nDirectories=actions\n[actions]\nSize=28\nType=Fixed\n");
    return m_folder.filePath(folder + QLatin1Char('/') + iconName + QStringLiteral(".png"));
  }

  const QTemporaryDir m_folder;
  const QString m_ownName = QStringLiteral("own");
  const QString m_themeName = QIcon::themeName();
  const QString m_fallbackName = QIcon::fallbackThemeName();
  const QStringList m_paths = QIcon::themeSearchPaths();
};

}  // namespace zarvy
