#include "core/placeholders/FillInField.h"

#include <optional>
#include <utility>

#include <QSet>

#include "core/placeholders/FillInScan.h"
#include "core/placeholders/PlaceholderScan.h"
#include "core/placeholders/PlaceholderServices.h"

namespace zarvy {
namespace {

using Kind = FillInFieldType::Kind;

class FieldList {
 public:
  explicit FieldList(const FieldDefaults& defaults) : m_defaults(defaults) {}

  void add(Kind kind, const TextInput& input) {
    const QString name = input.name.toString();
    QSet<QString>& known = kind == Kind::text ? m_textFields : m_textAreas;
    if (known.contains(name)) return;
    known.insert(name);
    append({.id = QUuid::createUuid(),
            .name = name,
            .type = {.kind = kind, .options = {}, .content = {}},
            .defaultValue = input.defaultValue.toString(),
            .isRequired = input.isRequired,
            .value = {}});
  }

  void add(const Dropdown& dropdown) {
    const QString name = dropdown.name.toString();
    if (m_names.contains(name)) return;
    const QStringList options = splitOptions(dropdown.options, Qt::SkipEmptyParts);
    append({.id = QUuid::createUuid(),
            .name = name,
            .type = {.kind = Kind::dropdown, .options = options, .content = {}},
            .defaultValue = options.value(0),
            .isRequired = dropdown.isRequired,
            .value = {}});
  }

  void add(const OptionalSection& section) {
    const QString name = section.name.toString();
    if (m_names.contains(name)) return;
    append({.id = QUuid::createUuid(),
            .name = name,
            .type = {.kind = Kind::optional, .options = {}, .content = section.content.toString()},
            .defaultValue = {},
            .isRequired = false,
            .value = {}});
  }

  [[nodiscard]] QList<FillInField> take() { return std::move(m_fields); }

 private:
  void append(FillInField field) {
    const std::optional<QString> remembered = m_defaults.value(field.name);
    field.value = remembered.value_or(field.defaultValue);
    field.shouldRemember = remembered.has_value();
    m_names.insert(field.name);
    m_fields.append(std::move(field));
  }

  const FieldDefaults& m_defaults;
  QList<FillInField> m_fields;
  QSet<QString> m_names;  // of the fields so far, of whatever kind
  QSet<QString> m_textFields;
  QSet<QString> m_textAreas;
};

}  // namespace

QList<FillInField> parseFillInFields(const QString& text, const FieldDefaults& defaults) {
  if (!mayHoldPlaceholders(text)) return {};
  FieldList fields(defaults);
  for (const TextInput& input : findTextFields(text)) fields.add(Kind::text, input);
  for (const TextInput& input : findTextAreas(text)) fields.add(Kind::textarea, input);
  for (const Dropdown& dropdown : findDropdowns(text)) fields.add(dropdown);
  for (const OptionalSection& section : findOptionalSections(text)) fields.add(section);
  return fields.take();
}

}  // namespace zarvy
