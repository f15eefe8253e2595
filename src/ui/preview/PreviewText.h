#pragma once

#include <QList>
#include <QString>

#include "core/model/SnippetList.h"
#include "core/placeholders/FillInField.h"
#include "ui/preview/PreviewRun.h"

namespace zarvy {

// The present moment as the preview writes it.
struct PreviewDates {
  QString shortDate;
  QString mediumDate;
  QString longDate;
  QString time;
};

// The text that `replacement` is about to become, as far as the values of `fields` settle it.
// Nothing is worked out that could have an effect or take its time: counters, scripts and the like
// stand as a word in square brackets, and what the preview does not know stays as it was typed.
// `snippets` is the library, for the snippets that stand within others. A pure function; any
// thread.
[[nodiscard]] QList<PreviewRun> previewRuns(const QString& replacement,
                                            const QList<FillInField>& fields,
                                            const SnippetList& snippets, const PreviewDates& dates);

}  // namespace zarvy
