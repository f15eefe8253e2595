#pragma once

#include <memory>
#include <optional>

#include <QList>

#include "core/injection/TypedSince.h"
#include "core/model/Snippet.h"
#include "core/placeholders/FillInField.h"
#include "platform/RunningApplication.h"

namespace zarvy {

// An expansion that waits for its form.
struct PendingExpansion {
  Snippet snippet;
  QList<FillInField> fields;
  std::optional<RunningApplication> targetApp;  // in front when the form was asked for
  qsizetype matchLength = 0;  // user-perceived characters to delete in front of the caret
  std::shared_ptr<TypedSince> typedSince;  // the trigger; none where nothing was typed

  bool operator==(const PendingExpansion&) const = default;
};

}  // namespace zarvy
