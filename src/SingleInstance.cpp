#include "SingleInstance.h"

#include <cerrno>
#include <chrono>
#include <cstddef>
#include <cstring>
#include <filesystem>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <utility>

#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QFile>
#include <QLocalServer>
#include <QLocalSocket>
#include <QThread>

using namespace Qt::Literals::StringLiterals;

namespace zarvy {

namespace {

// For an instance that takes connections to answer one. It may be busy, or stopped.
constexpr std::chrono::milliseconds patienceWithAnswer{2000};

// For an instance that takes none: it is coming up, or ending, and a disk may hold it up at that.
constexpr std::chrono::seconds patienceWithEnd{15};

constexpr unsigned long millisecondsToTryAgain = 20;

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

QString nameFor(const QString& dataDirectory) {
  const QByteArray hash =
      QCryptographicHash::hash(canonicalPath(dataDirectory), QCryptographicHash::Sha256).toHex();
  return u"zarvy-%1-%2"_s.arg(::getuid()).arg(QString::fromLatin1(hash.first(16)));
}

QString socketOf(const QString& name) {
  return name + u".socket"_s;
}

// Such names begin with a zero byte, and stand in no folder.
template <typename Call>
int withAddressOf(const QString& name, Call call) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  const QByteArray text = name.toLatin1();
  std::memcpy(address.sun_path + 1, text.constData(), static_cast<std::size_t>(text.size()));
  const auto length = offsetof(sockaddr_un, sun_path) + 1 + static_cast<std::size_t>(text.size());
  return call(reinterpret_cast<const sockaddr*>(&address), static_cast<socklen_t>(length));
}

FileDescriptor makeSocket() {
  return FileDescriptor(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
}

// Who has made the other end; names are free to all users of the machine.
bool isOfThisUser(int connection) {
  ucred other{};
  socklen_t size = sizeof other;
  return ::getsockopt(connection, SOL_SOCKET, SO_PEERCRED, &other, &size) != 0 ||
         other.uid == ::getuid();
}

// False only where it is certain: a name that somebody else has taken keeps nobody from starting.
bool isClaimedByThisUser(const QString& name) {
  const FileDescriptor socket = makeSocket();
  const int result = withAddressOf(name, [&](const sockaddr* address, socklen_t length) {
    return ::connect(socket.get(), address, length);
  });
  return result != 0 || isOfThisUser(socket.get());
}

void answer(QLocalSocket& other) {
  other.write("!");
  other.flush();
  other.disconnectFromServer();
}

}  // namespace

SingleInstance::SingleInstance(const QString& dataDirectory) : m_name(nameFor(dataDirectory)) {}

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

// A queue of callers is there so that others can see whose it is.
bool SingleInstance::claim() {
  FileDescriptor socket = makeSocket();
  const int result = withAddressOf(m_name, [&](const sockaddr* address, socklen_t length) {
    return ::bind(socket.get(), address, length);
  });
  if (result != 0) return errno != EADDRINUSE || !isClaimedByThisUser(m_name);
  ::listen(socket.get(), SOMAXCONN);
  m_claim = std::move(socket);
  return true;
}

// The order to end may have come ahead of the other start, and is then to be heard first: therefore
// the queue.
void SingleInstance::listen(std::function<bool()> onOtherStart) {
  m_server = std::make_unique<QLocalServer>();
  m_server->setSocketOptions(QLocalServer::AbstractNamespaceOption);
  QObject::connect(
      m_server.get(), &QLocalServer::newConnection, m_server.get(),
      [server = m_server.get(), onOtherStart = std::move(onOtherStart)] {
        while (QLocalSocket* const other = server->nextPendingConnection()) {
          other->deleteLater();
          if (!isOfThisUser(static_cast<int>(other->socketDescriptor()))) continue;
          if (onOtherStart()) answer(*other);
        }
      },
      Qt::QueuedConnection);
  m_server->listen(socketOf(m_name));
}

void SingleInstance::stopListening() {
  m_server.reset();
}

SingleInstance::Answer SingleInstance::tellOnlyOne() const {
  const QDeadlineTimer limit(patienceWithAnswer);
  QLocalSocket socket;
  socket.setSocketOptions(QLocalSocket::AbstractNamespaceOption);
  socket.connectToServer(socketOf(m_name), QIODevice::ReadOnly);
  if (!socket.waitForConnected(static_cast<int>(limit.remainingTime()))) return Answer::none;
  if (socket.waitForReadyRead(static_cast<int>(limit.remainingTime()))) return Answer::given;
  return limit.hasExpired() ? Answer::silence : Answer::none;
}

}  // namespace zarvy
