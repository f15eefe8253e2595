#include "base/MainThread.h"
#include "core/placeholders/Passes.h"
#include "core/placeholders/Replacement.h"
#include "platform/Pasteboard.h"

namespace zarvy {

QString clipboardPass(const QString& text, PassContext& context) {
  constexpr QStringView literal = u"{{clipboard}}";
  if (!text.contains(literal)) return text;
  const PlaceholderServices& services = context.services;
  const auto clipboard = services.mainThread.call([&] { return services.pasteboard.text(); });
  QString result = text;
  replaceLiteral(result, literal, clipboard.value_or(QString()), context.limit);
  return result;
}

}  // namespace zarvy
