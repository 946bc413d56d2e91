#include "widgets/notice_bar.h"

#include <gmock/gmock.h>

#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>
#include <QWindow>

namespace polefit::testing {
namespace {

class NoticeBarTest : public ::testing::Test {
 protected:
  NoticeBarTest() {
    auto* rows = new QVBoxLayout(&window);
    rows->addWidget(bar);
    rows->addWidget(below);
    bar->Watch(board);
    window.show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    below->setFocus();
  }
  void Post(const char* about, Urgency urgency) {
    board.Post({about, urgency, std::string("about ") + about, {{"Yes", [this, about] {
                                                                   chosen += about;
                                                                 }}}});
  }
  /// What the bar shows: its sentence and its count.
  std::string Shown() {
    if (!bar->isVisible()) return "nothing";
    QString text;
    for (const QLabel* label : bar->findChildren<QLabel*>()) {
      if (label->isVisible() && !label->text().isEmpty()) text += label->text() + "; ";
    }
    return text.toStdString();
  }
  void Click(const char* name) {
    QTest::mouseClick(bar->findChild<QWidget*>(name), Qt::LeftButton);
  }

  NoticeBoard board;
  QWidget window;
  std::string chosen;
  bool isBusy = false;
  NoticeBar* bar = new NoticeBar([](const auto& action) { action(); }, [this] { return isBusy; });
  QPushButton* below = new QPushButton;
};

TEST_F(NoticeBarTest, ShowsOneAtATimeTheMostUrgentFirstAndLeavesTheFocusAlone) {
  Post("a", Urgency::asks);
  EXPECT_EQ(Shown(), "about a; ");
  Post("b", Urgency::dataAtRisk);
  for (int time = 0; time < 2; ++time) Post("c", Urgency::asks);
  EXPECT_EQ(Shown(), "about b; 1 of 3; ") << "one of each subject";
  EXPECT_TRUE(below->hasFocus());
  Click("cmdNotice1");
  EXPECT_EQ(chosen, "b");
  EXPECT_EQ(Shown(), "about a; 1 of 2; ");
  Click("cmdCloseNotice");
  EXPECT_EQ(Shown(), "about c; ");
  bar->findChild<QWidget*>("cmdNotice1")->setFocus();
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
  EXPECT_EQ(Shown(), "nothing");
  EXPECT_EQ(chosen, "b") << "closed is not decided";
}

TEST_F(NoticeBarTest, NeverAppearsUnderAPressedButton) {
  QTest::mousePress(window.windowHandle(), Qt::LeftButton, {}, {5, 5});
  Post("a", Urgency::asks);
  EXPECT_EQ(Shown(), "nothing");
  QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, {}, {5, 5});
  EXPECT_TRUE(QTest::qWaitFor([this] { return bar->isVisible(); }, 20000));
  const QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(bar);
  EXPECT_EQ(spoken->role(), QAccessible::AlertMessage);
  EXPECT_EQ(spoken->text(QAccessible::Name), "about a");
}

TEST_F(NoticeBarTest, WaitsWhileACellIsEdited) {
  isBusy = true;
  Post("a", Urgency::asks);
  QTest::qWait(250);
  EXPECT_EQ(Shown(), "nothing");
  isBusy = false;
  EXPECT_TRUE(QTest::qWaitFor([this] { return bar->isVisible(); }, 20000));
}

}  // namespace
}  // namespace polefit::testing
