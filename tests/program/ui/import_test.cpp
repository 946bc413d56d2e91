#include <gmock/gmock.h>

#include <QClipboard>
#include <QDropEvent>
#include <QLabel>
#include <QMimeData>
#include <QTabWidget>
#include <QUrl>

#include "form/cells.h"
#include "grids/ui/grid_widget.h"
#include "program/ui/installed_program.h"

namespace polefit::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

/// A sweep, a delay of it, and a problem; an empty form.
class ImportTest : public InstalledProgram {
 protected:
  ImportTest() {
    WriteBytes(root.File("dut.csv"), "MHz,mag,gd (ns)\n1,.9,5\n2,.5,7\n3,.1,6\n");
    WriteBytes(root.File("delay.csv"), "MHz,gd (ns)\n1,1\n2,4\n");
    Start();
    EXPECT_TRUE(QTest::qWaitForWindowActive(The("CVX_Tabs").window()));
  }

  /// Drops files on a part of the window and waits until they are taken.
  static void Drop(const QString& part, const std::vector<std::string>& paths) {
    QMimeData data;
    QList<QUrl> urls;
    for (const std::string& path : paths) urls << QUrl::fromLocalFile(QString::fromStdString(path));
    data.setUrls(urls);
    data.setText(urls.front().toString());
    QWidget& target = The(part);
    const QPoint middle = target.rect().center();
    QDragEnterEvent enter(middle, Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(&target, &enter);
    EXPECT_TRUE(enter.isAccepted()) << part.toStdString();
    QDropEvent drop(middle, Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(&target, &drop);
    QTest::qWait(50);
  }
  void Import() { answers.PressIn("cmdImport"); }
  GridView& PassData() { return session->Values().windows.frmMain.PassData(); }
  GridView& DelayData() { return session->Values().windows.frmMain.DelayData(); }
};

TEST_F(ImportTest, AnImportIsOneStepThatGivesTheFormerFileBack) {
  const FormCells before = CellsOf(session->Values());
  answers.Choose(root.File("dut.csv"));
  Import();
  Choose("mnuFileImport");
  EXPECT_EQ(PassData().Text(2, 3), ".5");
  EXPECT_TRUE(HasFocus("nPoles"));
  EXPECT_THAT(The("CVX_Tabs").window()->windowTitle().toStdString(), StartsWith("dut.1* - "));
  EXPECT_EQ(The<QAction>("mnuEditUndo").text(), "&Undo Import Points");
  Choose("mnuEditUndo");
  EXPECT_TRUE(CellsOf(session->Values()) == before);
}

TEST_F(ImportTest, AFileDroppedOnAnyPartOpensOrComesIn) {
  Drop("iPower", {MakeFile("run1.txt", "12")});
  EXPECT_EQ(TextOf("tmin"), "12") << "no text was dropped into the box";
  EXPECT_EQ(session->Values().files.currentFileName, "run1.txt");
  Import();
  Drop("CVX_Tabs", {root.File("dut.csv")});
  EXPECT_EQ(PassData().Text(3, 1) + session->Values().files.currentFileName, "3run1.txt");
  Choose("mnuEditUndo");
  EXPECT_EQ(PassData().Text(3, 1), "");
}

TEST_F(ImportTest, ADelayDroppedOnTabFiveGoesIntoItsTableAlone) {
  The<QTabWidget>("CVX_Tabs").setCurrentIndex(4);
  answers.Do([](QDialog& dialog) {
    EXPECT_EQ(dialog.windowTitle(), "Import Delay of dut.csv");
    dialog.accept();
  });
  Drop("DelayData", {root.File("dut.csv")});
  EXPECT_EQ(DelayData().Text(1, 2), "2") << "the largest delay less this one";
  EXPECT_EQ(PassData().Text(1, 1), "");
  EXPECT_TRUE(session->Values().windows.frmMain.IsChecked("chkEqualDelay"));
}

TEST_F(ImportTest, OfTwoFilesDroppedTogetherTheSecondIsTheDelay) {
  answers.Do([](QDialog& dialog) {
    const auto* line = dialog.findChild<QLabel*>("lblImportSummary");
    EXPECT_THAT(line->text().toStdString(), HasSubstr("2 delay rows, 1 to 2 MHz, TX 0 to 3 ns"));
    dialog.accept();
  });
  Drop("CVX_Tabs", {root.File("dut.csv"), root.File("delay.csv")});
  EXPECT_EQ(PassData().Text(1, 3) + DelayData().Text(1, 2), ".93");
}

TEST_F(ImportTest, APasteWithHeadingsAsksAndIsOneStepWithItsName) {
  SetText("tmin", "7");
  The<QTabWidget>("CVX_Tabs").setCurrentIndex(3);
  The("PassData").setFocus();
  const FormCells before = CellsOf(session->Values());
  QApplication::clipboard()->setText("MHz\tdB\r\n1,5\t-3\r\n2,5\t-6,0\r\n");
  answers.PressIn("cmdImport");
  answers.Press(QMessageBox::No);
  Choose("mnuEditPaste");
  EXPECT_EQ(PassData().Text(1, 1) + " " + PassData().Text(2, 1), "1.5 2.5");
  Choose("mnuEditUndo");
  EXPECT_TRUE(CellsOf(session->Values()) == before) << "its file's name too";
}

}  // namespace
}  // namespace polefit::testing
