#include "base/text/CaseInsensitiveSearch.h"

#include <algorithm>

#include "base/text/CanonicalGraphemes.h"
#include "base/text/CaseMapping.h"
#include "base/text/CodePoints.h"

namespace zarvy {
namespace {

bool isTurkic(const QByteArray& locale) {
  const QByteArray language = locale.split('_').front();
  return language == "tr" || language == "az";
}

bool isAscii(QStringView text) {
  return std::all_of(text.begin(), text.end(), [](QChar unit) { return unit < QChar(0x80); });
}

// The capital of i as one letter, which folding knows.
QString withDottedCapitalI(QString text) {
  return text.replace(QStringLiteral("I\u0307"), QStringLiteral("\u0130"));
}

bool beginsWithMark(QStringView text) {
  return !text.isEmpty() && QChar::combiningClass(codePointAt(text, 0)) != 0;
}

}  // namespace

CaseInsensitiveSearch::CaseInsensitiveSearch(const QString& wanted, const QByteArray& locale)
    : m_locale(locale), m_wanted(folded(wanted, locale)) {}

bool CaseInsensitiveSearch::isIn(const QString& text) const {
  return isInFolded(folded(text, m_locale));
}

bool CaseInsensitiveSearch::isInFolded(const QString& folded) const {
  for (qsizetype at = folded.indexOf(m_wanted); at >= 0; at = folded.indexOf(m_wanted, at + 1)) {
    if (!beginsWithMark(QStringView(folded).sliced(at + m_wanted.size()))) return true;
  }
  return false;
}

QString CaseInsensitiveSearch::folded(const QString& text, const QByteArray& locale) {
  const bool turkic = isTurkic(locale);
  if (!turkic && isAscii(text)) return text.toLower();
  const QString letters = turkic ? withDottedCapitalI(text) : text;
  return canonicalDecomposition(caseFolded(letters, turkic));
}

}  // namespace zarvy
