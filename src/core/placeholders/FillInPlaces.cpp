#include "core/placeholders/FillInPlaces.h"

#include <array>
#include <utility>

#include <QSet>

#include "base/text/Regex.h"
#include "core/placeholders/ExpansionLimit.h"
#include "core/placeholders/Openers.h"
#include "core/placeholders/PlaceholderScan.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

// The places of `opener`, and where what begins there ends: -1 where it is no fill-in.
template <typename EndBehind>
FillIns findFillIns(QStringView text, const QString& opener, EndBehind endBehind) {
  FillIns found;
  for (qsizetype start = text.indexOf(opener); start >= 0;) {
    const qsizetype end = endBehind(start + opener.size());
    if (end > start) found.push_back(text.sliced(start, end - start));
    start = text.indexOf(opener, end > start ? end : start + 1);
  }
  return found;
}

// Where the "}}" ends that must be the first closing brace at or after `position`; -1 if it is not.
class ClosingBraces {
 public:
  explicit ClosingBraces(QStringView text) : m_text(text), m_brace(text, u"}") {}

  [[nodiscard]] qsizetype endBehind(qsizetype position) {
    const qsizetype brace = m_brace.from(position);
    return m_text.sliced(brace).startsWith(u"}}") ? brace + 2 : -1;
  }

  [[nodiscard]] bool isAt(qsizetype position) const {
    return m_text.sliced(position).startsWith(u'}');
  }

 private:
  QStringView m_text;
  NextOccurrence m_brace;
};

FillIns findTextInputs(QStringView text, const QString& opener) {
  ClosingBraces braces(text);
  return findFillIns(text, opener, [&](qsizetype position) -> qsizetype {
    const bool isRight = braces.isAt(position) || text.sliced(position).startsWith(u':');
    return isRight ? braces.endBehind(position) : -1;
  });
}

// The text with each of its `fillIns` replaced by what `answerTo` gives for it.
template <typename Answer>
QString withEach(const QString& text, const FillIns& fillIns, Answer answerTo) {
  const QStringView source = text;
  QString result;
  qsizetype end = 0;
  for (const QStringView fillIn : fillIns) {
    const qsizetype start = fillIn.utf16() - source.utf16();
    result += source.sliced(end, start - end);
    result += answerTo(fillIn);
    end = start + fillIn.size();
    if (result.size() > ExpansionLimit::longestText) return text;
  }
  return result += source.sliced(end);
}

QString withAnswerEverywhere(QString text, const QString& name, const QString& answer) {
  constexpr std::array kinds{findTextFieldsOf, findTextAreasOf, findDropdownsOf, findSectionsOf};
  for (const auto find : kinds) {
    const FillIns fillIns = find(text, name);
    if (!fillIns.empty()) text = withAnswer(text, fillIns, answer);
  }
  return text;
}

}  // namespace

FillIns findTextFieldsOf(QStringView text, const QString& name) {
  return findTextInputs(text, opener::textField.toString() + name);
}

FillIns findTextAreasOf(QStringView text, const QString& name) {
  return findTextInputs(text, opener::textArea.toString() + name);
}

FillIns findDropdownsOf(QStringView text, const QString& name) {
  ClosingBraces braces(text);
  return findFillIns(text, opener::dropdown.toString() + name + u':',
                     [&](qsizetype position) -> qsizetype {
                       return braces.isAt(position) ? -1 : braces.endBehind(position);
                     });
}

FillIns findSectionsOf(QStringView text, const QString& name) {
  NextOccurrence closing(text, literal::sectionEnd);
  return findFillIns(text, opener::section.toString() + name + u"}}"_s,
                     [&](qsizetype position) -> qsizetype {
                       const qsizetype end = closing.from(position);
                       return end == text.size() ? -1 : end + literal::sectionEnd.size();
                     });
}

QString withAnswer(const QString& text, const FillIns& fillIns, const QString& answer) {
  return withEach(text, fillIns, [&answer](QStringView fillIn) {
    return expandTemplate(answer, fillIn).value_or(answer);
  });
}

// The content of each is what a template calls its first group.
QString withSectionContent(const QString& text, const FillIns& sections, const QString& content) {
  return withEach(text, sections, [&content](QStringView section) {
    constexpr const char* whole = R"(\A\{\{\?:[^}]*\}\}([\s\S]*)\{\{/\?\}\}\z)";
    return expandTemplate(content, section, whole).value_or(content);
  });
}

QString substituteFillInValues(const QString& text, const QList<FillInField>& fields,
                               const QMap<QString, QString>& values) {
  QString result = text;
  ExpansionLimit limit;
  QSet<QString> done;
  const auto apply = [&](const QString& name, const QString& answer) {
    if (done.contains(name) || !limit.spend(result.size())) return;
    done.insert(name);
    result = withAnswerEverywhere(std::move(result), name, answer);
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
