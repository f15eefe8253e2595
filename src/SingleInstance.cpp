#include "SingleInstance.h"

#include <unistd.h>

#include <QCryptographicHash>
#include <QDir>
#include <QLockFile>

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

namespace {

QString lockFileFor(const QString& dataDirectory) {
  const QByteArray hash =
      QCryptographicHash::hash(dataDirectory.toUtf8(), QCryptographicHash::Sha256).toHex();
  const QString name = u"zarvy-"_s + QString::fromLatin1(hash.first(16)) + u".lock"_s;
  const QString runtimeFolder = qEnvironmentVariable("XDG_RUNTIME_DIR");
  if (QDir::isAbsolutePath(runtimeFolder)) return QDir(runtimeFolder).filePath(name);
  return QDir::temp().filePath(QString::number(::getuid()) + u'-' + name);
}

// A process that has ended has no claim any more; one that lives keeps it, however old it is.
bool canBeOurs(QLockFile& lock) {
  lock.setStaleLockTime(0);
  return lock.tryLock(0) || lock.error() != QLockFile::LockFailedError;
}

}  // namespace

SingleInstance::SingleInstance(const QString& dataDirectory)
    : m_lock(std::make_unique<QLockFile>(lockFileFor(dataDirectory))),
      m_isOnlyOne(canBeOurs(*m_lock)) {}

SingleInstance::~SingleInstance() = default;

}  // namespace zarvy
