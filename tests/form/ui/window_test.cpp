#include <QAccessible>
#include <QCheckBox>
#include <QLabel>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTabBar>
#include <QTabWidget>

#include "form/ui/main_form.h"
#include "widgets/page.h"

namespace polefit::testing {
namespace {

class Window : public MainForm {
 protected:
  QTabWidget& tabs = Find<QTabWidget>("CVX_Tabs");

  const Page* Show(int tab) {
    tabs.setCurrentIndex(tab);
    QApplication::processEvents();
    return qobject_cast<Page*>(tabs.widget(tab));
  }
  static void ExpectUnique(QStringList names) {
    const std::string all = names.join(", ").toStdString();
    EXPECT_EQ(names.removeDuplicates(), 0) << all;
  }
};

TEST_F(Window, TabReachesEveryControlInReadingOrderAndAScreenReaderNamesIt) {
  const std::vector<std::string> order[] = {
      {"chkEqualDelay", "tmin", "DelRipplePower", "iPower", "magnVSripple", "freqNorm",
       "LastFileName"},
      {"nPoles", "sigmaPoles", "poleReal", "poleImag", "chkSigmaZero", "sigmaZero", "chkDoublet",
       "chkLossless", "nYzeros", "nZpairs", "nZquads", "Yzero", "Zreal", "Zimag"},
      {"Gain", "LowestX_Y", "maxX_Y", "Note1", "Note2"},
      {"chkUseWeights", "PassData", "cmdClearPassData"},
      {"DelayData", "cmdClearDelayData"},
      {"Remax", "Detail", "Zero", "StepsLim", "StepOut", "EvalMax", "SetRho", "Ratio", "Accuracy",
       "cmdEditSolver", "cmdUseDefSolver"},
      {"cmdSubmit"}};
  EnableAll();
  for (int tab = 0; const std::vector<std::string>& expected : order) {
    Show(tab++);
    tabs.tabBar()->setFocus();
    std::vector<std::string> reached;
    QStringList names;
    for (Press(Qt::Key_Tab); !tabs.tabBar()->hasFocus(); Press(Qt::Key_Tab)) {
      ASSERT_LT(reached.size(), expected.size()) << FocusName() << ", not round again";
      reached.push_back(FocusName());
      names += QAccessible::queryAccessibleInterface(QApplication::focusWidget())
                   ->text(QAccessible::Name);
      EXPECT_GT(names.last().size(), 3) << FocusName();
    }
    EXPECT_EQ(reached, expected);
    ExpectUnique(names);
  }
}

TEST_F(Window, EveryTabHasItsNumberAsAccelerator) {
  for (int tab = 0; tab < tabs.count(); ++tab) {
    QTest::keyClick(&form, static_cast<Qt::Key>(Qt::Key_1 + tab), Qt::AltModifier);
    EXPECT_EQ(tabs.currentIndex(), tab);
  }
}

TEST_F(Window, EveryBoxAndEveryHeadingSaysItsUnitOrThatItHasNone) {
  const QRegularExpression unit(
      "MHz|ns$|[Nn]anoseconds|Normalised by Freq Norm|not in dB|[Ww]ithout unit|whole number|"
      "^Yes or no|^1 or 2$|^Any text|no answer$");
  const auto says = [&unit](const QString& tip) { return tip.contains(unit); };
  int boxes = 0;
  for (const QWidget* box : form.findChildren<QWidget*>()) {
    if (!qobject_cast<const QLineEdit*>(box) && !qobject_cast<const QCheckBox*>(box)) continue;
    if (box->objectName() == "txtCellEditor" || !tabs.isAncestorOf(box)) continue;
    ++boxes;
    EXPECT_TRUE(says(box->toolTip())) << box->objectName().toStdString();
  }
  EXPECT_EQ(boxes, 30 + 5 + 1);
  for (const auto& [table, columns] : {std::pair("PassData", 4), {"DelayData", 2}}) {
    const QAbstractItemModel* cells = Find<GridWidget>(table).model();
    for (int column = 0; column < columns; ++column) {
      EXPECT_TRUE(says(cells->headerData(column, Qt::Horizontal, Qt::ToolTipRole).toString()))
          << table << column;
    }
  }
}

TEST_F(Window, ANoticeComesFirstInTabOrder) {
  tabs.tabBar()->setFocus();
  program.notices.Post({"a", Urgency::asks, "A question.", {{"Yes", [] {}}, {"No", [] {}}}});
  EXPECT_TRUE(tabs.tabBar()->hasFocus());
  for (const char* const before : {"cmdCloseNotice", "cmdNotice2", "cmdNotice1"}) {
    Press(Qt::Key_Backtab);
    EXPECT_EQ(FocusName(), before);
  }
}

TEST_F(Window, ALargeFontLeavesTheQuestionsTheirRoom) {
  QFont font = form.font();
  font.setPointSizeF(font.pointSizeF() * 1.6);
  form.setFont(font);
  form.resize(1000, 700);
  for (const Tab tab : {Tab::polesAndZeros, Tab::passbandData}) {
    const Page* page = Show(static_cast<int>(tab));
    EXPECT_FALSE(page->horizontalScrollBar()->isVisible()) << static_cast<int>(tab);
    if (tab == Tab::passbandData) continue;
    EXPECT_GT(Find<QLabel>("Question8").width(), page->viewport()->width() / 3);
  }
}

TEST_F(Window, NothingIsClippedOverlapsOrScrollsAndLabelsStandOnTheLineOfTheirBoxes) {
  for (const QSize size : {QSize(1024, 700), QSize(1920, 1080), QSize(960, 540)}) {
    form.resize(size);
    for (int tab = 0; tab < tabs.count(); ++tab) {
      const Page* page = Show(tab);
      EXPECT_FALSE(page->verticalScrollBar()->isVisible()) << size.height() << " tab " << tab + 1;
      EXPECT_FALSE(page->horizontalScrollBar()->isVisible()) << size.width() << " tab " << tab + 1;
      QRegion taken;
      for (const QWidget* widget :
           page->widget()->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
        if (widget->isHidden()) continue;
        EXPECT_FALSE(taken.intersects(widget->geometry())) << size.height() << " tab " << tab + 1;
        taken += widget->geometry();
      }
      EXPECT_TRUE(page->widget()->rect().contains(taken.boundingRect()));
      for (const QLabel* label : page->widget()->findChildren<QLabel*>()) {
        const std::string text = label->text().toStdString();
        EXPECT_GE(label->height(), label->heightForWidth(label->width())) << text;
        EXPECT_GE(label->width(), label->minimumSizeHint().width()) << text;
        const auto* box = qobject_cast<QLineEdit*>(label->buddy());
        if (box == nullptr || label->objectName() == "lblKeepNotes") continue;
        const QPoint firstLine(0, label->contentsRect().top() + label->fontMetrics().height() / 2);
        const int lineMiddle = label->mapTo(&form, firstLine).y();
        EXPECT_NEAR(lineMiddle, box->mapTo(&form, box->rect().center()).y(), 1) << text;
      }
    }
  }
}

TEST_F(Window, NoPageIsWiderThanTheTabsInALargeFont) {
  form.setFont(QFont("DejaVu Sans", 14));
  form.resize(1260, 720);
  for (int tab = 0; tab < tabs.count(); ++tab) Show(tab);
  Show(0);
  form.resize(std::max(560, 35 * form.fontMetrics().height()), 720);
  for (int tab = 0; tab < tabs.count(); ++tab) {
    EXPECT_FALSE(Show(tab)->horizontalScrollBar()->isVisible()) << tab + 1;
  }
}

}  // namespace
}  // namespace polefit::testing
