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
    const auto choose = [this] { return other_; };
    ImportPlan plan = isOnlyDelay_ ? DelayPlanFor(read({}), form_) : PlanFor(read({}), form_);
    dialog_.emplace(std::move(plan), form_, ImportFiles{read, choose}, nullptr);
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

  std::string Text(const char* name) { return The<QLabel>(name).text().toStdString(); }
  /// The form gets points of an older problem: frequencies with Yin 2 and Yout 1.
  void FillForm(const std::vector<std::string>& frequencies) {
    std::vector<PassbandCells> rows;
    for (const std::string& frequency : frequencies) rows.push_back({frequency, "2", "1", "1"});
    PutRows(rows, form_.typed);
    form_.files.currentFileName = "old.1";
    form_.typed.Slot(slot::kFreqNorm) = "10";
  }

  FormCells form_;
  std::optional<SourceFile> other_;
  bool isOnlyDelay_ = false;
  std::optional<ImportDialog> dialog_;
};

TEST_F(ImportDialogTest, ShowsWhatArrivesAndWhatItDoes) {
  Open("MHz;dB\n1;-1\nbad\n2;-6\n3;-20\n");
  EXPECT_TRUE(CanImport());
  EXPECT_EQ(Line(), "3 rows, 1 to 3 MHz, -1 to -20 dB");
  EXPECT_EQ(Cell(0, 2), ".891250938");
  EXPECT_EQ(Cell(1, 0), "line 3 skipped: bad");
  EXPECT_EQ(Cell(2, 0), "2");
  EXPECT_EQ(The<QLabel>("lblImportSkipped").text(), "1 line skipped: 3");
  EXPECT_THAT(Text("lblImportAnswers"), HasSubstr("5: 1, 7 to 9"));
  EXPECT_THAT(Text("lblImportAnswers"), HasSubstr("Note 1: Points of x.csv, dB"));
  EXPECT_THAT(The<QLabel>("lblImportGuess").text().toStdString(),
              HasSubstr("guessed: MHz, from the heading; dB, from the heading"));
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
  auto& delay = The<QComboBox>("cboImportDelay");
  for (int i = 0; i < 4; ++i) QTest::keyClick(&delay, Qt::Key_Down);
  EXPECT_EQ(delay.currentText(), "4: gd (us)") << "by keys, past what asks for a file or a phase";
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

TEST_F(ImportDialogTest, YoutComesFromATemplateOrAnotherFile) {
  Open("MHz,dB\n1,-1\n2,-6\n3,-20\n");
  Choose("cboImportRole", "what I have, to be equalised");
  EXPECT_EQ(Cell(2, 2), "1");
  Choose("cboImportOther", "a fill template");
  Choose("cboImportTemplate", "Gaussian");
  // x is 1 at 1 MHz, the last frequency within 3 dB of the first.
  EXPECT_EQ(Cell(0, 2), ".707945784");
  The<QLineEdit>("txtImportFormula").clear();
  QTest::keyClicks(&The<QLineEdit>("txtImportFormula"), "f/");
  EXPECT_THAT(Line(), HasSubstr("Yout: Character 3"));
  EXPECT_FALSE(CanImport());
  other_ = ReadSourceBytes("want.csv", "MHz,mag\n1.5,.8\n2.5,.2\n4,.1\n");
  Choose("cboImportOther", "another file ...");
  EXPECT_EQ(The<QComboBox>("cboImportOther").currentText(), "want.csv");
  EXPECT_EQ(Cell(0, 0), "2");
  EXPECT_EQ(Cell(0, 2), ".4");
  EXPECT_THAT(Text("lblImportSkipped"), HasSubstr("1 points lie beyond the ends of want.csv"));
}

TEST_F(ImportDialogTest, AnOlderFormAsksWhatStays) {
  FillForm({"1", "2"});
  Open("MHz,mag\n1,.9\n1.5,.8\n3,.1\n");
  EXPECT_THAT(Line(), HasSubstr("; replaces 2 rows"));
  EXPECT_EQ(Text("lblImportAnswers"), "");
  EXPECT_EQ(The<QCheckBox>("chkImportFreqNorm").text(), "&question 5, Freq Norm, becomes 1.5");
  The<QCheckBox>("chkImportFreqNorm").click();
  EXPECT_EQ(Text("lblImportAnswers"), "Sets question 5: 1.5");
  // Only Yout is taken: the frequencies of the table stay unless the user says otherwise.
  Choose("cboImportRole", "what I want");
  EXPECT_EQ(The<QComboBox>("cboImportFrequencies").currentText(), "frequencies of the table");
  EXPECT_EQ(Cell(0, 2) + " " + Cell(1, 1), ".9 2");
  Choose("cboImportFrequencies", "add to the table");
  EXPECT_EQ(Cell(1, 0), "1.5");
  FillForm({"1", "1.5", "3"});
  Open("MHz,mag\n1,.9\n1.5,.8\n3,.1\n");
  EXPECT_TRUE(The<QComboBox>("cboImportFrequencies").isHidden());
}

TEST_F(ImportDialogTest, ADelayComesAloneOrFromAnotherFile) {
  isOnlyDelay_ = true;
  Open("MHz,dB,gd (ns)\n1,20,3\n1.5,25,x\n2,30,5\n");
  EXPECT_EQ(Line(), "2 delay rows, 1 to 2 MHz, TX 0 to 2 ns");
  EXPECT_EQ(Cell(0, 0) + " " + Cell(0, 1) + " " + Cell(1, 0), "1 2 line 3 skipped: 1.5,25,x");
  Choose("cboImportRole", "what I have, to be equalised");
  EXPECT_EQ(Cell(0, 1), "3");
  isOnlyDelay_ = false;
  other_ = ReadSourceBytes("d.csv", "MHz,gd (ns)\n1,7\n2,9\n");
  Open("MHz,dB\n1,-1\n2,-2\n");
  Choose("cboImportDelay", "another file ...");
  EXPECT_EQ(The<QComboBox>("cboImportDelay").currentText(), "d.csv");
  EXPECT_EQ(Cell(0, 5), "2");
  EXPECT_THAT(Text("lblImportAnswers"), HasSubstr("TX is the largest delay minus the delay"));
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
