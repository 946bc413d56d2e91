#include <gtest/gtest.h>

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QTabWidget>
#include <QTest>
#include <QTextBrowser>
#include <QWindow>

#include "app/ui/help_keys.h"

namespace polefit::testing {
namespace {

/// The heading that the help window shows at its top for what has the focus in `window`.
std::string Shown(const QWidget& window) {
  HelpWindow help;
  help.ShowChapter(ChapterOf(window));
  QTest::qWait(1);
  return help.HeadingAtTop().toStdString();
}

TEST(HelpTest, EveryTabPanelAndDialogHasItsChapterInTheManual) {
  QWidget main;
  auto* tabs = new QTabWidget(&main);
  tabs->setObjectName("CVX_Tabs");
  const char* const chapters[] = {"Tab 1: Start",  "Tab 2: Poles & Zeros", "Tab 3: Misc.",
                                  "Passband data", "Delay data",           "Tab 6: Solver Settings",
                                  "Tab 7: Run"};
  for (const char* const chapter : chapters) {
    tabs->setCurrentIndex(tabs->addTab(new QWidget, ""));
    EXPECT_EQ(Shown(main), chapter);
  }
  const std::pair<const char*, const char*> windows[] = {
      {"frmIntro", "Start the program"},
      {"frmDemo", "The seven examples"},
      {"frmRun", "The run panel"},
      {"frmImport", "Modelling a measured response"},
      {"frmExport", "Taking the result along"},
      {"frmFill", "Fill Column"},
      {"frmVersions", "Former versions of a file"},
      {"dockCurves", "The curves"},
      {"findingsPanel", "Findings"},
      {"plainViewer", "The report"},
      {"a box", "Messages and what to do"}};
  for (const auto& [name, chapter] : windows) {
    QWidget window;
    auto* part = new QWidget(&window);
    part->setObjectName(name);
    auto* box = new QLineEdit(part);
    window.show();
    box->setFocus();
    EXPECT_EQ(Shown(window), chapter) << name;
  }
}

TEST(HelpTest, F1OpensAWindowThatCanBeUsedBesideAModalDialog) {
  HelpKeys keys;
  QDialog dialog;
  dialog.setObjectName("frmExport");
  dialog.setModal(true);
  auto* box = new QLineEdit(&dialog);
  dialog.show();
  QTest::keyClick(box, Qt::Key_F1);
  auto* help = dialog.findChild<HelpWindow*>();
  ASSERT_NE(help, nullptr);
  EXPECT_TRUE(help->isVisible());
  // What a modal dialog blocks takes no key.
  ASSERT_TRUE(QTest::qWaitForWindowActive(help));
  auto* wanted = help->findChild<QLineEdit*>("helpFind");
  wanted->setFocus();
  QTest::keyClick(help->windowHandle(), Qt::Key_X);
  EXPECT_EQ(wanted->text(), "x");
  QTest::keyClick(help->windowHandle(), Qt::Key_Escape);
  EXPECT_FALSE(help->isVisible());
  EXPECT_TRUE(dialog.isVisible());
}

TEST(HelpTest, FindGoesRoundAndSaysWhatDoesNotOccur) {
  HelpWindow help;
  help.ShowChapter("The formulas");
  auto& wanted = *help.findChild<QLineEdit*>("helpFind");
  auto& page = *help.findChild<QTextBrowser*>("helpPage");
  wanted.setText("raised-cosine");
  for (const int key : {Qt::Key_Return, Qt::Key_F3}) {
    QTest::keyClick(&wanted, static_cast<Qt::Key>(key));
    EXPECT_EQ(page.textCursor().selectedText(), "raised-cosine");
  }
  wanted.setText("no such word");
  QTest::keyClick(&wanted, Qt::Key_Return);
  EXPECT_EQ(help.findChild<QLabel*>("helpOutcome")->text(), "'no such word' does not occur");
}

TEST(HelpTest, LinksLeadToTheirSections) {
  HelpWindow help;
  auto& page = *help.findChild<QTextBrowser*>("helpPage");
  help.ShowChapter("");
  Q_EMIT page.anchorClicked(QUrl("#nothing-is-lost"));
  EXPECT_EQ(help.HeadingAtTop(), "Nothing is lost");
  EXPECT_FALSE(page.toMarkdown().contains("{{version}}"));
}

}  // namespace
}  // namespace polefit::testing
