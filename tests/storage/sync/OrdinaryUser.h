#pragma once

#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <QString>

#include <gtest/gtest.h>

namespace zarvy {

// Makes this process, for as long as it lives, obey the permissions of files, which it does not
// where the tests are run by the superuser. `paths` become its own.
class OrdinaryUser {
 public:
  explicit OrdinaryUser(const QStringList& paths) {
    if (::geteuid() != 0) return;
    for (const QString& path : paths) {
      EXPECT_EQ(::chown(QFile::encodeName(path).constData(), nobody, nobody), 0);
    }
    EXPECT_EQ(::seteuid(nobody), 0);
    m_wasSuperuser = true;
  }
  ~OrdinaryUser() {
    if (m_wasSuperuser) {
      EXPECT_EQ(::seteuid(0), 0);
    }
  }
  OrdinaryUser(const OrdinaryUser&) = delete;
  OrdinaryUser& operator=(const OrdinaryUser&) = delete;

 private:
  static constexpr unsigned nobody = 65534;

  bool m_wasSuperuser = false;
};

// Gives `path` other permissions.
inline void changeMode(const QString& path, mode_t mode) {
  ASSERT_EQ(::chmod(QFile::encodeName(path).constData(), mode), 0);
}

}  // namespace zarvy
