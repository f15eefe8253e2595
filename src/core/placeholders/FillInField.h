#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QUuid>

namespace zarvy {

class FieldDefaults;

// What kind of input a form offers for a field.
struct FillInFieldType {
  enum class Kind {
    text,      // one line
    textarea,  // several lines
    dropdown,  // a choice among `options`
    optional,  // whether the section `content` is included
  };

  Kind kind = Kind::text;
  QStringList options;
  QString content;

  bool operator==(const FillInFieldType&) const = default;
};

// One input of the form that a snippet asks for.
struct FillInField {
  QUuid id;      // fresh in every parse
  QString name;  // what the user's answer is kept under
  FillInFieldType type;
  QString defaultValue;
  bool isRequired = false;

  // The form's own, which the user changes.
  QString value;                // the remembered text, else the default value
  bool isChecked = true;        // of an optional section
  bool shouldRemember = false;  // a text was remembered under the name

  bool operator==(const FillInField&) const = default;
};

// The inputs that a text asks for, grouped by kind and in the text's order within a kind: text
// fields, text areas, dropdowns, optional sections. The first placeholder of a name settles the
// field; only a text field and a text area can share one. Empty where the text asks for none.
[[nodiscard]] QList<FillInField> parseFillInFields(const QString& text,
                                                   const FieldDefaults& defaults);

}  // namespace zarvy
