#pragma once

#include <sys/types.h>

#include <QByteArray>
#include <QList>
#include <QString>

namespace zarvy::e2e {

// Which forms of `text`, "UTF-8" or "UTF-16", stand somewhere in the memory that the process can
// write to. The process stands still meanwhile. Throws std::runtime_error where it cannot be read.
[[nodiscard]] QList<QByteArray> formsInMemory(pid_t process, const QString& text);

}  // namespace zarvy::e2e
