#pragma once

#include <array>

#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringView>

#include "core/model/GlobalVariable.h"
#include "core/placeholders/ExpansionLimit.h"
#include "core/placeholders/PlaceholderServices.h"

namespace zarvy {

// What the passes over one text share.
struct PassContext {
  const PlaceholderServices& services;
  const QList<GlobalVariable>& globalVariables;
  ExpansionLimit limit;
  QDateTime now;  // the reading of the clock by fixedDatesPass(), of use to customDatesPass() too
};

// The passes. Each takes the whole text and gives it back with its own kind of placeholder
// replaced; none fails. What goes wrong is a mark in the text, for the user to see.
[[nodiscard]] QString globalVariablesPass(const QString& text, PassContext& context);
[[nodiscard]] QString relativeDatesPass(const QString& text, PassContext& context);
[[nodiscard]] QString relativeTimesPass(const QString& text, PassContext& context);
[[nodiscard]] QString fixedDatesPass(const QString& text, PassContext& context);
[[nodiscard]] QString clipboardPass(const QString& text, PassContext& context);
[[nodiscard]] QString letterCasePass(const QString& text, PassContext& context);
[[nodiscard]] QString countersPass(const QString& text, PassContext& context);
[[nodiscard]] QString startedCountersPass(const QString& text, PassContext& context);
[[nodiscard]] QString resetCountersPass(const QString& text, PassContext& context);
[[nodiscard]] QString customDatesPass(const QString& text, PassContext& context);
[[nodiscard]] QString shellPass(const QString& text, PassContext& context);
[[nodiscard]] QString javaScriptPass(const QString& text, PassContext& context);

struct Pass {
  QStringView placeholders;  // as a user writes them
  QString (*apply)(const QString& text, PassContext& context) = nullptr;
};

// The language, in the order that gives it its meaning: what a pass puts into the text is read by
// the passes behind it. So a variable may hold a date, {{uppercase:{{clipboard}}}} works, and the
// text of the clipboard may hold a script.
inline constexpr std::array<Pass, 12> placeholderPasses{{
    {u"{{#Name}}", globalVariablesPass},
    {u"{{date:+1d}} {{date:-2w:short}}", relativeDatesPass},
    {u"{{time:+2h}} {{time:-30M}}", relativeTimesPass},
    {u"{{date:short}} {{date:long}} {{date:medium}} {{time}}", fixedDatesPass},
    {u"{{clipboard}}", clipboardPass},
    {u"{{uppercase:text}} {{lowercase:text}} {{titlecase:text}}", letterCasePass},
    {u"{{counter:name}}", countersPass},
    {u"{{counter:name:100}}", startedCountersPass},
    {u"{{counter:name:reset}}", resetCountersPass},
    {u"{{date:yyyy-MM-dd}}", customDatesPass},
    {u"{{shell:command}}", shellPass},
    {u"{{js:expression}}", javaScriptPass},
}};

// Runs all passes over `text`. Waits for the evaluators. Any thread; in practice the main one.
[[nodiscard]] QString processPlaceholders(const QString& text,
                                          const QList<GlobalVariable>& globalVariables,
                                          const PlaceholderServices& services);

}  // namespace zarvy
