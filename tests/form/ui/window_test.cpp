#include <gmock/gmock.h>

#include <QAccessible>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QScrollBar>
#include <QTabBar>
#include <QTabWidget>

#include "form/ui/main_form.h"
#include "form/ui/page.h"

namespace polefit::testing {
namespace {

class Window : public MainForm {
 protected:
  QTabWidget& tabs = Find<QTabWidget>("CVX_Tabs");

  QWidget* Show(int tab) {
    tabs.setCurrentIndex(tab);
    QApplication::processEvents();
    return tabs.widget(tab);
  }
  /// What the user works with on a page, in the order of creation.
  static QList<QWidget*> Controls(const QWidget* page) {
    QList<QWidget*> controls;
    for (QWidget* widget : page->findChildren<QWidget*>()) {
      const bool reached = (widget->focusPolicy() & Qt::TabFocus) != 0;
      if (reached && widget->isVisible() && !widget->objectName().startsWith("qt_")) {
        controls.append(widget);
      }
    }
    return controls;
  }
};

TEST_F(Window, TabReachesEveryControlInReadingOrder) {
  const std::vector<std::vector<std::string>> order = {
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
  for (std::size_t tab = 0; tab < order.size(); ++tab) {
    const QWidget* page = Show(static_cast<int>(tab));
    EXPECT_EQ(static_cast<std::size_t>(Controls(page).size()), order[tab].size());
    tabs.tabBar()->setFocus();
    for (const std::string& name : order[tab]) {
      Press(Qt::Key_Tab);
      EXPECT_EQ(FocusName().toStdString(), name);
    }
    Press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), tabs.tabBar()) << "and round again";
  }
}

TEST_F(Window, AScreenReaderFindsANameOnEveryControl) {
  for (int tab = 0; tab < tabs.count(); ++tab) {
    std::set<QString> names;
    for (QWidget* control : Controls(Show(tab))) {
      QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(control);
      ASSERT_NE(accessible, nullptr);
      const QString name = accessible->text(QAccessible::Name);
      EXPECT_GT(name.size(), 3) << control->objectName().toStdString();
      EXPECT_TRUE(names.insert(name).second) << name.toStdString() << " names two controls";
    }
  }
  ShowPoints(3);
  Show(3);
  Find<QWidget>("PassData").setFocus();
  Type("5");
  QAccessibleInterface* editor =
      QAccessible::queryAccessibleInterface(&Find<QLineEdit>("txtCellEditor"));
  EXPECT_EQ(editor->text(QAccessible::Name), "Frequency 1");
}

TEST_F(Window, AcceleratorsAreUniqueOnEveryTabAndWork) {
  std::set<QString> menus;
  for (QAction* menu : form.menuBar()->actions()) {
    EXPECT_TRUE(menus.insert(QKeySequence::mnemonic(menu->text()).toString()).second);
    std::set<QString> entries;
    for (QAction* entry : menu->menu()->actions()) {
      if (entry->isSeparator()) continue;
      EXPECT_TRUE(entries.insert(QKeySequence::mnemonic(entry->text()).toString()).second)
          << entry->text().toStdString();
    }
  }
  for (int tab = 0; tab < tabs.count(); ++tab) {
    QTest::keyClick(&form, static_cast<Qt::Key>(Qt::Key_1 + tab), Qt::AltModifier);
    EXPECT_EQ(tabs.currentIndex(), tab);
    std::set<QString> keys = menus;
    for (const QPushButton* button : tabs.widget(tab)->findChildren<QPushButton*>()) {
      EXPECT_TRUE(keys.insert(button->shortcut().toString()).second);
      EXPECT_FALSE(button->shortcut().isEmpty());
    }
  }
  Show(5);
  QTest::keyClick(&form, Qt::Key_U, Qt::AltModifier);
  EXPECT_TRUE(QTest::qWaitFor([this] { return form.Text("Remax").empty(); }));
}

TEST_F(Window, NothingIsClippedOverlapsOrScrollsAtAnyOfTheUsualSizes) {
  for (const QSize size : {QSize(1024, 700), QSize(1920, 1080), QSize(960, 540)}) {
    form.resize(size);
    for (int tab = 0; tab < tabs.count(); ++tab) {
      const auto* page = qobject_cast<Page*>(Show(tab));
      EXPECT_FALSE(page->verticalScrollBar()->isVisible()) << size.height() << " tab " << tab + 1;
      EXPECT_FALSE(page->horizontalScrollBar()->isVisible()) << size.width() << " tab " << tab + 1;
      const QList<QWidget*> widgets =
          page->widget()->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
      for (qsizetype i = 0; i < widgets.size(); ++i) {
        const auto* label = qobject_cast<QLabel*>(widgets[i]);
        if (label != nullptr) {
          EXPECT_GE(label->height(), label->heightForWidth(label->width()))
              << label->text().toStdString();
          EXPECT_GE(label->width(), label->minimumSizeHint().width());
        }
        EXPECT_TRUE(page->widget()->rect().contains(widgets[i]->geometry()));
        for (qsizetype j = 0; j < i; ++j) {
          EXPECT_FALSE(widgets[i]->geometry().intersects(widgets[j]->geometry()));
        }
      }
    }
  }
}

TEST_F(Window, FirstLinesOfLabelsStandOnTheBaseLineOfTheirBoxes) {
  for (const QLabel* label : form.findChildren<QLabel*>()) {
    const auto* box = qobject_cast<QLineEdit*>(label->buddy());
    if (box == nullptr || label->objectName() == "lblKeepNotes") continue;
    form.SetFocus(box->objectName().toStdString());
    QApplication::processEvents();
    const int lineTop = label->mapTo(&form, label->contentsRect().topLeft()).y();
    const int boxMiddle = box->mapTo(&form, box->rect().center()).y();
    EXPECT_NEAR(lineTop + label->fontMetrics().height() / 2, boxMiddle, 1)
        << label->text().toStdString();
  }
}

}  // namespace
}  // namespace polefit::testing
