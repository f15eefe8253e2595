#pragma once

#include <string>

#include <QString>

namespace zarvy::e2e {

// How many characters have to be put in, taken out or exchanged to make `actual` an interleaving of
// `one` and `other`: all characters of both, those of each in their own order. Characters are code
// points. 0 only where it is one.
[[nodiscard]] qsizetype interleavingDistance(const QString& one, const QString& other,
                                             const QString& actual);

[[nodiscard]] bool isInterleaving(const QString& one, const QString& other, const QString& actual);

// One line that shows how far `actual` can be read as an interleaving of `injected` and `typed`,
// and what comes there instead; empty where it is one.
[[nodiscard]] std::string firstBreach(const QString& injected, const QString& typed,
                                      const QString& actual);

}  // namespace zarvy::e2e
