#pragma once

#include <QDir>
#include <QFile>

#include "fuzz/FuzzText.h"

namespace zarvy::fuzz {

// Calls `target` with every file of a corpus. Returns how many there are. A file that is wrong ends
// the process; its name is printed before.
inline qsizetype replay(const char* corpus, void (*target)(Bytes)) {
  const QDir folder(QStringLiteral(ZARVY_FUZZ_CORPUS) + QLatin1Char('/') + QLatin1String(corpus));
  const QFileInfoList files = folder.entryInfoList(QDir::Files, QDir::Name);
  for (const QFileInfo& info : files) {
    QFile file(info.filePath());
    require(file.open(QIODevice::ReadOnly), "a file cannot be read");
    const QByteArray content = file.readAll();
    std::printf("%s\n", qUtf8Printable(info.fileName()));
    std::fflush(stdout);
    target({reinterpret_cast<const std::uint8_t*>(content.constData()),
            static_cast<std::size_t>(content.size())});
  }
  return files.size();
}

}  // namespace zarvy::fuzz
