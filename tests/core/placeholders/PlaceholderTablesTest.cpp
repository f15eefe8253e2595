#include <memory>

#include <QTimeZone>

#include <gtest/gtest.h>

#include "core/TextExpansionEngine.h"
#include "core/placeholders/FillInField.h"
#include "core/placeholders/GoldenTable.h"
#include "fakes/FakePlaceholders.h"
#include "fakes/ManualSteadyClock.h"
#include "fakes/RecordingLineOutput.h"
#include "support/QtPrinters.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

// The engine in the circumstances of a section.
class Setting {
 public:
  explicit Setting(const QList<QStringList>& givens) {
    readCustoms(givens);
    m_placeholders = std::make_unique<FakePlaceholders>(m_region, m_timeZone);
    m_placeholders->clock.setNow(QDateTime(m_day, m_time, QTimeZone("Europe/Berlin")).toUTC());
    for (const QStringList& given : givens) apply(given.at(0), given.sliced(1));
    m_engine =
        std::make_unique<TextExpansionEngine>(m_output, m_steadyClock, m_placeholders->services());
    m_engine->setSnippets(m_snippets);
    m_engine->setGlobalVariables(m_variables);
    m_engine->onNeedsFillIn = [this](const Snippet&, const QList<FillInField>& asked) {
      fields = asked;
    };
  }

  [[nodiscard]] std::optional<ExpandedText> expand(const QString& replacement) {
    return m_engine->processSnippet(snippet({}, replacement), m_captures);
  }

  [[nodiscard]] QString answer(const QString& replacement, const QMap<QString, QString>& answers) {
    return m_engine->applyFillInValues(snippet({}, replacement), answers);
  }

  [[nodiscard]] QString counters() const {
    QStringList texts;
    const QMap<QString, qint64>& values = m_placeholders->counters.values;
    for (auto counter = values.cbegin(); counter != values.cend(); ++counter) {
      texts.append(counter.key() + u'=' + QString::number(counter.value()));
    }
    return texts.join(u", "_s);
  }

  [[nodiscard]] QString ran() const {
    return (m_placeholders->shell.asked + m_placeholders->javaScript.asked).join(u", "_s);
  }

  QList<FillInField> fields;

 private:
  static Snippet snippet(const QString& trigger, const QString& replacement) {
    Snippet result;
    result.id = QUuid::createUuid();
    result.trigger = trigger;
    result.replacement = replacement;
    return result;
  }

  void readCustoms(const QList<QStringList>& givens) {
    for (const QStringList& given : givens) {
      if (given.at(0) == u"the language") m_region.locale = given.at(1).toLatin1();
      if (given.at(0) == u"the time zone") m_timeZone = given.at(1).toLatin1();
      if (given.at(0) != u"the time") continue;
      const QDateTime time = QDateTime::fromString(given.at(1), u"yyyy-MM-dd HH:mm"_s);
      m_day = time.date();
      m_time = time.time();
    }
  }

  void apply(const QString& words, const QStringList& values) {
    if (words == u"the variable with") {
      m_variables.append({QUuid::createUuid(), values.at(0), values.at(1), {}, {}});
    } else if (words == u"the snippet with" || words == u"the expression snippet with") {
      m_snippets.append(snippet(values.at(0), values.at(1)));
      m_snippets.back().isRegexTrigger = words.contains(u"expression");
    } else if (words == u"the group with") {
      m_captures.insert(values.at(0), values.at(1));
    } else if (words == u"the clipboard") {
      m_placeholders->pasteboard.content = values.at(0);
    } else if (words == u"the counter at") {
      m_placeholders->counters.values.insert(values.at(0), values.at(1).toLongLong());
    } else if (words == u"the command that gives") {
      m_placeholders->shell.addAnswer(values.at(0), values.at(1));
    } else if (words == u"the script that gives") {
      m_placeholders->javaScript.addAnswer(values.at(0), values.at(1));
    } else if (words == u"the remembered field with") {
      m_placeholders->fieldDefaults.values.insert(values.at(0), values.at(1));
    } else {
      const bool isCustom =
          words == u"the language" || words == u"the time zone" || words == u"the time";
      EXPECT_TRUE(isCustom) << "unknown: Given " << words.toStdString();
    }
  }

  RegionalSettings m_region{"en_US"};
  QByteArray m_timeZone = "Europe/Berlin";
  QDate m_day{2026, 1, 21};
  QTime m_time{15, 4};
  QList<GlobalVariable> m_variables;
  QList<Snippet> m_snippets;
  QMap<QString, QString> m_captures;
  RecordingLineOutput m_output;
  ManualSteadyClock m_steadyClock;
  std::unique_ptr<FakePlaceholders> m_placeholders;
  std::unique_ptr<TextExpansionEngine> m_engine;
};

QString describe(const FillInField& field) {
  constexpr const char* kinds[] = {"text", "textarea", "dropdown", "optional"};
  QString text = QString::fromLatin1(kinds[static_cast<int>(field.type.kind)]);
  text += u' ' + field.name;
  if (!field.defaultValue.isEmpty()) text += u" ="_s + field.defaultValue;
  if (!field.type.options.isEmpty()) text += u" ["_s + field.type.options.join(u"]["_s) + u']';
  if (field.type.kind == FillInFieldType::Kind::optional)
    text += u" <"_s + field.type.content + u'>';
  if (field.isRequired) text += u" required";
  if (field.shouldRemember) text += u" remembered "_s + field.value;
  // What the table does not show, because it follows from what it shows.
  EXPECT_TRUE(field.isChecked);
  EXPECT_FALSE(field.id.isNull());
  EXPECT_TRUE(field.shouldRemember || field.value == field.defaultValue);
  return text;
}

QMap<QString, QString> readAnswers(const QString& cell) {
  QMap<QString, QString> answers;
  for (const QString& answer : cell.split(u"; "_s)) {
    const qsizetype equals = answer.indexOf(u'=');
    answers.insert(answer.first(equals), answer.sliced(equals + 1));
  }
  return answers;
}

void checkExpansion(const GoldenRow& row, Setting& setting) {
  const std::optional<ExpandedText> expanded = setting.expand(row.cell(u"snippet"_s));
  ASSERT_TRUE(expanded);
  EXPECT_EQ(expanded->text, row.cell(u"becomes"_s));
  const QString caret =
      expanded->cursorOffset ? QString::number(*expanded->cursorOffset) : QString();
  EXPECT_EQ(caret, row.cell(u"caret"_s));
  if (row.cells.contains(u"counters"_s)) {
    EXPECT_EQ(setting.counters(), row.cell(u"counters"_s));
  }
  if (row.cells.contains(u"ran"_s)) {
    EXPECT_EQ(setting.ran(), row.cell(u"ran"_s));
  }
}

void checkFields(const GoldenRow& row, Setting& setting) {
  const std::optional<ExpandedText> expanded = setting.expand(row.cell(u"snippet"_s));
  QStringList descriptions;
  for (const FillInField& field : setting.fields) descriptions.append(describe(field));
  EXPECT_EQ(descriptions.join(u" // "_s), row.cell(u"fields"_s));
  EXPECT_EQ(expanded.has_value(), setting.fields.isEmpty()) << "a form exactly where fields are";
}

void checkRow(const GoldenRow& row, Setting& setting) {
  if (row.cells.contains(u"fields"_s)) {
    checkFields(row, setting);
  } else if (row.cells.contains(u"answers"_s)) {
    EXPECT_EQ(setting.answer(row.cell(u"snippet"_s), readAnswers(row.cell(u"answers"_s))),
              row.cell(u"becomes"_s));
  } else {
    checkExpansion(row, setting);
  }
}

class PlaceholderTables : public testing::TestWithParam<const char*> {};

TEST_P(PlaceholderTables, HoldRowForRow) {
  std::size_t count = 0;
  for (const GoldenSection& section :
       readGoldenTables(QStringLiteral(ZARVY_GOLDEN_TABLES) + u'/' + QLatin1String(GetParam()))) {
    for (const GoldenRow& row : section.rows) {
      SCOPED_TRACE(row.place + ' ' + section.title.toStdString());
      Setting setting(section.givens);
      checkRow(row, setting);
      ++count;
    }
  }
  EXPECT_GE(count, 50U) << "most rows were not found";
}

INSTANTIATE_TEST_SUITE_P(Documents, PlaceholderTables,
                         testing::Values("placeholders.md", "fill-ins.md"));

}  // namespace
}  // namespace zarvy
