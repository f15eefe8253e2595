#include "core/placeholders/Passes.h"

#include "core/placeholders/PlaceholderScan.h"

namespace zarvy {

QString processPlaceholders(const QString& text, const QList<GlobalVariable>& globalVariables,
                            const PlaceholderServices& services) {
  if (!mayHoldPlaceholders(text)) return text;
  PassContext context{services, globalVariables, ExpansionLimit(), {}};
  QString result = text;
  for (const Pass& pass : placeholderPasses) result = pass.apply(result, context);
  return result;
}

}  // namespace zarvy
