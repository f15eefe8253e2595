#include <algorithm>
#include <functional>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "base/text/CaseMapping.h"
#include "base/text/Graphemes.h"
#include "base/text/Regex.h"
#include "support/QtPrinters.h"
#include "ui/preview/PreviewText.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

// The preview as the regular expressions of the placeholders say it, slowly and one by one. It
// leaves the marks in the text.
class ReferencePreview {
 public:
  using Groups = std::vector<QString>;
  using ValueOf = std::function<QString(const Groups&)>;

  static QString text(const QString& replacement, const QList<FillInField>& fields,
                      const QList<Snippet>& snippets, const PreviewDates& dates) {
    QString text = nested(replacement, snippets, 0);
    for (const FillInField& field : fields) text = withField(text, field);
    text = replaceEach(text, u"\\{\\{(uppercase|lowercase|titlecase):([^}]+)\\}\\}"_s,
                       [](const Groups& groups) {
                         const QString argument = bare(groups[2]);
                         if (groups[1] == u"uppercase") return regular(upperCased(argument));
                         if (groups[1] == u"lowercase") return regular(lowerCased(argument));
                         return regular(capitalized(argument));
                       });
    text = replaceEach(text, u"\\{\\{counter:([^}]+)\\}\\}"_s, [](const Groups& groups) {
      return regular(u"[#"_s + bare(groups[1]).split(u':').front() + u']');
    });
    text = replaceEach(text, u"\\{\\{js:([^}]+)\\}\\}"_s, [](const Groups& groups) {
      const QString script = bare(groups[1]);
      const auto characters = graphemes(script);
      QString shown = characters.size() >= 16 ? u"..."_s : QString();
      for (qsizetype i = std::min<qsizetype>(15, characters.size()); i > 0; --i) {
        shown.prepend(characters[i - 1]);
      }
      return regular(u"[js:"_s + shown + u']');
    });
    const auto offset = [](const Groups& groups) { return regular(u'[' + groups[1] + u']'); };
    text = replaceEach(text, u"\\{\\{date:([+-]?\\d+[dwmy])(?::(\\w+))?\\}\\}"_s, offset);
    text = replaceEach(text, u"\\{\\{time:([+-]?\\d+[hM])\\}\\}"_s, offset);
    const std::pair<QString, QString> table[] = {
        {u"\\{\\{date:short\\}\\}"_s, dates.shortDate},
        {u"\\{\\{date:medium\\}\\}"_s, dates.mediumDate},
        {u"\\{\\{date:long\\}\\}"_s, dates.longDate},
        {u"\\{\\{time\\}\\}"_s, dates.time},
        {u"\\{\\{clipboard\\}\\}"_s, u"[clipboard]"_s},
        {u"\\{\\{cursor\\}\\}"_s, u"[cursor]"_s},
        {u"\\{\\{date:\\+1d\\}\\}"_s, u"[tomorrow]"_s},
        {u"\\{\\{date:\\-1d\\}\\}"_s, u"[yesterday]"_s},
        {u"\\{\\{time:\\+1h\\}\\}"_s, u"[+1 hour]"_s},
    };
    for (const auto& [pattern, shown] : table) {
      text = replaceEach(text, pattern,
                         [marked = regular(shown)](const Groups& /*groups*/) { return marked; });
    }
    return text;
  }

  // Where marks came to stand within each other, a run has none of the inner ones.
  static QList<PreviewRun> split(QString text) {
    QList<PreviewRun> runs;
    const auto append = [&runs](PreviewRun::Kind kind, const QString& part) {
      if (!bare(part).isEmpty()) runs.append({kind, bare(part)});
    };
    while (true) {
      const qsizetype first = text.indexOf(u"\uFEFF<<\uFEFF"_s);
      const qsizetype second = text.indexOf(u"\uFEFF[[REQ\uFEFF"_s);
      const bool isRequired = second >= 0 && (first < 0 || second < first);
      const qsizetype start = isRequired ? second : first;
      const qsizetype inside = start + (isRequired ? 7 : 4);
      const QString closing = isRequired ? u"\uFEFFREQ]]\uFEFF"_s : u"\uFEFF>>\uFEFF"_s;
      const qsizetype end = start < 0 ? -1 : text.indexOf(closing, inside);
      if (end < 0) break;
      append(PreviewRun::Kind::plain, text.first(start));
      append(isRequired ? PreviewRun::Kind::required : PreviewRun::Kind::regular,
             text.sliced(inside, end - inside));
      text = text.sliced(end + closing.size());
    }
    append(PreviewRun::Kind::plain, text);
    return runs;
  }

  static QString bare(QString text) {
    for (const QString& mark : {u"\uFEFF<<\uFEFF"_s, u"\uFEFF>>\uFEFF"_s, u"\uFEFF[[REQ\uFEFF"_s,
                                u"\uFEFFREQ]]\uFEFF"_s}) {
      text.remove(mark);
    }
    return text;
  }

 private:
  static QString regular(const QString& text) {
    return u"\uFEFF<<\uFEFF"_s + text + u"\uFEFF>>\uFEFF"_s;
  }
  static QString required(const QString& text) {
    return u"\uFEFF[[REQ\uFEFF"_s + text + u"\uFEFFREQ]]\uFEFF"_s;
  }

  static QString escaped(const QString& text) {
    QString result;
    for (const QChar unit : text) {
      if (u"\\*?+[(){}^$|./"_s.contains(unit)) result += u'\\';
      result += unit;
    }
    return result;
  }

  static QString replaceEach(const QString& text, const QString& pattern, const ValueOf& valueOf) {
    const auto regex = std::get<std::shared_ptr<const Regex>>(Regex::compile(pattern));
    QString result = text;
    const QList<RegexMatch> matches = regex->allMatches(text);
    for (auto match = matches.crbegin(); match != matches.crend(); ++match) {
      Groups groups;
      for (const auto& group : match->groups) {
        groups.push_back(group ? text.sliced(group->start, group->length) : QString());
      }
      result.replace(match->range().start, match->range().length, valueOf(groups));
    }
    return result;
  }

  static QString nested(const QString& text, const QList<Snippet>& snippets, int depth) {
    if (depth >= 5) return text;
    return replaceEach(text, u"\\{\\{snippet:([^}]+)\\}\\}"_s, [&](const Groups& groups) {
      for (const Snippet& snippet : snippets) {
        if (snippet.trigger == groups[1]) return nested(snippet.replacement, snippets, depth + 1);
      }
      return u"[snippet not found: "_s + groups[1] + u"]"_s;
    });
  }

  static QString withField(const QString& text, const FillInField& field) {
    const QString name = escaped(field.name);
    const QString value = field.value.isEmpty() ? u'[' + field.name + u']' : field.value;
    const QString shown = field.isRequired ? required(value) : regular(value);
    const ValueOf byTemplate = [&shown](const Groups& groups) {
      return expandTemplate(shown, groups[0]).value_or(shown);
    };
    switch (field.type.kind) {
      case FillInFieldType::Kind::text:
        return replaceEach(text, u"\\{\\{field:"_s + name + u"(?::[^}]*)?\\}\\}"_s, byTemplate);
      case FillInFieldType::Kind::textarea:
        return replaceEach(text, u"\\{\\{textarea:"_s + name + u"(?::[^}]*)?\\}\\}"_s, byTemplate);
      case FillInFieldType::Kind::dropdown:
        return replaceEach(text, u"\\{\\{dropdown:"_s + name + u":[^}]+\\}\\}"_s, byTemplate);
      case FillInFieldType::Kind::optional:
        break;
    }
    std::optional<QString> first;
    return replaceEachForward(text,
                              u"\\{\\{\\?:"_s + name + u"\\}\\}([\\s\\S]*?)\\{\\{/\\?\\}\\}"_s,
                              [&](const Groups& groups) {
                                if (!first) first = groups[1];
                                const QString content = field.isChecked ? *first : QString();
                                return byHand(content, groups).value_or(content);
                              });
  }

  // What a template gives, character by character: "$0" and "$1" are the groups, and a backslash
  // makes the next character literal. Absent where it is none.
  static std::optional<QString> byHand(const QString& content, const Groups& groups) {
    QString result;
    for (qsizetype position = 0; position < content.size(); ++position) {
      const QChar character = content[position];
      const bool isLast = position + 1 == content.size();
      if (character == u'\\') {
        if (!isLast) result += content[++position];
      } else if (character == u'$') {
        if (isLast) return std::nullopt;
        const QChar group = content[++position];
        if (group != u'0' && group != u'1') return std::nullopt;
        result += groups[group == u'0' ? 0 : 1];
      } else {
        result += character;
      }
    }
    return result;
  }

  static QString replaceEachForward(const QString& text, const QString& pattern,
                                    const ValueOf& valueOf) {
    const auto regex = std::get<std::shared_ptr<const Regex>>(Regex::compile(pattern));
    QString result;
    qsizetype end = 0;
    for (const RegexMatch& match : regex->allMatches(text)) {
      Groups groups;
      for (const auto& group : match.groups) {
        groups.push_back(group ? text.sliced(group->start, group->length) : QString());
      }
      result += text.sliced(end, match.range().start - end) + valueOf(groups);
      end = match.range().end();
    }
    return result + text.sliced(end);
  }
};

// Texts out of the pieces of the language, put together at random.
class RandomPreview {
 public:
  explicit RandomPreview(unsigned seed) : m_random(seed) {}

  QString text(int pieces) {
    static const QStringList all = {u"{{field:"_s,
                                    u"{{textarea:"_s,
                                    u"{{dropdown:"_s,
                                    u"{{?:"_s,
                                    u"{{/?}}"_s,
                                    u"{{snippet:"_s,
                                    u"{{js:"_s,
                                    u"{{counter:"_s,
                                    u"{{uppercase:"_s,
                                    u"{{titlecase:"_s,
                                    u"{{date:"_s,
                                    u"{{time:"_s,
                                    u"{{lowercase:"_s,
                                    u"{{time}}"_s,
                                    u"{{cursor}}"_s,
                                    u"A"_s,
                                    u"B"_s,
                                    u"C+"_s,
                                    u":"_s,
                                    u":required"_s,
                                    u"}}"_s,
                                    u"}}"_s,
                                    u"}}"_s,
                                    u"}"_s,
                                    u"{"_s,
                                    u"+1d"_s,
                                    u"-2h"_s,
                                    u"30M"_s,
                                    u"short"_s,
                                    u" x y "_s,
                                    u"\n"_s,
                                    u"$0"_s,
                                    u"\\"_s,
                                    u"$1"_s,
                                    u"\U0001F600"_s,
                                    u"1234567"_s,
                                    u"_\u00E9"_s};
    QString text;
    for (int piece = 0; piece < pieces; ++piece) text += all[below(all.size())];
    return text;
  }

  QList<FillInField> fields() {
    QList<FillInField> fields;
    for (qsizetype count = below(5); count > 0; --count) {
      FillInField field;
      field.name = QStringList{u"A"_s, u"B"_s, u"C+"_s, u"A B"_s}[below(4)];
      field.type.kind = static_cast<FillInFieldType::Kind>(below(4));
      field.isRequired = below(2) == 0;
      field.isChecked = below(2) == 0;
      field.value = text(static_cast<int>(below(3)));
      fields.append(field);
    }
    return fields;
  }

  QList<Snippet> snippets() {
    QList<Snippet> snippets;
    for (const QString& trigger : {u"A"_s, u"B"_s}) {
      Snippet snippet;
      snippet.trigger = trigger;
      snippet.replacement = text(6);
      snippets.append(snippet);
    }
    return snippets;
  }

 private:
  qsizetype below(qsizetype limit) {
    return std::uniform_int_distribution<qsizetype>(0, limit - 1)(m_random);
  }

  std::mt19937 m_random;
};

TEST(PreviewReference, AgreesWithTheRegularExpressions) {
  const PreviewDates dates{u"1/21/26"_s, u"Jan 21"_s, u"January 21"_s, u"10:30"_s};
  RandomPreview random(20'260'121);
  int highlighted = 0;
  for (int round = 0; round < 20'000; ++round) {
    const QString text = random.text(12);
    const QList<FillInField> fields = random.fields();
    const QList<Snippet> snippets = random.snippets();
    const QList<PreviewRun> runs = previewRuns(text, fields, snippets, dates);
    const QString reference = ReferencePreview::text(text, fields, snippets, dates);
    highlighted += runs.size() > 1 ? 1 : 0;
    ASSERT_EQ(runs, ReferencePreview::split(reference)) << text.toStdString();
  }
  EXPECT_GT(highlighted, 5000) << "the texts have become too dull to tell";
}

}  // namespace
}  // namespace zarvy
