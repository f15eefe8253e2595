#pragma once

#include <optional>

#include <QList>
#include <QString>
#include <QUuid>

#include "core/model/Snippet.h"

namespace zarvy {

// Those of `snippets`, in their order, that lie in the folder of that id, unless it is absent, and
// in whose title, trigger or replacement `searchText` occurs, without regard to case as the
// language `locale` sees it ("tr_TR"). An empty `searchText` narrows nothing down. Pure.
[[nodiscard]] QList<Snippet> filteredSnippets(const QList<Snippet>& snippets,
                                              const std::optional<QUuid>& folderID,
                                              const QString& searchText, const QByteArray& locale);

}  // namespace zarvy
