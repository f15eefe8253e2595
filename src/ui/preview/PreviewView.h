#pragma once

#include <vector>

#include <QList>
#include <QPlainTextEdit>

#include "ui/preview/PreviewRun.h"

namespace zarvy {

// Shows runs, to be read, selected and copied. A paragraph of many thousand characters is laid out
// in pieces, so that a change takes no longer than one of them does; a copy has it in one again.
class PreviewView final : public QPlainTextEdit {
  Q_OBJECT

 public:
  explicit PreviewView(QWidget* parent);

  // Touches only what differs from the runs before, so that a long text stays where it is scrolled
  // to and is not laid out again at each key.
  void setRuns(const QList<PreviewRun>& runs);

 protected:
  void changeEvent(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  [[nodiscard]] QMimeData* createMimeDataFromSelection() const override;

 private:
  void replaceRuns(qsizetype first, qsizetype behindLast, const QList<PreviewRun>& runs);
  [[nodiscard]] QTextCharFormat formatOf(PreviewRun::Kind kind) const;
  void formatAgain();

  QList<PreviewRun> m_runs;
  std::vector<int> m_lengths;  // of each run, in positions of the document
};

}  // namespace zarvy
