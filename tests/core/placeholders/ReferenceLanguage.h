#pragma once

#include <QList>
#include <QMap>
#include <QString>

#include "core/model/GlobalVariable.h"
#include "core/model/Snippet.h"
#include "core/placeholders/FillInField.h"
#include "fakes/FakePlaceholders.h"

namespace zarvy {

// The placeholder language as it is described: regular expressions searched by ICU, and a search
// of the whole text for every single replacement. Slow on long texts, and easy to check by eye.
class ReferenceLanguage {
 public:
  ReferenceLanguage(QList<Snippet> snippets, QList<GlobalVariable> variables,
                    FakePlaceholders& placeholders);

  [[nodiscard]] QString withCaptures(QString text, const QMap<QString, QString>& captures) const;
  [[nodiscard]] QString withNestedSnippets(const QString& text, const QStringList& visited) const;
  [[nodiscard]] QString processed(QString text) const;
  [[nodiscard]] QList<FillInField> fields(const QString& text) const;  // without ids
  [[nodiscard]] QString withAnswers(QString text, const QMap<QString, QString>& answers) const;

 private:
  QList<Snippet> m_snippets;
  QList<GlobalVariable> m_variables;
  FakePlaceholders& m_placeholders;
};

}  // namespace zarvy
