#include "core/injection/InjectionPlan.h"

#include <QByteArray>

#include "base/EndProcess.h"
#include "base/text/Graphemes.h"
#include "base/text/KeylessCharacters.h"
#include "platform/VirtualKey.h"

namespace zarvy {

namespace {

void sendKeyPresses(InjectionActions& plan, qsizetype count, quint16 keyCode,
                    std::chrono::microseconds delay) {
  if (count < 0) {
    endProcess("TextInjector: cannot press a key " + QByteArray::number(count) + " times");
  }
  for (qsizetype i = 0; i < count; ++i) {
    plan.emplace_back(KeyPress{keyCode});
    plan.emplace_back(Pause{delay});
  }
}

void typeChunked(InjectionActions& plan, QStringView line) {
  for (qsizetype start = 0; start < line.size(); start += injection::maxChunkSize) {
    plan.emplace_back(TextRun{line.mid(start, injection::maxChunkSize).toString()});
    plan.emplace_back(Pause{injection::charDelay});
  }
}

void typeText(InjectionActions& plan, QStringView text) {
  qsizetype start = 0;
  for (qsizetype end = text.indexOf(u'\n'); end >= 0; end = text.indexOf(u'\n', start)) {
    typeChunked(plan, text.sliced(start, end - start));
    sendKeyPresses(plan, 1, virtualkey::returnKey, injection::charDelay);
    start = end + 1;
  }
  typeChunked(plan, text.sliced(start));
}

// One for each character behind the caret, but for those that are not typed.
qsizetype leftArrowsFor(QStringView text, qsizetype cursorOffset) {
  qsizetype arrows = cursorOffset;
  ReverseGraphemes characters(text);
  for (qsizetype behind = 0; behind < cursorOffset; ++behind) {
    const QStringView character = characters.next();
    if (character.isEmpty()) break;
    if (hasNoKey(character.front().unicode())) --arrows;
  }
  return arrows;
}

}  // namespace

InjectionActions planDeletion(qsizetype backspaceCount) {
  InjectionActions plan = planBackspaces(backspaceCount);
  plan.emplace_back(Pause{injection::phaseGap});
  return plan;
}

InjectionActions planBackspaces(qsizetype count) {
  InjectionActions plan;
  sendKeyPresses(plan, count, virtualkey::deleteBackward, injection::backspaceDelay);
  return plan;
}

InjectionActions planText(QStringView text) {
  InjectionActions plan;
  typeText(plan, text);
  return plan;
}

// Behind a line feed, or where a run ends anyway.
qsizetype lengthOfPiece(QStringView text) {
  constexpr qsizetype longestPiece = 1000 * injection::maxChunkSize;
  if (text.size() <= longestPiece) return text.size();
  const qsizetype lineFeed = text.first(longestPiece).lastIndexOf(u'\n');
  return lineFeed < 0 ? longestPiece : lineFeed + 1;
}

InjectionActions planCaret(QStringView text, std::optional<qsizetype> cursorOffset) {
  InjectionActions plan;
  const qsizetype arrows = leftArrowsFor(text, cursorOffset.value_or(0));
  if (arrows < 1) return plan;
  plan.emplace_back(Pause{injection::phaseGap});
  sendKeyPresses(plan, arrows, virtualkey::leftArrow, injection::charDelay);
  return plan;
}

}  // namespace zarvy
