#pragma once

#include <memory>

#include <QStringView>

struct UBreakIterator;

namespace zarvy {

// The full rules of character boundaries over one text. Private to this folder. One thread.
class GraphemeBreaker {
 public:
  // The text must outlive the breaker.
  explicit GraphemeBreaker(QStringView text);

  // The nearest boundary before or after `position`, in UTF-16 units; the text's start or end
  // if there is none further.
  [[nodiscard]] qsizetype preceding(qsizetype position) const;
  [[nodiscard]] qsizetype following(qsizetype position) const;
  [[nodiscard]] bool isBoundary(qsizetype position) const;

 private:
  struct Close {
    void operator()(UBreakIterator* iterator) const;
  };

  QStringView m_text;
  std::unique_ptr<UBreakIterator, Close> m_iterator;
};

}  // namespace zarvy
