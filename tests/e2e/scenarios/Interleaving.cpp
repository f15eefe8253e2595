#include "e2e/scenarios/Interleaving.h"

#include <algorithm>
#include <limits>
#include <utility>
#include <vector>

#include <QList>

namespace zarvy::e2e {

namespace {

using Characters = QList<uint>;

constexpr int outOfReach = std::numeric_limits<int>::max() / 2;

// The distance if it is at most `band`. A state is a number of characters of each of the three;
// that of `actual` is within `band` of the sum of the two others in every way that costs no more.
class BandedDistance {
 public:
  BandedDistance(const Characters& one, const Characters& other, const Characters& actual, int band)
      : m_one(one), m_other(other), m_actual(actual), m_band(band) {}

  [[nodiscard]] int compute() {
    std::vector<Row> above;  // of the column before in `other`, for each count of `one`
    for (qsizetype j = 0; j <= m_other.size(); ++j) {
      std::vector<Row> column;
      for (qsizetype i = 0; i <= m_one.size(); ++i) {
        column.push_back(rowAt(i, j, i > 0 ? &column.back() : nullptr,
                               j > 0 ? &above[static_cast<std::size_t>(i)] : nullptr));
      }
      above = std::move(column);
    }
    return at(above.back(), m_one.size() + m_other.size(), m_actual.size());
  }

 private:
  using Row = std::vector<int>;  // costs for counts of `actual` from i + j - band to i + j + band

  [[nodiscard]] int at(const Row& row, qsizetype sum, qsizetype count) const {
    const qsizetype index = count - sum + m_band;
    if (count < 0 || index < 0 || index > 2 * static_cast<qsizetype>(m_band)) return outOfReach;
    return row[static_cast<std::size_t>(index)];
  }

  // From `before`, which has one character less of what `character` is taken from.
  [[nodiscard]] int costFrom(const Row& before, qsizetype sum, qsizetype count,
                             uint character) const {
    int best = at(before, sum - 1, count) + 1;  // the character is missing
    if (count > 0) {
      const int exchange = m_actual[count - 1] == character ? 0 : 1;
      best = std::min(best, at(before, sum - 1, count - 1) + exchange);
    }
    return best;
  }

  [[nodiscard]] Row rowAt(qsizetype i, qsizetype j, const Row* lessOfOne,
                          const Row* lessOfOther) const {
    const qsizetype sum = i + j;
    Row row(2 * static_cast<std::size_t>(m_band) + 1, outOfReach);
    const qsizetype last = std::min(m_actual.size(), sum + m_band);
    for (qsizetype count = std::max<qsizetype>(0, sum - m_band); count <= last; ++count) {
      int best = sum == 0 && count == 0 ? 0 : outOfReach;
      if (lessOfOne != nullptr)
        best = std::min(best, costFrom(*lessOfOne, sum, count, m_one[i - 1]));
      if (lessOfOther != nullptr) {
        best = std::min(best, costFrom(*lessOfOther, sum, count, m_other[j - 1]));
      }
      best = std::min(best, at(row, sum, count - 1) + 1);  // a character too many
      row[static_cast<std::size_t>(count - sum + m_band)] = best;
    }
    return row;
  }

  const Characters& m_one;
  const Characters& m_other;
  const Characters& m_actual;
  int m_band;
};

// The counts of `other` that can have been used with the first characters of `actual`, as long as
// that can be read as an interleaving; and how long that is.
struct Reading {
  qsizetype length = 0;
  qsizetype fromOther = 0;  // one of the possible counts at that length
};

Reading readAsInterleaving(const Characters& one, const Characters& other,
                           const Characters& actual) {
  const auto counts = static_cast<std::size_t>(other.size() + 1);
  std::vector<char> possible = {1};  // before the first character
  possible.resize(counts, 0);
  Reading reading;
  for (qsizetype length = 1; length <= actual.size(); ++length) {
    std::vector<char> next(counts, 0);
    qsizetype found = -1;
    for (qsizetype j = 0; j <= std::min(other.size(), length); ++j) {
      const qsizetype i = length - j;
      const uint character = actual[length - 1];
      const bool byOne = i >= 1 && i <= one.size() && possible[static_cast<std::size_t>(j)] != 0 &&
                         one[i - 1] == character;
      const bool byOther = j >= 1 && i <= one.size() &&
                           possible[static_cast<std::size_t>(j - 1)] != 0 &&
                           other[j - 1] == character;
      if (!byOne && !byOther) continue;
      next[static_cast<std::size_t>(j)] = 1;
      found = j;
    }
    if (found < 0) return reading;
    reading = {.length = length, .fromOther = found};
    possible = std::move(next);
  }
  return reading;
}

std::string some(const Characters& characters, qsizetype from) {
  constexpr qsizetype shown = 8;
  if (from >= characters.size()) return "the end";
  QString text = QString::fromUcs4(reinterpret_cast<const char32_t*>(characters.data() + from),
                                   std::min(shown, characters.size() - from));
  text.replace(u'\n', QChar(0x23CE));  // a report is one line: shown as a return symbol
  return '"' + text.toStdString() + '"';
}

}  // namespace

qsizetype interleavingDistance(const QString& one, const QString& other, const QString& actual) {
  const Characters ones = one.toUcs4();
  const Characters others = other.toUcs4();
  const Characters actuals = actual.toUcs4();
  const qsizetype longest = std::max(ones.size() + others.size(), actuals.size());
  for (qsizetype band = 4;; band *= 4) {
    const qsizetype distance =
        BandedDistance(ones, others, actuals, static_cast<int>(std::min(band, longest))).compute();
    if (distance <= band || band >= longest) return std::min(distance, longest);
  }
}

bool isInterleaving(const QString& one, const QString& other, const QString& actual) {
  return firstBreach(one, other, actual).empty();
}

std::string firstBreach(const QString& injected, const QString& typed, const QString& actual) {
  const Characters ours = injected.toUcs4();
  const Characters theirs = typed.toUcs4();
  const Characters all = actual.toUcs4();
  const Reading reading = readAsInterleaving(ours, theirs, all);
  if (reading.length == all.size() && all.size() == ours.size() + theirs.size()) return {};
  const qsizetype fromOurs = reading.length - reading.fromOther;
  return "after " + std::to_string(fromOurs) + " injected and " +
         std::to_string(reading.fromOther) + " typed characters: " + some(ours, fromOurs) +
         " was to be injected and " + some(theirs, reading.fromOther) + " typed, found " +
         some(all, reading.length) + " behind " +
         some(all, std::max<qsizetype>(0, reading.length - 8)) + " (" +
         std::to_string(ours.size() + theirs.size()) + " characters expected, " +
         std::to_string(all.size()) + " found)";
}

}  // namespace zarvy::e2e
