#include "ui/fillin/FillInPanel.h"

#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

constexpr QSize leastSize(350, 400);
constexpr QSize usualSize(450, 550);

// Qt takes these three characters for the place of a mark, unless they stand there twice.
QString literalTitle(QString title) {
  return title.replace(u"[*]"_s, u"[*][*]"_s);
}

}  // namespace

FillInPanel::FillInPanel(std::unique_ptr<QWidget> content, const QString& title) {
  setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                 Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint | Qt::WindowStaysOnTopHint);
  setWindowTitle(literalTitle(title));
  setWindowRole(u"fill-in"_s);
  setMinimumSize(leastSize);
  resize(usualSize);
  auto* const layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(content.release());
}

}  // namespace zarvy
