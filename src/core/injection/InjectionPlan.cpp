#include "core/injection/InjectionPlan.h"

#include <cstdio>
#include <cstdlib>

#include "platform/VirtualKey.h"

namespace zarvy {

namespace {

void appendKeyPresses(InjectionPlan& plan, qsizetype count, quint16 keyCode,
                      std::chrono::microseconds delay) {
  if (count < 0) {
    std::fprintf(stderr, "TextInjector: cannot press a key %lld times\n",
                 static_cast<long long>(count));
    std::abort();
  }
  for (qsizetype i = 0; i < count; ++i) {
    plan.emplace_back(KeyPress{keyCode});
    plan.emplace_back(Pause{delay});
  }
}

void appendChunks(InjectionPlan& plan, QStringView line) {
  for (qsizetype start = 0; start < line.size(); start += injection::maxChunkSize) {
    plan.emplace_back(TextRun{line.mid(start, injection::maxChunkSize).toString()});
    plan.emplace_back(Pause{injection::charDelay});
  }
}

void appendText(InjectionPlan& plan, QStringView text) {
  qsizetype start = 0;
  for (qsizetype end = text.indexOf(u'\n'); end >= 0; end = text.indexOf(u'\n', start)) {
    appendChunks(plan, text.sliced(start, end - start));
    appendKeyPresses(plan, 1, virtualkey::returnKey, injection::charDelay);
    start = end + 1;
  }
  appendChunks(plan, text.sliced(start));
}

}  // namespace

InjectionPlan planInjection(const QString& text, qsizetype backspaceCount,
                            std::optional<qsizetype> cursorOffset) {
  InjectionPlan plan;
  appendKeyPresses(plan, backspaceCount, virtualkey::deleteBackward, injection::backspaceDelay);
  plan.emplace_back(Pause{injection::phaseGap});
  appendText(plan, text);
  if (cursorOffset.value_or(0) >= 1) {
    plan.emplace_back(Pause{injection::phaseGap});
    appendKeyPresses(plan, *cursorOffset, virtualkey::leftArrow, injection::charDelay);
  }
  return plan;
}

}  // namespace zarvy
