#include "exchange/ui/import_dialog.h"

#include <gmock/gmock.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTableView>
#include <QTest>

namespace polefit::testing {
namespace {

using ::testing::HasSubstr;

class ImportDialogTest : public ::testing::Test {
 protected:
  /// Opens the dialog on a file with this text.
  void Open(const std::string& text, const std::string& name = "x.csv") {
    const auto read = [=](const TextChoices& choices) {
      return ReadSourceBytes(name, text, choices);
    };
    dialog_.emplace(PlanFor(read({}), form_), form_, read, nullptr);
  }
  template <typename Part>
  Part& The(const char* name) {
    return *dialog_->findChild<Part*>(name);
  }
  void Choose(const char* name, const QString& entry) {
    auto& box = The<QComboBox>(name);
    const int index = box.findText(entry);
    ASSERT_GE(index, 0) << entry.toStdString();
    box.setCurrentIndex(index);
    Q_EMIT box.activated(index);
  }
  std::string Cell(int row, int column) {
    const QAbstractItemModel* const model = The<QTableView>("tblImportRows").model();
    return model->index(row, column).data().toString().toStdString();
  }
  std::string Line() { return The<QLabel>("lblImportSummary").text().toStdString(); }
  bool CanImport() { return The<QPushButton>("cmdImport").isEnabled(); }

  FormCells form_;
  std::optional<ImportDialog> dialog_;
};

TEST_F(ImportDialogTest, ShowsWhatArrivesAndWhatItDoes) {
  Open("MHz;dB\n1;-1\nbad\n2;-6\n3;-20\n");
  EXPECT_TRUE(CanImport());
  EXPECT_EQ(Line(), "3 rows, 1 to 3 MHz, -1 to -20 dB");
  EXPECT_EQ(Cell(0, 2), ".891250938");
  EXPECT_EQ(The<QLabel>("lblImportSkipped").text(), "1 line skipped: 3");
  EXPECT_THAT(The<QLabel>("lblImportAnswers").text().toStdString(), HasSubstr("5: 1, 7 to 9"));
  EXPECT_THAT(The<QLabel>("lblImportGuess").text().toStdString(),
              HasSubstr("guessed: MHz, from the heading; guessed: dB, from the heading"));
  QTest::keyClicks(&The<QLineEdit>("txtImportFrom"), "1.5");
  EXPECT_EQ(Line(), "2 rows, 2 to 3 MHz, -6 to -20 dB");
  QTest::keyClicks(&The<QLineEdit>("txtImportTo"), "2");
  EXPECT_EQ(Line(), "only 1 row is left: at least 2 are needed");
  EXPECT_FALSE(CanImport());
}

TEST_F(ImportDialogTest, ChoicesReachThePlan) {
  Open("kHz,a,b,gd (us)\n1000,.5,-3,1\n2000,.4,-6,2\n3000,.1,-7,3\n");
  EXPECT_EQ(Cell(1, 2), ".4");
  Choose("cboImportValue", "3: b");
  EXPECT_EQ(dialog_->Plan().choices.value.kind, ValueKind::decibel);
  Choose("cboImportRole", "what I have, to be equalised");
  Choose("cboImportDelay", "4: gd (us)");
  EXPECT_EQ(Cell(1, 1), ".4");
  EXPECT_EQ(Cell(1, 5), "2000");
  Choose("cboImportUnit", "MHz");
  EXPECT_EQ(Cell(0, 0), "1000");
  Choose("cboImportThinning", "every n-th");
  EXPECT_EQ(dialog_->Preview().rows.size(), 2U);
  The<QCheckBox>("chkImportNormalise").click();
  EXPECT_TRUE(dialog_->Plan().choices.rows.normalise);
  Choose("cboImportSeparator", "semicolon");
  EXPECT_FALSE(CanImport());
  Choose("cboImportSeparator", "comma");
  EXPECT_TRUE(CanImport());
}

TEST_F(ImportDialogTest, ValuesThatCouldBeAnythingWait) {
  Open("f,a\n1,20\n2,30\n");
  EXPECT_FALSE(CanImport());
  EXPECT_EQ(The<QComboBox>("cboImportKind").currentIndex(), -1);
  Choose("cboImportKind", "dB");
  EXPECT_TRUE(CanImport());
  EXPECT_EQ(Cell(0, 2), "10");
}

TEST_F(ImportDialogTest, ANetworkFileLeavesOnlyItsParameters) {
  Open("# MHz S RI R 50\n1 0 0 3 4 0 0 0 0\n2 0 0 0 2 1 1 0 0\n", "dut.s2p");
  EXPECT_EQ(The<QComboBox>("cboImportValue").currentText(), "S21");
  EXPECT_FALSE(The<QComboBox>("cboImportUnit").isEnabled());
  EXPECT_EQ(Cell(0, 2), "5");
  Choose("cboImportValue", "S12");
  EXPECT_EQ(Cell(1, 2), "1.41421356");
}

}  // namespace
}  // namespace polefit::testing
