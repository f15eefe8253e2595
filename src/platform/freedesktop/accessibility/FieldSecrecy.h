#pragma once

#include <atomic>
#include <functional>
#include <optional>
#include <utility>

#include <QtGlobal>

namespace zarvy {

// What is known of the field that has the keyboard: whether what is typed into it is a secret.
// Written by the one thread that follows the focus, read by any.
class FieldSecrecy {
 public:
  // Called on the writing thread each time that a field turns out to be a password field, once
  // mustNotBeHeard() says so. To be set before that thread starts.
  std::function<void()> onSecret;

  // Called on the writing thread each time that a password field has lost the keyboard, while
  // mustNotBeHeard() still says so: what was typed into it may not have been read yet. To be set
  // before that thread starts.
  std::function<void()> onSecretEnds;

  // True for a password field, and for a field of which nothing is known yet.
  [[nodiscard]] bool mustNotBeHeard() const { return m_mustNotBeHeard; }

  // True for a password field alone.
  [[nodiscard]] bool isPasswordField() const { return m_isPasswordField; }

  // The process whose field it is; absent where the bus has not told.
  [[nodiscard]] std::optional<qint32> process() const {
    const qint32 process = m_process;
    return process > 0 ? std::optional(process) : std::nullopt;
  }

  void setProcess(qint32 process) { m_process = process; }

  // A field has got the keyboard and nothing is known of it. One that was a password field a moment
  // ago counts as one until it is known better.
  void doubt() { m_mustNotBeHeard = true; }

  void setOpen() {
    if (m_isPasswordField.exchange(false) && onSecretEnds) onSecretEnds();
    m_mustNotBeHeard = false;
  }

  void setSecret() {
    m_mustNotBeHeard = true;
    if (!m_isPasswordField.exchange(true) && onSecret) onSecret();
  }

 private:
  std::atomic<bool> m_mustNotBeHeard = false;
  std::atomic<bool> m_isPasswordField = false;
  std::atomic<qint32> m_process = 0;
};

}  // namespace zarvy
