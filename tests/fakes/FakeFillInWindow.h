#pragma once

#include <optional>
#include <utility>

#include "app/expansion/FillInWindow.h"
#include "fakes/Journal.h"

namespace zarvy {

// A form whose user is the test. What happens to the window is written down as "form <trigger>
// <colour>" and "form closes". Closing it tells of a cancelled form, as the real one does.
class FakeFillInWindow final : public FillInWindow {
 public:
  explicit FakeFillInWindow(Journal& journal) : m_journal(journal) {}

  void show(const Snippet& snippet, FolderColor folderColor, TakeTypedAhead takeTypedAhead,
            OnComplete onComplete, OnCancel onCancel) override {
    close();
    m_journal.add(QStringLiteral("form %1 %2").arg(snippet.trigger, rawText(folderColor)));
    m_form = {snippet, std::move(takeTypedAhead), std::move(onComplete), std::move(onCancel)};
  }

  void close() override {
    if (!m_form) return;
    m_journal.add(QStringLiteral("form closes"));
    const Form closed = *std::exchange(m_form, std::nullopt);
    if (!m_isCompleting) closed.onCancel();
  }

  [[nodiscard]] bool isOpen() const { return m_form.has_value(); }
  [[nodiscard]] const Snippet& snippet() const { return m_form->snippet; }

  [[nodiscard]] QString takeTypedAhead() const { return m_form->takeTypedAhead(); }

  void pressExpand(const QMap<QString, QString>& values) {
    m_isCompleting = true;
    const OnComplete complete = m_form->onComplete;
    complete(values);
    close();
    m_isCompleting = false;
  }

  // Tells of it once directly, and again when the window closes.
  void pressCancel() {
    const OnCancel cancel = m_form->onCancel;
    cancel();
    close();
  }

 private:
  struct Form {
    Snippet snippet;
    TakeTypedAhead takeTypedAhead;
    OnComplete onComplete;
    OnCancel onCancel;
  };

  Journal& m_journal;
  std::optional<Form> m_form;
  bool m_isCompleting = false;
};

}  // namespace zarvy
