#include "core/evaluation/ShellEvaluator.h"

#include <cerrno>
#include <csignal>
#include <system_error>
#include <utility>

#include <QStringDecoder>

#include "base/posix/FileDescriptor.h"
#include "base/posix/TimedTransfers.h"

namespace zarvy {
namespace {

using namespace Qt::Literals::StringLiterals;

const auto shellTimeout = u"[Shell Timeout]"_s;

// What a command leaves running may go on writing; beyond this it counts as one that never ends.
constexpr qsizetype mostOutput = 64'000'000;  // bytes

[[noreturn]] void fail(int error) {
  throw std::system_error(error, std::generic_category());
}

Pipe newPipe() {
  auto pipe = makePipe();
  if (!pipe) fail(errno);
  return std::move(*pipe);
}

QString shellError(const QString& reason) {
  return reason.isEmpty() ? u"[Shell Error]"_s : u"[Shell Error: "_s + reason + u']';
}

// A command goes to the shell as it stands or not at all: half a command may do anything.
QByteArray argumentFor(const QString& command) {
  if (command.contains(QChar(u'\0'))) fail(EINVAL);
  if (!command.isValidUtf16()) fail(EILSEQ);
  return command.toUtf8();
}

// Empty where the bytes are not valid UTF-8 from the first to the last.
QString decoded(const QByteArray& bytes) {
  QStringDecoder decoder(QStringDecoder::Utf8,
                         QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
  const QString text = decoder(bytes);
  return decoder.hasError() ? QString() : text;
}

QString textOfOutput(const QByteArray& bytes) {
  QString text = decoded(bytes);
  if (text.endsWith(u'\n')) text.chop(1);
  return text;
}

}  // namespace

ShellEvaluator::ShellEvaluator(ChildReaper& reaper, QByteArrayList shells,
                               std::chrono::milliseconds limit)
    : m_reaper(reaper), m_shells(std::move(shells)), m_limit(limit) {}

QString ShellEvaluator::evaluate(const QString& command) {
  try {
    return run(argumentFor(command));
  } catch (const std::system_error& error) {
    return shellError(QString::fromLocal8Bit(error.code().message().c_str()));
  }
}

QString ShellEvaluator::run(const QByteArray& command) {
  const QDeadlineTimer deadline(m_limit);
  Pipe output = newPipe();
  Pipe error = newPipe();
  ChildProcess shell = startShell(command, output.writing.get(), error.writing.get());
  output.writing.reset();
  error.writing.reset();
  if (!shell.waitForEnd(deadline)) {
    shell.signalGroup(SIGTERM);
    shell.signalGroup(SIGCONT);  // a stopped process does not hear of the other signal
    m_reaper.adopt(std::move(shell));
    return shellTimeout;
  }
  const bool succeeded = shell.reap() == 0;
  const auto bytes = readToEnd((succeeded ? output : error).reading.get(), mostOutput, deadline);
  if (!bytes) return shellTimeout;
  return succeeded ? textOfOutput(*bytes) : shellError(decoded(*bytes).trimmed());
}

ChildProcess ShellEvaluator::startShell(const QByteArray& command, int output, int error) const {
  for (const QByteArray& shell : m_shells) {
    try {
      return ChildProcess({shell, "-c", command}, {ChildProcess::inherited, output, error});
    } catch (const std::system_error& failure) {
      if (failure.code() != std::errc::no_such_file_or_directory) throw;
    }
  }
  fail(ENOENT);
}

}  // namespace zarvy
