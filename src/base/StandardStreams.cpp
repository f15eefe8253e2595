#include "base/StandardStreams.h"

#include <climits>
#include <fcntl.h>
#include <initializer_list>
#include <poll.h>
#include <unistd.h>

#include <QByteArray>
#include <QString>

namespace zarvy {

namespace {

// Whether PIPE_BUF bytes can be written at once.
bool hasRoom(int descriptor) {
  pollfd room{.fd = descriptor, .events = POLLOUT, .revents = 0};
  return ::poll(&room, 1, 0) == 1 && (room.revents & POLLOUT) != 0;
}

void writeMessage(QtMsgType type, const QMessageLogContext& context, const QString& message) {
  QByteArray line = qFormatLogMessage(type, context, message).toLocal8Bit().left(PIPE_BUF - 1);
  line += '\n';
  if (!hasRoom(STDERR_FILENO)) return;
  static_cast<void>(!::write(STDERR_FILENO, line.constData(), static_cast<size_t>(line.size())));
}

}  // namespace

void openMissingStandardDescriptors() {
  for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    // The system gives the lowest number that is free, which is this one.
    if (::fcntl(descriptor, F_GETFD) < 0) static_cast<void>(::open("/dev/null", O_RDWR));
  }
}

void writeToolkitMessagesWithoutWaiting() {
  qInstallMessageHandler(&writeMessage);
}

}  // namespace zarvy
