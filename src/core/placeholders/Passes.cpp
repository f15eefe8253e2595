#include "core/placeholders/Passes.h"

namespace zarvy {

QString processPlaceholders(const QString& text, const QList<GlobalVariable>& globalVariables,
                            const PlaceholderServices& services) {
  PassContext context{services, globalVariables, ExpansionLimit(), {}};
  QString result = text;
  for (const Pass& pass : placeholderPasses) result = pass.apply(result, context);
  return result;
}

}  // namespace zarvy
