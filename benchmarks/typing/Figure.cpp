#include "typing/Figure.h"

#include <iostream>

#include <QJsonDocument>
#include <QJsonObject>

namespace zarvy::benchmarks {

using namespace Qt::Literals::StringLiterals;

void print(const Figure& figure) {
  QJsonObject line{{u"figure"_s, QString::fromStdString(figure.title)},
                   {u"value"_s, figure.value},
                   {u"unit"_s, QString::fromStdString(figure.unit)}};
  if (figure.budget) line.insert(u"budget"_s, *figure.budget);
  std::cout << QJsonDocument(line).toJson(QJsonDocument::Compact).toStdString() << std::endl;
}

}  // namespace zarvy::benchmarks
