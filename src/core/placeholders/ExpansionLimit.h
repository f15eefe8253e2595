#pragma once

#include <QtGlobal>

namespace zarvy {

// What one expansion may cost. Placeholders can multiply themselves: a variable whose value holds
// its own placeholder twice, snippets that each include ten others, a command that prints itself.
// Without a limit that would fill the memory or never end. Past it, a placeholder stays in the text
// as it was typed; nothing else is lost. No text that a person writes comes near.
class ExpansionLimit {
 public:
  // No replacement makes a text longer than this, in UTF-16 units.
  static constexpr qsizetype longestText = qsizetype{16} * 1024 * 1024;

  // No more commands are run than these.
  static constexpr int mostCommands = 100;

  explicit ExpansionLimit(qint64 units = standard) : m_left(units) {}

  // Takes the cost of a look at `units` UTF-16 units. False once there is not enough left.
  [[nodiscard]] bool spend(qint64 units) {
    if (units > m_left) return false;
    m_left -= units;
    return true;
  }

  // Takes one command. False once there are none left.
  [[nodiscard]] bool spendCommand() { return m_commands++ < mostCommands; }

 private:
  // Some seconds of today's machines. A thousand placeholders in a text of a million units take a
  // quarter of it.
  static constexpr qint64 standard = qint64{1} << 32;

  qint64 m_left;
  int m_commands = 0;
};

}  // namespace zarvy
