#include "base/text/Regex.h"

#include <string_view>
#include <utility>

#include <unicode/uregex.h>

#include "base/text/IcuText.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

// ICU asks once in so many steps of backtracking.
constexpr qint64 stepsBetweenQuestions = 10'000;

// A step keeps a copy of where each group stands. So many of them cost as much as the step itself.
constexpr qint64 groupsInAStep = 8;

QString describe(UErrorCode status, const UParseError& place) {
  QString text = QString::fromLatin1(u_errorName(status));
  if (place.offset >= 0) text += u" at character "_s + QString::number(place.offset);
  return text;
}

bool setText(URegularExpression* expression, QStringView text) {
  UErrorCode status = U_ZERO_ERROR;
  uregex_setText(expression, text.isEmpty() ? u"" : text.utf16(), static_cast<int32_t>(text.size()),
                 &status);
  return U_SUCCESS(status);
}

RegexMatch currentMatch(URegularExpression* expression) {
  UErrorCode status = U_ZERO_ERROR;
  const int32_t count = uregex_groupCount(expression, &status);
  RegexMatch match;
  match.groups.reserve(static_cast<std::size_t>(count) + 1);
  for (int32_t group = 0; group <= count; ++group) {
    const int32_t start = uregex_start(expression, group, &status);
    const int32_t end = uregex_end(expression, group, &status);
    if (U_SUCCESS(status) && start >= 0) {
      match.groups.emplace_back(TextRange{start, end - start});
    } else {
      match.groups.emplace_back(std::nullopt);
    }
  }
  return match;
}

// In UTF-16 units: a template of many "$0" multiplies what it matched.
constexpr qsizetype longestResult = qsizetype{16} * 1024 * 1024;

}  // namespace

// What ICU's question needs of the search that is under way.
struct Regex::Watch {
  static UBool U_CALLCONV ask(const void* context, int32_t /*questions*/) {
    const auto* const watch = static_cast<const Watch*>(context);
    watch->steps += watch->stepsOfAQuestion;
    return !watch->mayGoOn || !*watch->mayGoOn || (*watch->mayGoOn)(watch->steps) ? 1 : 0;
  }

  const MayGoOn* mayGoOn = nullptr;
  mutable qint64 steps = 0;  // ICU hands the context on as const
  qint64 stepsOfAQuestion = stepsBetweenQuestions;
};

void Regex::Close::operator()(URegularExpression* expression) const {
  uregex_close(expression);
}

Regex::Compilation Regex::compile(const QString& pattern) {
  UErrorCode status = U_ZERO_ERROR;
  UParseError place{};
  place.offset = -1;
  const QStringView view(pattern);
  Handle handle(uregex_open(view.isEmpty() ? u"" : view.utf16(), static_cast<int32_t>(view.size()),
                            0, &place, &status));
  auto watch = std::make_unique<Watch>();
  if (U_SUCCESS(status)) {
    watch->stepsOfAQuestion += stepsBetweenQuestions / groupsInAStep *
                               static_cast<qint64>(uregex_groupCount(handle.get(), &status));
    uregex_setMatchCallback(handle.get(), &Watch::ask, watch.get(), &status);
  }
  if (U_FAILURE(status)) return describe(status, place);
  return std::shared_ptr<const Regex>(new Regex(pattern, std::move(handle), std::move(watch)));
}

Regex::Regex(QString pattern, Handle handle, std::unique_ptr<Watch> watch)
    : m_pattern(std::move(pattern)),
      m_required(m_pattern),
      m_watch(std::move(watch)),
      m_handle(std::move(handle)) {}

Regex::~Regex() = default;

RegexSearch Regex::firstMatch(QStringView text, const MayGoOn& mayGoOn) const {
  const std::scoped_lock guard(m_lock);
  if (!setText(m_handle.get(), text)) return {};
  m_watch->mayGoOn = &mayGoOn;
  m_watch->steps = 0;
  RegexSearch result = search(true);
  m_watch->mayGoOn = nullptr;
  setText(m_handle.get(), {});  // the caller's text does not outlive the call
  return result;
}

QList<RegexMatch> Regex::allMatches(QStringView text) const {
  const std::scoped_lock guard(m_lock);
  QList<RegexMatch> matches;
  if (!setText(m_handle.get(), text)) return matches;
  RegexSearch found = search(true);
  while (found.outcome == RegexOutcome::matched) {
    matches.append(std::move(found.match));
    found = search(false);
  }
  setText(m_handle.get(), {});
  return matches;
}

std::optional<std::size_t> Regex::groupNumber(const QString& name) const {
  const std::scoped_lock guard(m_lock);
  UErrorCode status = U_ZERO_ERROR;
  const int32_t number = uregex_groupNumberFromName(m_handle.get(), QStringView(name).utf16(),
                                                    static_cast<int32_t>(name.size()), &status);
  if (U_FAILURE(status) || number < 1) return std::nullopt;
  return static_cast<std::size_t>(number);
}

RegexSearch Regex::search(bool fromStart) const {
  UErrorCode status = U_ZERO_ERROR;
  const bool found = fromStart ? uregex_find(m_handle.get(), 0, &status) != 0
                               : uregex_findNext(m_handle.get(), &status) != 0;
  if (U_FAILURE(status)) return {RegexOutcome::gaveUp, {}};
  if (!found) return {};
  return {RegexOutcome::matched, currentMatch(m_handle.get())};
}

std::optional<QString> expandTemplate(const QString& replacementTemplate, QStringView matched,
                                      const char* whole) {
  if (!replacementTemplate.contains(u'$') && !replacementTemplate.contains(u'\\')) {
    return replacementTemplate;
  }
  const qsizetype references = replacementTemplate.count(u'$');
  if (replacementTemplate.size() + references * matched.size() > longestResult) return std::nullopt;
  // What matches all of the text, once, has ICU itself read the template.
  UErrorCode status = U_ZERO_ERROR;
  const icu::LocalURegularExpressionPointer everything(uregex_openC(whole, 0, nullptr, &status));
  uregex_setText(everything.getAlias(), matched.isEmpty() ? u"" : matched.utf16(),
                 static_cast<int32_t>(matched.size()), &status);
  if (U_FAILURE(status)) return std::nullopt;
  const QStringView source = replacementTemplate;
  const auto replace = [&](char16_t* target, int32_t capacity, UErrorCode* outcome) {
    return uregex_replaceFirst(everything.getAlias(), source.utf16(),
                               static_cast<int32_t>(source.size()), target, capacity, outcome);
  };
  return textFromIcu(source.size() + matched.size(), replace);
}

}  // namespace zarvy
