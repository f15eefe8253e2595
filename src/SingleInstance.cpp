#include "SingleInstance.h"

#include <unistd.h>
#include <utility>

#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QDir>
#include <QLocalServer>
#include <QLocalSocket>
#include <QLockFile>
#include <QThread>

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

namespace {

// For the first instance to answer, in milliseconds. It may be coming up, or stopped.
constexpr int patience = 2000;
constexpr int timeToTryAgain = 20;

QString placeFor(const QString& dataDirectory) {
  const QByteArray hash =
      QCryptographicHash::hash(dataDirectory.toUtf8(), QCryptographicHash::Sha256).toHex();
  const QString name = u"zarvy-"_s + QString::fromLatin1(hash.first(16));
  const QString runtimeFolder = qEnvironmentVariable("XDG_RUNTIME_DIR");
  if (QDir::isAbsolutePath(runtimeFolder)) return QDir(runtimeFolder).filePath(name);
  return QDir::temp().filePath(QString::number(::getuid()) + u'-' + name);
}

// A process that has ended has no claim any more; one that lives keeps it, however old it is.
bool canBeOurs(QLockFile& lock) {
  lock.setStaleLockTime(0);
  return lock.tryLock(0) || lock.error() != QLockFile::LockFailedError;
}

QString socketAt(const QString& place) {
  return place + u".socket"_s;
}

}  // namespace

SingleInstance::SingleInstance(const QString& dataDirectory)
    : m_place(placeFor(dataDirectory)),
      m_lock(std::make_unique<QLockFile>(m_place + u".lock"_s)),
      m_isOnlyOne(canBeOurs(*m_lock)) {}

SingleInstance::~SingleInstance() = default;

// To connect is to tell; the end of the connection is the answer.
void SingleInstance::listen(std::function<void()> onOtherStart) {
  m_server = std::make_unique<QLocalServer>();
  m_server->setSocketOptions(QLocalServer::UserAccessOption);
  QObject::connect(m_server.get(), &QLocalServer::newConnection, m_server.get(),
                   [server = m_server.get(), onOtherStart = std::move(onOtherStart)] {
                     while (QLocalSocket* const other = server->nextPendingConnection()) {
                       other->disconnectFromServer();
                       other->deleteLater();
                       onOtherStart();
                     }
                   });
  QLocalServer::removeServer(socketAt(m_place));  // of one that was killed
  m_server->listen(socketAt(m_place));
}

void SingleInstance::tellOnlyOne() const {
  const QDeadlineTimer limit(patience);
  QLocalSocket socket;
  while (!limit.hasExpired()) {
    socket.connectToServer(socketAt(m_place), QIODevice::ReadOnly);
    if (socket.waitForConnected(static_cast<int>(limit.remainingTime()))) {
      socket.waitForDisconnected(static_cast<int>(limit.remainingTime()));
      return;
    }
    QThread::msleep(timeToTryAgain);
  }
}

}  // namespace zarvy
