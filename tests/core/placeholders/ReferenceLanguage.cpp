#include "core/placeholders/ReferenceLanguage.h"

#include <functional>
#include <map>
#include <memory>
#include <stdexcept>

#include <unicode/uregex.h>
#include <unicode/ustring.h>

#include "base/text/CalendarArithmetic.h"
#include "base/text/Graphemes.h"
#include "base/text/Regex.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

using Groups = QList<std::optional<QString>>;

std::shared_ptr<const Regex> expression(const QString& pattern) {
  static std::map<QString, std::shared_ptr<const Regex>> known;
  auto& regex = known[pattern];
  if (!regex) regex = std::get<std::shared_ptr<const Regex>>(Regex::compile(pattern));
  return regex;
}

Groups groupsOf(const RegexMatch& match, const QString& text) {
  Groups groups;
  for (const auto& group : match.groups) {
    groups.append(group ? std::optional(text.sliced(group->start, group->length)) : std::nullopt);
  }
  return groups;
}

QList<Groups> allMatches(const QString& pattern, const QString& text) {
  QList<Groups> all;
  for (const RegexMatch& match : expression(pattern)->allMatches(text)) {
    all.append(groupsOf(match, text));
  }
  return all;
}

using ValueOf = std::function<QString(const Groups&)>;

QString replaceEach(const QString& pattern, const QString& text, const ValueOf& valueOf) {
  QString result = text;
  for (const Groups& groups : allMatches(pattern, text))
    result.replace(*groups[0], valueOf(groups));
  return result;
}

// The answer as the template of every match of `pattern`; itself where ICU refuses it.
QString replaceByTemplate(const QString& pattern, const QString& text, const QString& answer) {
  UErrorCode status = U_ZERO_ERROR;
  const std::unique_ptr<URegularExpression, decltype(&uregex_close)> regex(
      uregex_open(reinterpret_cast<const char16_t*>(pattern.utf16()),
                  static_cast<int32_t>(pattern.size()), 0, nullptr, &status),
      &uregex_close);
  uregex_setText(regex.get(), reinterpret_cast<const char16_t*>(text.utf16()),
                 static_cast<int32_t>(text.size()), &status);
  if (U_FAILURE(status)) throw std::runtime_error("a pattern does not compile");
  QString result(text.size() * (answer.size() + 2) + 64, Qt::Uninitialized);
  const int32_t length = uregex_replaceAll(
      regex.get(), reinterpret_cast<const char16_t*>(answer.utf16()),
      static_cast<int32_t>(answer.size()), reinterpret_cast<char16_t*>(result.data()),
      static_cast<int32_t>(result.size()), &status);
  if (U_FAILURE(status)) {
    if (answer.contains(u"\\Q") || !answer.contains(u'$')) throw std::runtime_error("unexpected");
    QString quoted = answer;
    quoted.replace(u"\\"_s, u"\\\\"_s).replace(u"$"_s, u"\\$"_s);
    return replaceByTemplate(pattern, text, quoted);
  }
  return result.first(length);
}

QString escaped(const QString& text) {
  QString result;
  for (const QChar unit : text) {
    if (u"\\*?+[(){}^$|./"_s.contains(unit)) result += u'\\';
    result += unit;
  }
  return result;
}

QDateTime moved(CalendarUnit unit, const Groups& groups, FakePlaceholders& placeholders) {
  const QDateTime now = placeholders.clock.now();
  // Qt reads ASCII digits only; the texts of the tests hold no others.
  return dateByAdding(unit, groups[1]->toLongLong(), now, placeholders.dates.region())
      .value_or(now);
}

CalendarUnit unitOf(const QString& letter) {
  const std::map<QString, CalendarUnit> units{
      {u"d"_s, CalendarUnit::day},  {u"w"_s, CalendarUnit::week}, {u"m"_s, CalendarUnit::month},
      {u"y"_s, CalendarUnit::year}, {u"h"_s, CalendarUnit::hour}, {u"M"_s, CalendarUnit::minute}};
  return units.at(letter);
}

QString shellLoop(QString text, FakeEvaluator& shell) {
  while (true) {
    const RegexSearch search = expression(u"\\{\\{shell:([^}]+)\\}\\}"_s)->firstMatch(text);
    if (search.outcome != RegexOutcome::matched) return text;
    for (const auto& range : search.match.groups) {
      if (!isGraphemeBoundary(text, range->start) || !isGraphemeBoundary(text, range->end())) {
        return text;
      }
    }
    const QString output = shell.evaluate(*groupsOf(search.match, text)[1]);
    text.replace(search.match.range().start, search.match.range().length, output);
  }
}

}  // namespace

ReferenceLanguage::ReferenceLanguage(QList<Snippet> snippets, QList<GlobalVariable> variables,
                                     FakePlaceholders& placeholders)
    : m_snippets(std::move(snippets)),
      m_variables(std::move(variables)),
      m_placeholders(placeholders) {}

QString ReferenceLanguage::withCaptures(QString text,
                                        const QMap<QString, QString>& captures) const {
  for (auto capture = captures.cbegin(); capture != captures.cend(); ++capture) {
    text.replace(u"{{"_s + capture.key() + u"}}"_s, capture.value());
  }
  return text;
}

QString ReferenceLanguage::withNestedSnippets(const QString& text,
                                              const QStringList& visited) const {
  return replaceEach(u"\\{\\{snippet:([^}]+)\\}\\}"_s, text, [&](const Groups& groups) {
    const QString& trigger = *groups[1];
    if (visited.contains(trigger)) return u"[Circular: "_s + trigger + u"]"_s;
    if (visited.size() >= 10) return u"[Max depth exceeded]"_s;
    for (const Snippet& snippet : m_snippets) {
      if (snippet.trigger != trigger) continue;
      return withNestedSnippets(snippet.replacement, visited + QStringList{trigger});
    }
    return u"[Unknown: "_s + trigger + u"]"_s;
  });
}

QString ReferenceLanguage::processed(QString text) const {
  DateFormatters& dates = m_placeholders.dates;
  text = replaceEach(u"\\{\\{#([^}]+)\\}\\}"_s, text, [&](const Groups& groups) {
    for (const GlobalVariable& variable : m_variables) {
      if (variable.name.toLower() == groups[1]->toLower()) return variable.value;
    }
    return u"[#"_s + *groups[1] + u"?]"_s;
  });
  text = replaceEach(u"\\{\\{date:([+-]?\\d+)([dwmy])(?::([^}]+))?\\}\\}"_s, text,
                     [&](const Groups& groups) {
                       const QDateTime date = moved(unitOf(*groups[2]), groups, m_placeholders);
                       const QString format = groups[3].value_or(u"medium"_s);
                       if (format == u"short") return dates.shortDateFormatter().format(date);
                       if (format == u"medium") return dates.mediumDateFormatter().format(date);
                       if (format == u"long") return dates.longDateFormatter().format(date);
                       return dates.dateFormatter(format).format(date);
                     });
  text = replaceEach(u"\\{\\{time:([+-]?\\d+)([hM])\\}\\}"_s, text, [&](const Groups& groups) {
    return dates.timeFormatter().format(moved(unitOf(*groups[2]), groups, m_placeholders));
  });
  const QDateTime now = m_placeholders.clock.now();
  text.replace(u"{{date:short}}"_s, dates.shortDateFormatter().format(now));
  text.replace(u"{{date:long}}"_s, dates.longDateFormatter().format(now));
  text.replace(u"{{date:medium}}"_s, dates.mediumDateFormatter().format(now));
  text.replace(u"{{time}}"_s, dates.timeFormatter().format(now));
  text.replace(u"{{clipboard}}"_s, m_placeholders.pasteboard.content);
  text = replaceEach(u"\\{\\{(uppercase|lowercase|titlecase):([^}]+)\\}\\}"_s, text,
                     [&](const Groups& groups) {
                       if (*groups[1] == u"uppercase") return groups[2]->toUpper();
                       if (*groups[1] == u"lowercase") return groups[2]->toLower();
                       QString capitals = groups[2]->toLower();
                       bool isInWord = false;
                       for (QChar& unit : capitals) {
                         if (unit.isSpace()) isInWord = false;
                         if (isInWord || !unit.isLetter()) continue;
                         unit = unit.toUpper();
                         isInWord = true;
                       }
                       return capitals;
                     });
  FakeCounters& counters = m_placeholders.counters;
  text = replaceEach(u"\\{\\{counter:([^:}]+)\\}\\}"_s, text, [&](const Groups& groups) {
    return QString::number(counters.nextValue(*groups[1], 1));
  });
  text = replaceEach(u"\\{\\{counter:([^:}]+):(\\d+)\\}\\}"_s, text, [&](const Groups& groups) {
    bool fits = false;
    const qint64 start = groups[2]->toLongLong(&fits);
    return QString::number(counters.nextValue(*groups[1], fits ? start : 1));
  });
  text = replaceEach(u"\\{\\{counter:([^:}]+):reset\\}\\}"_s, text, [&](const Groups& groups) {
    counters.resetCounter(*groups[1]);
    return QString::number(counters.nextValue(*groups[1], 1));
  });
  text = replaceEach(u"\\{\\{date:([^}]+)\\}\\}"_s, text, [&](const Groups& groups) {
    return dates.dateFormatter(*groups[1]).format(now);
  });
  text = shellLoop(text, m_placeholders.shell);
  return replaceEach(u"\\{\\{js:([^}]+)\\}\\}"_s, text, [&](const Groups& groups) {
    return m_placeholders.javaScript.evaluate(*groups[1]);
  });
}

QList<FillInField> ReferenceLanguage::fields(const QString& text) const {
  using Kind = FillInFieldType::Kind;
  QList<FillInField> fields;
  const auto append = [&](FillInField field) {
    const auto remembered = m_placeholders.fieldDefaults.value(field.name);
    field.value = remembered.value_or(field.defaultValue);
    field.shouldRemember = remembered.has_value();
    fields.append(field);
  };
  const auto holds = [&](const QString& name, std::optional<Kind> kind) {
    for (const FillInField& field : fields) {
      if (field.name == name && (!kind || field.type.kind == *kind)) return true;
    }
    return false;
  };
  const auto scanTextInputs = [&](const QString& pattern, Kind kind) {
    for (const Groups& groups : allMatches(pattern, text)) {
      if (holds(*groups[1], kind)) continue;
      FillInField field;
      field.name = *groups[1];
      field.type.kind = kind;
      field.isRequired = groups[3] == u"required"_s || groups[2] == u"required"_s;
      if (groups[2] && *groups[2] != u"required") field.defaultValue = *groups[2];
      append(field);
    }
  };
  scanTextInputs(u"\\{\\{field:([^:}]+)(?::([^:}]*))?(?::(required))?\\}\\}"_s, Kind::text);
  scanTextInputs(u"\\{\\{textarea:([^:}]+)(?::([^:}]*))?(?::(required))?\\}\\}"_s, Kind::textarea);
  for (const Groups& groups : allMatches(u"\\{\\{dropdown:([^:]+):([^}]+)\\}\\}"_s, text)) {
    if (holds(*groups[1], std::nullopt)) continue;
    FillInField field;
    field.name = *groups[1];
    field.type.kind = Kind::dropdown;
    QString raw = *groups[2];
    field.isRequired = raw.endsWith(u":required");
    if (field.isRequired) raw.chop(9);
    for (const QString& piece : raw.split(u',')) {
      const RegexSearch inner =
          expression(u"\\A[ \\t]*([\\s\\S]*?)[ \\t]*\\z"_s)->firstMatch(piece);
      if (!piece.isEmpty()) field.type.options.append(*groupsOf(inner.match, piece)[1]);
    }
    field.defaultValue = field.type.options.value(0);
    append(field);
  }
  const QString section = u"\\{\\{\\?:([^}]+)\\}\\}([\\s\\S]*?)\\{\\{\\/\\?\\}\\}"_s;
  for (const Groups& groups : allMatches(section, text)) {
    if (holds(*groups[1], std::nullopt)) continue;
    FillInField field;
    field.name = *groups[1];
    field.type.kind = Kind::optional;
    field.type.content = *groups[2];
    append(field);
  }
  return fields;
}

QString ReferenceLanguage::withAnswers(QString text, const QMap<QString, QString>& answers) const {
  QStringList sections;
  QStringList others;
  for (const FillInField& field : fields(text)) {
    (field.type.kind == FillInFieldType::Kind::optional ? sections : others).append(field.name);
  }
  QStringList order = sections + others + answers.keys();
  order.removeDuplicates();
  for (const QString& name : order) {
    if (!answers.contains(name)) continue;
    const QString key = escaped(name);
    for (const QString& pattern : {u"\\{\\{field:"_s + key + u"(?::[^}]*)?\\}\\}"_s,
                                   u"\\{\\{textarea:"_s + key + u"(?::[^}]*)?\\}\\}"_s,
                                   u"\\{\\{dropdown:"_s + key + u":[^}]+\\}\\}"_s,
                                   u"\\{\\{\\?:"_s + key + u"\\}\\}[\\s\\S]*?\\{\\{/\\?\\}\\}"_s}) {
      text = replaceByTemplate(pattern, text, answers.value(name));
    }
  }
  return text;
}

}  // namespace zarvy
