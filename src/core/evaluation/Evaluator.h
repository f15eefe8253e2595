#pragma once

#include <QString>

namespace zarvy {

// Gives the text that stands for a piece of source: the value of a script, the output of a command.
// Never fails: what goes wrong is a mark in the text.
class Evaluator {
 public:
  virtual ~Evaluator() = default;

  // Blocks its caller until the text is there, for a bounded time. Any thread but those of the
  // worker pool that it may use itself; in practice the main one.
  [[nodiscard]] virtual QString evaluate(const QString& source) = 0;
};

}  // namespace zarvy
