#include "SingleInstance.h"

#include <chrono>
#include <fcntl.h>
#include <filesystem>
#include <future>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <utility>

#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QLocalServer>
#include <QLocalSocket>
#include <QStringList>
#include <QSysInfo>
#include <QThread>

#include "base/posix/FileLock.h"
#include "base/posix/Users.h"
#include "storage/PrivateFolder.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

namespace {

// For an instance that takes connections to answer one. It may be busy, or stopped.
constexpr std::chrono::milliseconds patienceWithAnswer{2000};

// For an instance that takes none: it is coming up, or ending, and a disk may hold it up at that.
constexpr std::chrono::seconds patienceWithEnd{15};

constexpr unsigned long millisecondsToTryAgain = 20;

constexpr std::chrono::seconds patienceWithDisk{2};

// The one spelling of a folder that may be written in many; the folder need not be there yet.
QByteArray canonicalPath(const QString& directory) {
  const std::filesystem::path written(QFile::encodeName(directory).toStdString());
  std::error_code error;
  std::filesystem::path path = std::filesystem::weakly_canonical(written, error);
  if (error) path = written;
  // Where the folder is not there, a slash at the end has stayed.
  if (!path.has_filename()) path = path.parent_path();
  return QByteArray::fromStdString(path.native());
}

// Whether the folder is this user's, and no other user can put anything there.
bool isPrivateFolder(const QString& folder) {
  struct stat status {};
  return ::stat(QFile::encodeName(folder).constData(), &status) == 0 && S_ISDIR(status.st_mode) &&
         status.st_uid == ::getuid() && (status.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

// The folder that the session has for such files; empty where it has none.
QString runtimeFolder() {
  const QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
  return QDir::isAbsolutePath(folder) && isPrivateFolder(folder) ? folder : QString();
}

// Beside the documents where the session has no folder for it.
QString socketFor(const QString& dataDirectory) {
  const QString runtime = runtimeFolder();
  if (runtime.isEmpty()) return dataDirectory + u"/.zarvy.socket"_s;
  const QByteArray hash =
      QCryptographicHash::hash(canonicalPath(dataDirectory), QCryptographicHash::Sha256).toHex();
  return runtime + u"/zarvy-%1.socket"_s.arg(QString::fromLatin1(hash.first(16)));
}

QString thisHost() {
  return QSysInfo::machineHostName();
}

QString contentOf(int file) {
  QFile reader;
  if (!reader.open(file, QIODevice::ReadOnly) || !reader.seek(0)) return {};
  constexpr qint64 longestPath = 4096;
  return QFile::decodeName(reader.read(longestPath));
}

void setContent(int file, const QString& text) {
  const QByteArray bytes = QFile::encodeName(text);
  const bool isEmptied = file >= 0 && ::ftruncate(file, 0) == 0;
  if (isEmptied) {
    static_cast<void>(
        !::pwrite(file, bytes.constData(), static_cast<std::size_t>(bytes.size()), 0));
  }
}

// A folder that cannot be written keeps nothing that two could spoil; the session's own folder then
// keeps two from expanding everything twice. Waits for the disk.
SingleInstance::Claim claimOn(const QString& dataDirectory, const QString& socket) {
  static_cast<void>(makePrivateFolder(dataDirectory));
  for (const QString& file : {dataDirectory + u"/.zarvy.lock"_s, socket + u".lock"_s}) {
    FileDescriptor lock(::open(QFile::encodeName(file).constData(),
                               O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, S_IRUSR | S_IWUSR));
    if (!lock.isOpen()) continue;
    const FileLock result = tryToLock(lock.get());
    if (result == FileLock::taken) {
      setContent(lock.get(), thisHost() + u'\n');
      return {.lock = std::move(lock)};
    }
    if (result == FileLock::impossible) continue;
    // A home that two machines share has one of them on each.
    const QStringList said = contentOf(lock.get()).split(u'\n');
    const bool isElsewhere = !said.front().isEmpty() && said.front() != thisHost();
    if (!isElsewhere) return {.isOurs = false, .socketOfOther = said.value(1)};
  }
  return {};
}

void answer(QLocalSocket& other) {
  other.write("!");
  other.flush();
  other.disconnectFromServer();
}

}  // namespace

SingleInstance::SingleInstance(const QString& dataDirectory)
    : m_dataDirectory(dataDirectory), m_socket(socketFor(dataDirectory)) {}

SingleInstance::~SingleInstance() = default;

bool SingleInstance::becomeOnlyOne() {
  const QDeadlineTimer limit(patienceWithEnd);
  while (!claim()) {
    const bool goesOn = tellOnlyOne() != Answer::none;
    if (goesOn || limit.hasExpired()) return false;
    QThread::msleep(millisecondsToTryAgain);
  }
  return true;
}

// A disk that does not answer is no reason not to start.
bool SingleInstance::claim() {
  std::promise<Claim> promise;
  std::future<Claim> answer = promise.get_future();
  std::thread([promise = std::move(promise), folder = m_dataDirectory,
               socket = m_socket]() mutable {
    promise.set_value(claimOn(folder, socket));
  }).detach();
  if (answer.wait_for(patienceWithDisk) != std::future_status::ready) {
    m_lateClaim = std::move(answer);
    return true;
  }
  Claim claimed = answer.get();
  m_claim = std::move(claimed.lock);
  m_socketOfOther = claimed.socketOfOther;
  return claimed.isOurs;
}

// The order to end may have come ahead of the other start, and is then to be heard first: therefore
// the queue.
void SingleInstance::listen(std::function<bool()> onOtherStart) {
  m_server = std::make_unique<QLocalServer>();
  m_server->setSocketOptions(QLocalServer::UserAccessOption);
  QObject::connect(
      m_server.get(), &QLocalServer::newConnection, m_server.get(),
      [server = m_server.get(), onOtherStart = std::move(onOtherStart)] {
        while (QLocalSocket* const other = server->nextPendingConnection()) {
          other->deleteLater();
          // Beside the documents it depends on their folder who can make one.
          if (!isOfThisUser(static_cast<int>(other->socketDescriptor()))) continue;
          if (onOtherStart()) answer(*other);
        }
      },
      Qt::QueuedConnection);
  QLocalServer::removeServer(m_socket);  // of one that was killed: the claim is this one's
  if (m_server->listen(m_socket)) setContent(m_claim.get(), thisHost() + u'\n' + m_socket);
}

void SingleInstance::stopListening() {
  setContent(m_claim.get(), thisHost() + u'\n');
  m_server.reset();
}

SingleInstance::Answer SingleInstance::tellOnlyOne() const {
  const QDeadlineTimer limit(patienceWithAnswer);
  QLocalSocket socket;
  if (m_socketOfOther.isEmpty()) return Answer::none;
  socket.connectToServer(m_socketOfOther, QIODevice::ReadOnly);
  if (!socket.waitForConnected(static_cast<int>(limit.remainingTime()))) return Answer::none;
  if (socket.waitForReadyRead(static_cast<int>(limit.remainingTime()))) return Answer::given;
  return limit.hasExpired() ? Answer::silence : Answer::none;
}

}  // namespace zarvy
