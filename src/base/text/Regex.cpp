#include "base/text/Regex.h"

#include <string_view>
#include <utility>

#include <unicode/uregex.h>

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

// In units of ICU's own counter of backtracking steps; one is about 0.1 ms of today's machines.
constexpr int32_t timeLimit = 200;
constexpr int32_t timeLimitAfterGivingUp = 20;

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

}  // namespace

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
  if (U_SUCCESS(status)) uregex_setTimeLimit(handle.get(), timeLimit, &status);
  if (U_FAILURE(status)) return describe(status, place);
  return std::shared_ptr<const Regex>(new Regex(pattern, std::move(handle)));
}

Regex::Regex(QString pattern, Handle handle)
    : m_pattern(std::move(pattern)), m_required(m_pattern), m_handle(std::move(handle)) {}

Regex::~Regex() = default;

RegexSearch Regex::firstMatch(QStringView text) const {
  if (!m_required.arePresentIn(text)) return {};
  const std::scoped_lock guard(m_lock);
  if (!setText(m_handle.get(), text)) return {};
  RegexSearch result = search(true);
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
  if (U_FAILURE(status)) {
    status = U_ZERO_ERROR;
    uregex_setTimeLimit(m_handle.get(), timeLimitAfterGivingUp, &status);
    m_hasGivenUp = true;
    return {RegexOutcome::gaveUp, {}};
  }
  if (std::exchange(m_hasGivenUp, false)) uregex_setTimeLimit(m_handle.get(), timeLimit, &status);
  if (!found) return {};
  return {RegexOutcome::matched, currentMatch(m_handle.get())};
}

}  // namespace zarvy
