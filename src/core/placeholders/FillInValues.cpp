#include "core/placeholders/FillInValues.h"

#include <array>

#include <QSet>

#include "core/placeholders/ExpansionLimit.h"
#include "core/placeholders/FillInPlaces.h"

namespace zarvy {
namespace {

QString substitute(QString text, const QString& name, const QString& answer) {
  constexpr std::array kinds{findTextFieldsOf, findTextAreasOf, findDropdownsOf, findSectionsOf};
  for (const auto find : kinds) {
    const FillIns fillIns = find(text, name);
    if (!fillIns.empty()) text = withAnswer(text, fillIns, answer);
  }
  return text;
}

}  // namespace

QString substituteFillInValues(const QString& text, const QList<FillInField>& fields,
                               const QMap<QString, QString>& values) {
  QString result = text;
  ExpansionLimit limit;
  QSet<QString> done;
  const auto apply = [&](const QString& name, const QString& answer) {
    if (done.contains(name) || !limit.spend(result.size())) return;
    done.insert(name);
    result = substitute(std::move(result), name, answer);
  };
  const auto applyFields = [&](bool areSections) {
    for (const FillInField& field : fields) {
      const bool isSection = field.type.kind == FillInFieldType::Kind::optional;
      const auto answer = values.constFind(field.name);
      if (isSection == areSections && answer != values.constEnd()) apply(field.name, *answer);
    }
  };
  applyFields(true);
  applyFields(false);
  for (auto value = values.cbegin(); value != values.cend(); ++value) {
    apply(value.key(), value.value());
  }
  return result;
}

}  // namespace zarvy
