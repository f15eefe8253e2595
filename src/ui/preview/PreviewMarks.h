#pragma once

#include <QList>
#include <QString>

#include "ui/preview/PreviewRun.h"

namespace zarvy {

// The marks that a preview carries around what is to be highlighted, until it is split into runs.

// `text` between the marks of `kind`, which is not plain.
[[nodiscard]] QString marked(const QString& text, PreviewRun::Kind kind);

// Marks do not nest: what is to be marked as a whole loses those it holds.
[[nodiscard]] QString withoutMarks(QString text);

// The text between the marks as highlighted runs, the text around them as plain ones, none empty.
// What stands behind a mark that is never closed is plain. Marks themselves are never part of a
// run.
[[nodiscard]] QList<PreviewRun> splitAtMarks(const QString& text);

}  // namespace zarvy
