#include <QSplitter>

#include "support/QtPrinters.h"
#include "ui/fillin/FillInHarness.h"
#include "ui/fillin/FillInPanel.h"
#include "ui/fillin/StandaloneFillInForm.h"

using namespace Qt::Literals::StringLiterals;

namespace zarvy {
namespace {

class FillInPanels : public testing::Test {
 protected:
  FillInPanel& open(const QString& replacement, const QRect& desk) {
    m_panel = std::make_unique<FillInPanel>(
        std::make_unique<StandaloneFillInForm>(
            FillInHarness::snippet(replacement), FolderColor::blue, m_harness.services(),
            [](const QMap<QString, QString>&) {}, [] {}),
        u"Fill In"_s);
    m_panel->fitInto(desk);
    m_panel->show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(m_panel.get()));
    return *m_panel;
  }

  [[nodiscard]] QRect placeOf(const QString& text) const {
    const QPushButton& shown = button(*m_panel, text);
    return {shown.mapTo(m_panel.get(), QPoint()), shown.size()};
  }

  FillInHarness m_harness;
  std::unique_ptr<FillInPanel> m_panel;
};

TEST_F(FillInPanels, ShowTheirButtonsOnALowScreen) {
  const QRect desk(0, 0, 640, 360);
  for (const QString& replacement :
       {u"plain"_s, u"{{field:A}} {{textarea:B}} {{dropdown:C:x,y}} {{?:D}}d{{/?}}"_s}) {
    const FillInPanel& panel = open(replacement, desk);
    EXPECT_LT(panel.height(), desk.height()) << "there is a frame too";
    EXPECT_TRUE(desk.contains(panel.frameGeometry()));
    for (const QString& text : {u"Cancel"_s, u"Expand"_s}) {
      EXPECT_TRUE(panel.rect().contains(placeOf(text))) << text.toStdString();
    }
    const auto& panes = *panel.findChild<QSplitter*>();
    EXPECT_GE(panes.y(), 0);
    int bottom = 0;
    for (int index = 0; index < panes.count(); ++index) {
      EXPECT_GE(panes.widget(index)->y(), bottom) << "one below the other";
      bottom = panes.widget(index)->geometry().bottom() + 1;
    }
    EXPECT_LE(bottom, panes.height());
  }
}

TEST_F(FillInPanels, KeepTheirSizesOnAScreenWithRoom) {
  const FillInPanel& panel = open(u"{{field:A}}"_s, {100, 50, 1280, 800});
  EXPECT_EQ(panel.size(), QSize(450, 550));
  EXPECT_EQ(panel.minimumSize(), QSize(350, 400));
  const auto& form = *panel.findChild<StandaloneFillInForm*>();
  EXPECT_EQ(form.minimumSizeHint(), QSize(350, 400));
}

}  // namespace
}  // namespace zarvy
