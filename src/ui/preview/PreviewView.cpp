#include "ui/preview/PreviewView.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <numeric>
#include <utility>

#include <QEvent>
#include <QMimeData>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

#include "ui/style/Ink.h"
#include "ui/style/Tones.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

constexpr int previewPadding = 6;  // with that of the box around it 8
constexpr double highlightOpacity = 0.15;
constexpr qsizetype longestPiece = 4000;  // of a paragraph, in UTF-16 units

// The state of a block that goes on with the paragraph of the one before.
constexpr int goesOn = 1;

// Where the first piece of `text` ends: behind a line feed, a space or else just somewhere.
qsizetype pieceLength(QStringView text) {
  if (text.size() <= longestPiece) return text.size();
  const QStringView beginning = text.first(longestPiece);
  for (const QChar end : {u'\n', u' '}) {
    if (const qsizetype position = beginning.lastIndexOf(end); position >= 0) return position + 1;
  }
  return beginning.back().isHighSurrogate() ? longestPiece - 1 : longestPiece;
}

void insert(QTextCursor& cursor, const QString& text, const QTextCharFormat& format) {
  QStringView rest = text;
  while (!rest.isEmpty()) {
    const QStringView piece = rest.first(pieceLength(rest));
    cursor.insertText(piece.toString(), format);
    rest = rest.sliced(piece.size());
    if (rest.isEmpty() || piece.endsWith(u'\n')) continue;
    cursor.insertBlock();
    cursor.block().setUserState(goesOn);
  }
}

}  // namespace

PreviewView::PreviewView(QWidget* parent) : QPlainTextEdit(parent) {
  setReadOnly(true);
  setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  setFocusPolicy(Qt::StrongFocus);
  setTabChangesFocus(true);
  setUndoRedoEnabled(false);
  setFrameShape(QFrame::NoFrame);
  viewport()->setAutoFillBackground(false);
  document()->setDocumentMargin(previewPadding);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  QTextOption option = document()->defaultTextOption();
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  option.setAlignment(Qt::AlignLeft | Qt::AlignAbsolute);
  document()->setDefaultTextOption(option);
  setAccessibleName(u"Preview"_s);
}

void PreviewView::setRuns(const QList<PreviewRun>& runs) {
  const auto [oldEnd, newEnd] =
      std::mismatch(m_runs.cbegin(), m_runs.cend(), runs.cbegin(), runs.cend());
  const qsizetype first = oldEnd - m_runs.cbegin();
  const auto [oldTail, newTail] =
      std::mismatch(m_runs.crbegin(), std::make_reverse_iterator(oldEnd), runs.crbegin(),
                    std::make_reverse_iterator(newEnd));
  const qsizetype kept = oldTail - m_runs.crbegin();
  replaceRuns(first, m_runs.size() - kept, runs.sliced(first, runs.size() - kept - first));
  m_runs = runs;
}

void PreviewView::replaceRuns(qsizetype first, qsizetype behindLast,
                              const QList<PreviewRun>& runs) {
  const auto from = m_lengths.begin() + first;
  const auto to = m_lengths.begin() + behindLast;
  const int start = std::accumulate(m_lengths.begin(), from, 0);
  QTextCursor cursor(document());
  cursor.beginEditBlock();
  cursor.setPosition(start);
  cursor.setPosition(std::accumulate(from, to, start), QTextCursor::KeepAnchor);
  cursor.removeSelectedText();
  std::vector<int> lengths;
  for (const PreviewRun& run : runs) {
    const int before = cursor.position();
    insert(cursor, run.text, formatOf(run.kind));
    lengths.push_back(cursor.position() - before);
  }
  cursor.endEditBlock();
  m_lengths.insert(m_lengths.erase(from, to), lengths.begin(), lengths.end());
}

QTextCharFormat PreviewView::formatOf(PreviewRun::Kind kind) const {
  QTextCharFormat format;
  if (kind == PreviewRun::Kind::plain) return format;
  const QColor base = activeColor(palette(), QPalette::Base);
  const bool isRequired = kind == PreviewRun::Kind::required;
  const QColor color = isRequired ? systemColor(meaning::required, palette())
                                  : activeColor(palette(), QPalette::Highlight);
  const QColor background = blended(base, color, highlightOpacity);
  format.setFontWeight(QFont::Medium);
  format.setForeground(
      inkOn(isRequired ? Ink(meaning::required) : Ink(TextColor::accent), palette(), background));
  format.setBackground(withOpacity(color, highlightOpacity));
  return format;
}

void PreviewView::changeEvent(QEvent* event) {
  QPlainTextEdit::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) formatAgain();
}

// A user who reads it with the keyboard keeps the place.
void PreviewView::resizeEvent(QResizeEvent* event) {
  QPlainTextEdit::resizeEvent(event);
  if (hasFocus()) ensureCursorVisible();
}

QMimeData* PreviewView::createMimeDataFromSelection() const {
  const QTextCursor selection = textCursor();
  QString text;
  QTextBlock block = document()->findBlock(selection.selectionStart());
  for (; block.isValid() && block.position() <= selection.selectionEnd(); block = block.next()) {
    const qsizetype start = std::max(selection.selectionStart() - block.position(), 0);
    const qsizetype end = std::min(selection.selectionEnd() - block.position(), block.length() - 1);
    const bool isNewLine =
        block.position() > selection.selectionStart() && block.userState() != goesOn;
    if (isNewLine) text += u'\n';
    text += QStringView(block.text()).sliced(start, end - start);
  }
  auto copied = std::make_unique<QMimeData>();
  copied->setText(text);
  return copied.release();  // Qt takes it over
}

// The text stays as it is, and with it what is selected and where it is scrolled to.
void PreviewView::formatAgain() {
  QTextCursor cursor(document());
  cursor.beginEditBlock();
  for (std::size_t index = 0; index < m_lengths.size(); ++index) {
    const int end = cursor.position() + m_lengths[index];
    cursor.setPosition(end, QTextCursor::KeepAnchor);
    cursor.setCharFormat(formatOf(m_runs[static_cast<qsizetype>(index)].kind));
    cursor.setPosition(end);
  }
  cursor.endEditBlock();
}

}  // namespace zarvy
