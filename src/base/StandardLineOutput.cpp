#include "base/StandardLineOutput.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
#include <unistd.h>
#include <utility>

#include <QByteArray>

#include "base/posix/OwnProcess.h"
#include "base/posix/WholeTransfers.h"

namespace zarvy {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr std::chrono::milliseconds patienceAtTheEnd{500};

void writeToStandardOutput(const QByteArray& bytes) {
  static_cast<void>(
      writeAll(STDOUT_FILENO, bytes.constData(), static_cast<std::size_t>(bytes.size())));
}

// What a page has put on the clipboard, or a command has printed, may stand in a line: it is not to
// command the terminal that shows it, nor to look like several lines.
QString plainLine(const QString& line) {
  QString plain;
  plain.reserve(line.size());
  for (const QChar character : line) {
    if (character == u'\n') {
      plain += u"\\n"_s;
    } else if (character.category() == QChar::Other_Control) {
      plain += u"\\x"_s + QString::number(character.unicode(), 16).rightJustified(2, u'0');
    } else {
      plain += character;
    }
  }
  return plain;
}

}  // namespace

class StandardLineOutput::Writer {
 public:
  explicit Writer(Limits limits) : m_limits(limits) {}

  void add(QByteArray line) {
    std::unique_lock lock(m_mutex);
    if (m_added - m_written >= m_limits.lines) return;
    m_lines.push_back(std::move(line));
    const std::size_t number = ++m_added;
    m_wake.notify_one();
    if (m_isStuck) return;
    m_isStuck = !m_progress.wait_for(lock, m_limits.patience, [&] { return m_written >= number; });
  }

  void finish() {
    std::unique_lock lock(m_mutex);
    m_progress.wait_for(lock, patienceAtTheEnd, [this] { return m_written == m_added; });
  }

  void end() {
    const std::lock_guard lock(m_mutex);
    m_isEnding = true;
    m_wake.notify_one();
  }

  void writeLines() {
    nameThisThread("zarvy-output");
    std::unique_lock lock(m_mutex);
    while (true) {
      m_wake.wait(lock, [this] { return !m_lines.empty() || m_isEnding; });
      if (m_isEnding) return;
      const QByteArray line = std::move(m_lines.front());
      m_lines.pop_front();
      lock.unlock();
      writeToStandardOutput(line);
      lock.lock();
      ++m_written;
      if (m_written == m_added) m_isStuck = false;
      m_progress.notify_all();
    }
  }

 private:
  const Limits m_limits;
  std::mutex m_mutex;  // guards all below
  std::condition_variable m_wake;
  std::condition_variable m_progress;
  std::deque<QByteArray> m_lines;
  std::size_t m_added = 0;
  std::size_t m_written = 0;
  bool m_isStuck = false;
  bool m_isEnding = false;
};

StandardLineOutput::StandardLineOutput() : StandardLineOutput(Limits{}) {}

StandardLineOutput::StandardLineOutput(Limits limits) : m_writer(std::make_shared<Writer>(limits)) {
  std::thread([writer = m_writer] { writer->writeLines(); }).detach();
}

StandardLineOutput::~StandardLineOutput() {
  finish();
  m_writer->end();
}

void StandardLineOutput::print(const QString& line) {
  m_writer->add(plainLine(line).toUtf8() + '\n');
}

void StandardLineOutput::finish() {
  m_writer->finish();
}

}  // namespace zarvy
