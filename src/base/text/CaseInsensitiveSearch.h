#pragma once

#include <QByteArray>
#include <QString>

namespace zarvy {

// Looks for one text in many, without regard to case and to how a letter with its marks is put
// together. A letter is not found in the same letter with a mark. Any thread.
class CaseInsensitiveSearch {
 public:
  // `locale` is the language whose letters these are, as ICU names it: in Turkish and Azeri the
  // letters I and İ are the capitals of ı and i.
  CaseInsensitiveSearch(const QString& wanted, const QByteArray& locale);

  // An empty text is in every text.
  [[nodiscard]] bool isIn(const QString& text) const;

  // `text` as isInFolded() takes it: what many searches look through is folded once.
  [[nodiscard]] static QString folded(const QString& text, const QByteArray& locale);

  // The same as isIn() of a text that was folded for the same locale.
  [[nodiscard]] bool isInFolded(const QString& folded) const;

 private:
  const QByteArray m_locale;
  const QString m_wanted;
};

}  // namespace zarvy
