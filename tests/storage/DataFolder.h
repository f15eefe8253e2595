#pragma once

#include <sys/stat.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "fakes/RecordingLineOutput.h"
#include "storage/DataStore.h"

namespace zarvy {

// A store with a data folder of its own, which has not been made yet.
class DataFolder : public testing::Test {
 protected:
  [[nodiscard]] QString path(const QString& name) const {
    return m_root.filePath(QStringLiteral("share/Zarvy/") + name);
  }

  void write(const QString& name, const QByteArray& content) const {
    ASSERT_TRUE(QDir().mkpath(QFileInfo(path(name)).path()));
    QFile file(path(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
  }

  [[nodiscard]] QByteArray content(const QString& name) const {
    QFile file(path(name));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
    return file.readAll();
  }

  // The permissions of a document, or of the folder where `name` is empty.
  [[nodiscard]] unsigned mode(const QString& name) const {
    struct stat status {};
    EXPECT_EQ(::stat(QFile::encodeName(path(name)).constData(), &status), 0);
    return status.st_mode & 07777U;
  }

  // As if nothing had been written to it for two hours.
  void makeOld(const QString& name) const {
    QFile file(path(name));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    const QDateTime then = QDateTime::currentDateTimeUtc().addSecs(-2 * 60 * 60);
    ASSERT_TRUE(file.setFileTime(then, QFileDevice::FileModificationTime));
  }

  // Every file of the folder, hidden ones included, by name.
  [[nodiscard]] QStringList files() const {
    return QDir(path(QString())).entryList(QDir::Files | QDir::Hidden, QDir::Name);
  }

  // Puts a folder in the place of a document, so that it can be neither read nor replaced.
  void block(const QString& name) const { ASSERT_TRUE(QDir().mkpath(path(name))); }

  QTemporaryDir m_root;
  RecordingLineOutput m_output;
  DataStore m_store{m_output, [this] { return m_root.filePath(QStringLiteral("share")); }};
};

}  // namespace zarvy
