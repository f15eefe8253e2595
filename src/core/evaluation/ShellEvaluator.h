#pragma once

#include <chrono>

#include <QByteArrayList>

#include "base/posix/ChildReaper.h"
#include "core/evaluation/Evaluator.h"

namespace zarvy {

// Runs a command in a shell and gives back what it printed. A command that takes too long is asked
// to end and left behind. Any thread; calls do not wait for each other.
class ShellEvaluator final : public Evaluator {
 public:
  // The first of `shells`, paths all, that is there is taken. `reaper` must outlive this object.
  explicit ShellEvaluator(ChildReaper& reaper,
                          QByteArrayList shells = {"/bin/zsh", "/bin/bash", "/bin/sh"},
                          std::chrono::milliseconds limit = std::chrono::seconds(5));

  // What the command wrote to its standard output, without one line feed at the end; or one of the
  // marks "[Shell Timeout]", "[Shell Error]", "[Shell Error: " and the reason, and "]". Blocks for
  // at most the limit. What the command prints is read when it has ended, so that one which prints
  // more than a pipe holds never does. What it has left running in the background is waited for as
  // long as it holds that pipe, and is not asked to end.
  [[nodiscard]] QString evaluate(const QString& command) override;

 private:
  [[nodiscard]] QString run(const QByteArray& command);
  [[nodiscard]] ChildProcess startShell(const QByteArray& command, int output, int error) const;

  ChildReaper& m_reaper;
  const QByteArrayList m_shells;
  const std::chrono::milliseconds m_limit;
};

}  // namespace zarvy
