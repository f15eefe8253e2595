#pragma once

#include <chrono>
#include <memory>
#include <mutex>

#include <QByteArray>
#include <QString>

#include "base/LineOutput.h"
#include "base/posix/ChildReaper.h"
#include "core/evaluation/Evaluator.h"
#include "core/evaluation/ScriptWorker.h"

namespace zarvy {

// How the process that runs scripts is started.
struct ScriptWorkerCommand {
  QString program;    // its path
  QByteArray locale;  // of the dates that it writes, as ICU names it; empty: the environment's

  // The worker that was installed beside this program.
  [[nodiscard]] static ScriptWorkerCommand besideThisProgram();
};

struct ScriptLimits {
  // By the clock. The engine's own limit counts processor time, and a loop of promises escapes it.
  std::chrono::milliseconds evaluation = std::chrono::seconds(1);
  // For the worker to come up. Some 30 ms in practice.
  std::chrono::milliseconds start = std::chrono::seconds(5);
};

// Evaluates JavaScript in a process of its own, which is started at the first use. A script that
// takes too long, or takes the process with it, costs its own result and the globals that scripts
// before it have left behind, nothing else. The process ends too, and the globals with it, where
// scripts have left more than 128 MiB in use; the next script notices. Any thread; calls wait for
// each other.
class JSEvaluator final : public Evaluator {
 public:
  // `output` and `reaper` must outlive this object.
  JSEvaluator(LineOutput& output, ChildReaper& reaper,
              ScriptWorkerCommand command = ScriptWorkerCommand::besideThisProgram(),
              ScriptLimits limits = {});

  // The value as text, empty for undefined and null and for a script that throws, after the line
  // "JS Exception: " and the description; or one of the marks "[JS Error]", "[JS Timeout]",
  // "[JS Error: Infinite loop detected]", "[JS Error: Invalid result]". Blocks for at most the
  // limit, and until the worker has come up where it has to be started.
  [[nodiscard]] QString evaluate(const QString& expression) override;

 private:
  [[nodiscard]] bool haveWorker();
  [[nodiscard]] QString textOf(const ScriptReply& reply);

  LineOutput& m_output;
  ChildReaper& m_reaper;
  const ScriptWorkerCommand m_command;
  const ScriptLimits m_limits;
  std::mutex m_mutex;  // held while a script runs
  std::unique_ptr<ScriptWorker> m_worker;
};

}  // namespace zarvy
