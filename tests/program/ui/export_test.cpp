#include <gmock/gmock.h>

#include <QComboBox>

#include "exchange/last_result.h"
#include "program/ui/installed_program.h"

namespace polefit::testing {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;

class ExportTest : public InstalledProgram {
 protected:
  void InstallResult() {
    WriteBytes(Installed("last-run.ini"), FileBytes(POLEFIT_EXAMPLES "/Ex-Yzero.102"));
  }
};

TEST_F(ExportTest, ThereIsNothingToExportBeforeTheFirstRun) {
  Start();
  EXPECT_FALSE(The<QAction>("mnuFileExport").isEnabled());
  InstallResult();
  Start();
  EXPECT_TRUE(The<QAction>("mnuFileExport").isEnabled());
}

TEST_F(ExportTest, TheLastResultIsSavedUnderTheChosenName) {
  InstallResult();
  Start();
  const auto folder = std::filesystem::current_path();
  answers.PressIn("cmdExportSave");
  answers.Choose(root.File("filter.py"));
  answers.Cancel();
  Choose("mnuFileExport");
  EXPECT_THAT(FileBytes(root.File("filter.py")),
              AllOf(HasSubstr("# File: Ex-Yzero.102\n"), HasSubstr("sections = np.array([")));
  EXPECT_EQ(std::filesystem::current_path(), folder) << "where Save looks for the current file";
}

TEST_F(ExportTest, NoMeasuredFileIsSuggestedAsTheOneToReplace) {
  InstallResult();
  Start();
  answers.Do([this](QDialog& dialog) {
    const std::pair<const char*, const char*> names[] = {
        {"Python module (NumPy, SciPy)", "Ex-Yzero.py"},
        {"Table of poles and zeros", "Ex-Yzero_fit.csv"},
        {"Touchstone two-port", "Ex-Yzero_fit.s2p"}};
    for (const auto& [format, name] : names) {
      dialog.findChild<QComboBox*>("exportFormats")->setCurrentText(format);
      answers.Do([name](QDialog& save) {
        EXPECT_EQ(save.findChild<QLineEdit*>("fileNameEdit")->text(), name);
        save.reject();
      });
      dialog.findChild<QPushButton*>("cmdExportSave")->click();
    }
    dialog.reject();
  });
  Choose("mnuFileExport");
}

TEST_F(ExportTest, AResultIsOutdatedWhenTheFormAsksForSomethingElse) {
  InstallResult();
  Start(POLEFIT_EXAMPLES "/Ex-Yzero.101");
  EXPECT_FALSE(ReadLastResult(session->Values())->isOutdated);
  SetText("Gain", "7");
  EXPECT_FALSE(ReadLastResult(session->Values())->isOutdated) << "the run changes it itself";
  SetText("freqNorm", "11");
  EXPECT_TRUE(ReadLastResult(session->Values())->isOutdated);
}

}  // namespace
}  // namespace polefit::testing
