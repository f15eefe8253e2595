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

InjectionPlan planInjection(const QString& text, qsizetype backspaceCount,
                            std::optional<qsizetype> cursorOffset) {
  InjectionPlan plan{.deletion = planBackspaces(backspaceCount), .typing = planText(text)};
  plan.deletion.emplace_back(Pause{injection::phaseGap});
  if (const qsizetype arrows = leftArrowsFor(text, cursorOffset.value_or(0)); arrows >= 1) {
    plan.typing.emplace_back(Pause{injection::phaseGap});
    sendKeyPresses(plan.typing, arrows, virtualkey::leftArrow, injection::charDelay);
  }
  return plan;
}

InjectionActions planBackspaces(qsizetype count) {
  InjectionActions plan;
  sendKeyPresses(plan, count, virtualkey::deleteBackward, injection::backspaceDelay);
  return plan;
}

InjectionActions planText(const QString& text) {
  InjectionActions plan;
  typeText(plan, text);
  return plan;
}

}  // namespace zarvy
