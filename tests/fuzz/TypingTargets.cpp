#include "fuzz/TypingTargets.h"

#include <algorithm>
#include <variant>

#include "base/text/Graphemes.h"
#include "base/text/KeylessCharacters.h"
#include "core/CursorMarker.h"
#include "core/injection/InjectionPlan.h"
#include "platform/VirtualKey.h"
#include "platform/x11/typing/TypedText.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy::fuzz {
namespace {

using Piece = x11::TypedText::Piece;

const auto cursorMark = u"{{cursor}}"_s;

// A text field as applications have them: keys delete and pass whole characters.
class TextField {
 public:
  explicit TextField(const QString& text) : m_text(text), m_caret(text.size()) {}

  void carryOut(const InjectionActions& actions) {
    for (const InjectionAction& action : actions) std::visit(*this, action);
  }

  void operator()(const TextRun& run) {
    require(!run.text.isEmpty() && run.text.size() <= injection::maxChunkSize, "a run is too long");
    require(!run.text.contains(u'\n'), "a line feed is typed as text");
    for (const QChar unit : run.text) {
      if (!hasNoKey(unit.unicode())) insert(unit);
    }
  }

  void operator()(const KeyPress& key) {
    if (key.keyCode == virtualkey::returnKey) return insert(u'\n');
    const qsizetype length = ReverseGraphemes(before()).next().size();
    m_caret -= length;
    if (key.keyCode == virtualkey::leftArrow) {
      ++m_leftArrows;
    } else {
      require(key.keyCode == virtualkey::deleteBackward, "a key that was not asked for");
      m_text.remove(m_caret, length);
    }
  }

  void operator()(const Pause& pause) const {
    require(pause.duration.count() > 0, "a pause takes no time");
  }

  [[nodiscard]] const QString& text() const { return m_text; }
  [[nodiscard]] QString before() const { return m_text.first(m_caret); }
  [[nodiscard]] qsizetype leftArrows() const { return m_leftArrows; }

 private:
  void insert(QChar unit) { m_text.insert(m_caret++, unit); }

  QString m_text;
  qsizetype m_caret;
  qsizetype m_leftArrows = 0;
};

QString withoutKeyless(QStringView text) {
  QString result;
  for (const QChar unit : text) {
    if (!hasNoKey(unit.unicode())) result += unit;
  }
  return result;
}

// The characters that a caret passes one by one.
qsizetype typedCharacters(QStringView text) {
  const QList<QStringView> all = graphemes(text);
  return std::count_if(all.begin(), all.end(), [](QStringView character) {
    return !hasNoKey(character.front().unicode());
  });
}

// A second marker counts with its letters. What stood on both sides of a marker, or of a character
// that is not typed, may join in the text field, where the marker has no place of its own then.
void requireCaret(const TextField& field, const QString& before, const QString& snippet) {
  if (snippet.count(cursorMark) > 1) return;
  const qsizetype marker = snippet.indexOf(cursorMark);
  const QStringView behindMarker = QStringView(snippet).sliced(marker + cursorMark.size());
  require(field.leftArrows() == typedCharacters(behindMarker), "the caret goes too far, or less");
  const QString start = before + withoutKeyless(snippet.first(marker));
  const QStringView behind = QStringView(field.text()).sliced(start.size());
  const bool hasPlace =
      isGraphemeBoundary(field.text(), start.size()) && graphemeCount(behind) == field.leftArrows();
  require(!hasPlace || field.before() == start, "the caret is not where its marker was");
}

// What a text field shows for a text that is typed, by the code point.
QList<uint> shown(QString text) {
  text.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n');
  QList<uint> characters;
  for (const uint character : text.toUcs4()) {
    const bool isNone =
        (character & 0xFFFEU) == 0xFFFEU || (character >= 0xFDD0U && character < 0xFDF0U);
    if (!hasNoKey(character))
      characters.append(isNone ? uint{QChar::ReplacementCharacter} : character);
  }
  return characters;
}

QList<uint> shown(const std::vector<Piece>& pieces) {
  QList<uint> characters;
  for (const Piece& piece : pieces) {
    if (!piece.virtualKey) {
      characters.append(piece.character);
    } else {
      characters.append(*piece.virtualKey == virtualkey::tab ? u'\t' : u'\n');
    }
  }
  return characters;
}

}  // namespace

void injectionPlan(Bytes bytes) {
  if (bytes.empty()) return;
  const qsizetype triggerLength = bytes.front() % 60;
  const QString snippet = textOf(bytes.subspan(1));
  const QString before = u"Dear "_s;
  const ExpandedText expanded = resolveCursorMarker(snippet);
  TextField field(before + QString(triggerLength, u't'));
  field.carryOut(planDeletion(triggerLength));
  require(field.text() == before, "the trigger is not gone, or more than that");
  for (QStringView text = expanded.text; !text.isEmpty();) {
    const qsizetype length = lengthOfPiece(text);
    field.carryOut(planText(text.first(length)));
    text = text.sliced(length);
  }
  field.carryOut(planCaret(expanded.text, expanded.cursorOffset));
  QString text = snippet;
  require(field.text() == before + withoutKeyless(text.remove(cursorMark)),
          "another text is typed");
  require(expanded.cursorOffset.has_value() == snippet.contains(cursorMark), "a marker is lost");
  if (expanded.cursorOffset) requireCaret(field, before, snippet);
}

void typedText(Bytes bytes) {
  const QStringList runs = textsOf(bytes);
  x11::TypedText typed;
  std::vector<Piece> pieces;
  const auto add = [&pieces](const std::vector<Piece>& more) {
    pieces.insert(pieces.end(), more.begin(), more.end());
  };
  for (const QString& run : runs) add(typed.feed(run));
  add(typed.finish());
  require(typed.finish().empty(), "something is left behind the end");
  require(shown(pieces) == shown(runs.join(QString())), "other keys type the text");

  std::vector<char32_t> characters;
  for (const Piece& piece : pieces) {
    if (!piece.virtualKey) characters.push_back(piece.character);
  }
  require(x11::charactersToType(runs.join(QString())) == characters, "other characters are needed");
}

}  // namespace zarvy::fuzz
