#pragma once

#include <QByteArray>
#include <QtGlobal>

namespace zarvy {

// Gives an environment variable of this process another value, or none, for as long as it lives.
class EnvironmentVariable {
 public:
  EnvironmentVariable(const char* name, const QByteArray& value) : EnvironmentVariable(name) {
    qputenv(m_name, value);
  }

  // Without a value.
  explicit EnvironmentVariable(const char* name)
      : m_name(name), m_wasSet(qEnvironmentVariableIsSet(name)), m_before(qgetenv(name)) {
    qunsetenv(m_name);
  }

  ~EnvironmentVariable() {
    if (m_wasSet) {
      qputenv(m_name, m_before);
    } else {
      qunsetenv(m_name);
    }
  }

  EnvironmentVariable(const EnvironmentVariable&) = delete;
  EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;

 private:
  const char* m_name;
  bool m_wasSet;
  QByteArray m_before;
};

}  // namespace zarvy
