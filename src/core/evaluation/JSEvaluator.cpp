#include "core/evaluation/JSEvaluator.h"

#include <algorithm>
#include <array>
#include <system_error>
#include <utility>
#include <variant>

#include <QFile>
#include <QFileInfo>

#include "base/posix/OwnProcess.h"

namespace zarvy {
namespace {

using namespace Qt::Literals::StringLiterals;

const auto errorMark = u"[JS Error]"_s;
const auto timeoutMark = u"[JS Timeout]"_s;
const auto loopMark = u"[JS Error: Infinite loop detected]"_s;
const auto invalidMark = u"[JS Error: Invalid result]"_s;

// A first line of defence, not an analysis: a loop in any other spelling meets the time limit.
bool spellsEndlessLoop(const QString& expression) {
  constexpr std::array spellings{QStringView(u"while(true)"), QStringView(u"while (true)"),
                                 QStringView(u"for(;;)"), QStringView(u"for (;;)")};
  const QString lowered = expression.toLower();
  return std::any_of(spellings.begin(), spellings.end(),
                     [&](QStringView spelling) { return lowered.contains(spelling); });
}

}  // namespace

ScriptWorkerCommand ScriptWorkerCommand::besideThisProgram() {
  const QFileInfo program(pathOfOwnProgram());
  return {program.absolutePath() + u"/zarvy-js-worker"_s, {}};
}

JSEvaluator::JSEvaluator(LineOutput& output, ChildReaper& reaper, ScriptWorkerCommand command,
                         ScriptLimits limits)
    : m_output(output), m_reaper(reaper), m_command(std::move(command)), m_limits(limits) {}

QString JSEvaluator::evaluate(const QString& expression) {
  if (spellsEndlessLoop(expression)) return loopMark;
  if (expression.size() > static_cast<qsizetype>(scriptwire::longestText)) return errorMark;
  const std::scoped_lock guard(m_mutex);
  if (!haveWorker()) return errorMark;
  const auto result = m_worker->run(expression, QDeadlineTimer(m_limits.evaluation));
  if (const auto* reply = std::get_if<ScriptReply>(&result)) return textOf(*reply);
  m_worker.reset();
  return std::get<ScriptFailure>(result) == ScriptFailure::timedOut ? timeoutMark : errorMark;
}

bool JSEvaluator::haveWorker() {
  if (m_worker && m_worker->waitsForScripts()) return true;
  m_worker.reset();
  try {
    const QByteArrayList arguments{QFile::encodeName(m_command.program), m_command.locale};
    m_worker = std::make_unique<ScriptWorker>(arguments, m_limits.start, m_reaper);
    return true;
  } catch (const std::system_error& error) {
    const auto reason = QString::fromLocal8Bit(error.code().message().c_str());
    m_output.print(u"JSEvaluator: The script worker does not start: "_s + reason);
    return false;
  }
}

QString JSEvaluator::textOf(const ScriptReply& reply) {
  if (reply.exception) m_output.print(u"JS Exception: "_s + *reply.exception);
  switch (reply.outcome) {
    case scriptwire::Outcome::nothing:
      return {};
    case scriptwire::Outcome::text:
      return reply.text;
    case scriptwire::Outcome::noText:
      return invalidMark;
    case scriptwire::Outcome::textIsTooLong:
      break;
  }
  return errorMark;
}

}  // namespace zarvy
