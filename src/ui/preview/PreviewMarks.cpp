#include "ui/preview/PreviewMarks.h"

#include <array>
#include <utility>

namespace zarvy {
namespace {

using Kind = PreviewRun::Kind;

// Around letters that users do not type between two of these characters, which have no width.
constexpr char16_t marker = 0xFEFF;

struct Marks {
  Kind kind = Kind::plain;
  QStringView opening;
  QStringView closing;
};

constexpr std::array allMarks{
    Marks{Kind::regular, u"\uFEFF<<\uFEFF", u"\uFEFF>>\uFEFF"},
    Marks{Kind::required, u"\uFEFF[[REQ\uFEFF", u"\uFEFFREQ]]\uFEFF"},
};

// The earliest opening mark at or after a position that only grows.
class OpeningMarks {
 public:
  explicit OpeningMarks(QStringView text) : m_text(text) { m_next.fill(-1); }

  struct Found {
    qsizetype position = 0;
    const Marks* marks = nullptr;  // null if there is none
  };

  [[nodiscard]] Found from(qsizetype position) {
    Found earliest{m_text.size(), nullptr};
    for (std::size_t kind = 0; kind < allMarks.size(); ++kind) {
      qsizetype& next = m_next.at(kind);
      if (next < position) {
        const qsizetype found = m_text.indexOf(allMarks.at(kind).opening, position);
        next = found < 0 ? m_text.size() : found;
      }
      if (next < earliest.position) earliest = {next, &allMarks.at(kind)};
    }
    return earliest;
  }

 private:
  QStringView m_text;
  std::array<qsizetype, allMarks.size()> m_next{};
};

class RunList {
 public:
  void append(Kind kind, QStringView text) {
    QString shown = withoutMarks(text.toString());
    if (!shown.isEmpty()) m_runs.append({kind, std::move(shown)});
  }

  [[nodiscard]] QList<PreviewRun> take() { return std::move(m_runs); }

 private:
  QList<PreviewRun> m_runs;
};

}  // namespace

QString marked(const QString& text, Kind kind) {
  const Marks& marks = kind == Kind::required ? allMarks.back() : allMarks.front();
  return marks.opening.toString() + text + marks.closing.toString();
}

QString withoutMarks(QString text) {
  if (!text.contains(QChar(marker))) return text;
  for (const Marks& marks : allMarks) {
    text.replace(marks.opening.toString(), QString());
    text.replace(marks.closing.toString(), QString());
  }
  return text;
}

QList<PreviewRun> splitAtMarks(const QString& text) {
  const QStringView view = text;
  OpeningMarks openings(view);
  RunList runs;
  qsizetype position = 0;
  while (true) {
    const auto [start, marks] = openings.from(position);
    const qsizetype inside = marks ? start + marks->opening.size() : start;
    const qsizetype end = marks ? view.indexOf(marks->closing, inside) : -1;
    if (end < 0) break;
    runs.append(Kind::plain, view.sliced(position, start - position));
    runs.append(marks->kind, view.sliced(inside, end - inside));
    position = end + marks->closing.size();
  }
  runs.append(Kind::plain, view.sliced(position));
  return runs.take();
}

}  // namespace zarvy
