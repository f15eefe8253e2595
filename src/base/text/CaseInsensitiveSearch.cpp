#include "base/text/CaseInsensitiveSearch.h"

#include "base/text/CanonicalGraphemes.h"
#include "base/text/CaseMapping.h"
#include "base/text/CodePoints.h"

namespace zarvy {
namespace {

bool isTurkic(const QByteArray& locale) {
  const QByteArray language = locale.split('_').front();
  return language == "tr" || language == "az";
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
    : m_isTurkic(isTurkic(locale)), m_wanted(folded(wanted)) {}

bool CaseInsensitiveSearch::isIn(const QString& text) const {
  const QString place = folded(text);
  for (qsizetype at = place.indexOf(m_wanted); at >= 0; at = place.indexOf(m_wanted, at + 1)) {
    if (!beginsWithMark(QStringView(place).sliced(at + m_wanted.size()))) return true;
  }
  return false;
}

QString CaseInsensitiveSearch::folded(const QString& text) const {
  const QString letters = m_isTurkic ? withDottedCapitalI(text) : text;
  return canonicalDecomposition(caseFolded(letters, m_isTurkic));
}

}  // namespace zarvy
