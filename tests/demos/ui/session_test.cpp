#include "demos/ui/session.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QPlainTextEdit>
#include <QTabWidget>

#include "demos/ui/installed_program.h"
#include "form/question_catalogue.h"
#include "platform/console_host.h"
#include "responsefile/writer.h"

namespace polefit {
namespace {

using ::testing::ElementsAre;
using testing::FileBytes;
using ::testing::HasSubstr;
using ::testing::StartsWith;
using testing::WriteBytes;

constexpr const char* kGoodSolver =
    "rm -f '~pft-out.txt'\n"
    "echo 'start 1  120 of 2000'\n"
    "printf 'the report\\r\\n' > '~pft-out.txt'\n"
    "sed 's/^76.7/80.1/' \"$read\" > last-run.ini\n"
    "echo 'pfit: converged (6 of 8 starts agree); rms error .001, 120 evaluations'\n";

class SessionTest : public testing::InstalledProgram {
 protected:
  /// The control of the main form that has the focus, or gets it with the window.
  static std::string FocusName() {
    const QWidget* const form = Window("frmMain");
    return form == nullptr || form->focusWidget() == nullptr
               ? "none"
               : form->focusWidget()->objectName().toStdString();
  }

  /// A file in the "User" folder with one passband point and the tmin answer given.
  std::string MakeFile(const std::string& name, const std::string& tmin) {
    ResponseRecord record;
    record.Slot(slot::kTmin) = tmin;
    record.Slot(slot::kFreqPoints) = "1";
    record.passband.Resize(2);
    for (int column = 1; column <= 4; ++column) record.passband.At(1, column) = "1";
    record.delay.Resize(1);
    record.nFreqPoints = 1;
    ConsoleHost writing;
    WriteResponseFile(writing, record, {Installed("User"), name});
    return Installed("User/" + name);
  }
};

TEST_F(SessionTest, AFirstStartOpensTheIntroductionAndExitWritesNothing) {
  std::filesystem::remove(Installed("Polefit.ini"));
  std::filesystem::remove(Installed("User"));
  Start();
  ASSERT_NE(Window("frmIntro"), nullptr);
  EXPECT_EQ(Window("frmIntro")->windowTitle(), "Introduction to Veltra Based Software");
  EXPECT_EQ(Window("frmMain"), nullptr);
  Click("frmIntro", "cmdExitIntro");
  EXPECT_TRUE(session_->HasEnded());
  EXPECT_TRUE(std::filesystem::is_empty(base_ + "/Tessel.hz"));
}

TEST_F(SessionTest, CreateYourDataLeadsToTheMainFormAndLaterStartsGoThereAtOnce) {
  std::filesystem::remove(Installed("Polefit.ini"));
  Start();
  Click("frmIntro", "cmdCreateIntro");
  EXPECT_EQ(Window("frmIntro"), nullptr);
  ASSERT_NE(Window("frmMain"), nullptr);
  EXPECT_EQ(FocusName(), "chkEqualDelay");
  EXPECT_EQ(TextOf("frmMain", "LastFileName"), "Start Up Values");
  Start();
  EXPECT_EQ(Window("frmIntro"), nullptr);
  EXPECT_NE(Window("frmMain"), nullptr);
}

TEST_F(SessionTest, ADemoRunsFromTheIntroductionAndCancelLeadsToTheMainForm) {
  std::filesystem::remove(Installed("Polefit.ini"));
  InstallSolver("echo \"$*\" > words\n" + std::string(kGoodSolver));
  MakeFile("Ex-Delay.111", "76.7");
  Start();
  Click("frmIntro", "cmdRunIntro");
  ASSERT_NE(Window("frmDemo"), nullptr);
  EXPECT_EQ(TextOf("frmDemo", "Description1"),
            "4 Poles & 3 (Omega) Zeros to equalize sidelobe peaks");
  Click("frmDemo", "Exam5");
  Click("frmDemo", "cmdRunDemo");
  EXPECT_THAT(Verdict(), StartsWith("Converged"));
  EXPECT_EQ(FileBytes(Installed("words")),
            "Ex-Delay.111 " + Installed("User ") + base_ + " " + base_.substr(0, 2) + "\n");
  Window("frmDemo")->close();
  EXPECT_EQ(Window("frmDemo"), nullptr);
  ASSERT_NE(Window("frmMain"), nullptr);
  EXPECT_EQ(FocusName(), "chkEqualDelay");
}

TEST_F(SessionTest, DemosFromTheMenuTakeItsPlaceAndGiveItBack) {
  Start();
  SetText("tmin", "1");
  answers_.Press(QMessageBox::Cancel);
  Choose("mnuDemosRun");
  EXPECT_NE(Window("frmMain"), nullptr);
  answers_.Press(QMessageBox::No);
  Choose("mnuDemosRun");
  EXPECT_EQ(Window("frmMain"), nullptr);
  Click("frmDemo", "Exam2");
  Click("frmDemo", "cmdCancelDemo");
  ASSERT_NE(Window("frmMain"), nullptr);
  EXPECT_EQ(Window("frmMain")->windowTitle(), "Start Up Values - Polefit");
  EXPECT_EQ(TextOf("frmMain", "tmin"), "1");
  EXPECT_EQ(FocusName(), "chkEqualDelay");
  InstallSolver("echo \"$1\" > words");
  MakeFile("Ex-Yzero.101", "1");
  answers_.Press(QMessageBox::No);
  Choose("mnuDemosRun");
  EXPECT_FALSE(In<QAbstractButton>("frmDemo", "Exam2")->isChecked());
  Click("frmDemo", "Exam1");
  QTest::keyClick(In<QWidget>("frmDemo", "Exam1"), Qt::Key_Return);
  EXPECT_NE(Verdict(), "still running");
  EXPECT_EQ(FileBytes(Installed("words")), "Ex-Yzero.101\n");
}

TEST_F(SessionTest, ATypicalRunFromOpenToTheImprovedValues) {
  InstallSolver(kGoodSolver);
  MakeFile("Ex-Yzero.101", "76.7");
  Start();
  answers_.Choose(Installed("User/Ex-Yzero.101"));
  Choose("mnuFileOpen");
  EXPECT_EQ(TextOf("frmMain", "LastFileName"), "Ex-Yzero.101");
  GridView& passData = session_->Values().frmMain.PassData();
  EXPECT_EQ(passData.RowCount(), 5);
  In<QTabWidget>("frmMain", "CVX_Tabs")->setCurrentIndex(3);
  for (int column = 1; column <= 4; ++column) passData.SetText(2, column, "2");
  SetText("Note1", "mine");
  answers_.Choose("run1.txt");
  Choose("mnuFileSaveAs");
  answers_.Press(QMessageBox::No);
  Click("frmMain", "cmdSubmit");
  EXPECT_THAT(Verdict(), StartsWith("Converged (6 of 8 starts agree)"));
  EXPECT_THAT(FileBytes(Installed("User/run1.txt")), HasSubstr(" 2\t\t! 23."));
  Click("frmRun", "cmdReport");
  ASSERT_NE(Window("plainViewer"), nullptr);
  EXPECT_EQ(In<QPlainTextEdit>("plainViewer", "viewerText")->toPlainText(), "the report\n");
  delete Window("plainViewer");
  answers_.Press(QMessageBox::No);
  Click("frmRun", "cmdImproved");
  EXPECT_EQ(TextOf("frmMain", "tmin"), "80.1");
  EXPECT_EQ(TextOf("frmMain", "LastFileName"), "Start Up Values");
  EXPECT_EQ(session_->Values().DataChanged, 0);
  EXPECT_THAT(answers_.said, ElementsAre("Data in form has changed!|Save current data?",
                                         "Data in form has changed!|Save current data?"));
  Start();
  EXPECT_EQ(TextOf("frmMain", "tmin"), "80.1");
}

TEST_F(SessionTest, TheRealSolverImprovesAnExampleAndTheNextRunStartsThere) {
  std::filesystem::create_symlink(POLEFIT_SOLVER, Installed("pfit"));
  std::filesystem::copy(POLEFIT_EXAMPLES "/Ex-Yzero.101", Installed("User/Ex-Yzero.101"));
  Start(Installed("User/Ex-Yzero.101"));
  const std::string typed = TextOf("frmMain", "poleReal");
  Choose("mnuFileSubmit");
  EXPECT_THAT(Verdict(), StartsWith("Converged"));
  EXPECT_THAT(FileBytes(Installed("~pft-out.txt")), HasSubstr("End of report."));
  Click("frmRun", "cmdImproved");
  EXPECT_NE(TextOf("frmMain", "poleReal"), typed);
  answers_.Press(QMessageBox::Ok);
  answers_.Choose("run1.txt");
  Choose("mnuFileSubmit");
  EXPECT_THAT(Verdict(), StartsWith("Converged"));
}

TEST_F(SessionTest, AFileOnTheCommandLineIsOpenedAfterStartUp) {
  std::filesystem::rename(MakeFile("-a file.txt", "12"), root_.File("-a file.txt"));
  Start(root_.File("-a file.txt"));
  EXPECT_EQ(TextOf("frmMain", "tmin"), "12");
  EXPECT_EQ(TextOf("frmMain", "LastFileName"), "-a file.txt");
  SetText("tmin", "13");
  Choose("mnuFileSave");
  EXPECT_THAT(FileBytes(root_.File("-a file.txt")), HasSubstr("13\t\t! 1a."));
  answers_.Press(QMessageBox::Ok);
  Start(Installed("none.txt"));
  EXPECT_EQ(TextOf("frmMain", "LastFileName"), "Start Up Values");
  EXPECT_THAT(answers_.said.back(), HasSubstr("none.txt' file?"));
}

TEST_F(SessionTest, SaveRefusesPatternsAndAsksBeforeItOverwrites) {
  const std::string path = MakeFile("old.txt", "5");
  Start();
  for (const std::string& name : {std::string("run*.txt"), std::string("none/new.txt"),
                                  std::string("a\\b.txt"), std::string(251, 'n')}) {
    answers_.Choose(name);
    answers_.Press(QMessageBox::Ok);
  }
  answers_.Choose("old.txt");
  answers_.Press(QMessageBox::No);
  answers_.Choose("new.txt");
  Choose("mnuFileSaveAs");
  EXPECT_EQ(TextOf("frmMain", "LastFileName"), "new.txt");
  EXPECT_THAT(FileBytes(path), HasSubstr("5\t\t! 1a."));
  EXPECT_FALSE(std::filesystem::exists(Installed("User/run*.txt")));
}

TEST_F(SessionTest, TheCurrentFolderIsTheOneChosenLast) {
  Start();
  answers_.Choose(root_.File("elsewhere.txt"));
  Choose("mnuFileSaveAs");
  EXPECT_EQ(std::filesystem::current_path(), root_.Path());
  SetText("tmin", "3");
  Choose("mnuFileSave");
  EXPECT_THAT(FileBytes(root_.File("elsewhere.txt")), HasSubstr("3\t\t! 1a."));
  answers_.Cancel();
  Choose("mnuFileDelete");
  answers_.Choose(root_.File("elsewhere.txt"));
  answers_.Press(QMessageBox::Yes);
  Choose("mnuFileDelete");
  EXPECT_FALSE(std::filesystem::exists(root_.File("elsewhere.txt")));
}

TEST_F(SessionTest, ClosingTheWindowEndsTheProgramAndAsksNothing) {
  Start();
  SetText("tmin", "1");
  Choose("mnuFileExit");
  EXPECT_TRUE(session_->HasEnded());
}

TEST_F(SessionTest, ABrokenInstallationEndsTheProgramWithItsMessage) {
  WriteBytes(Installed("Polefit.ini"), "");
  answers_.Press(QMessageBox::Ok);
  Start();
  EXPECT_TRUE(session_->HasEnded());
  EXPECT_EQ(Window("frmMain"), nullptr);
  EXPECT_THAT(answers_.said.back(), HasSubstr("Input past end of fileSuggest re-installing"));
}

TEST_F(SessionTest, AnErrorThatNoRoutineCatchesIsShownAndTheFormStays) {
  Start();
  SetText("tmin", "41");
  answers_.Press(QMessageBox::Ok);
  Choose("mnuHelpEmail");
  EXPECT_THAT(answers_.said.back(), StartsWith("Polefit|Error 53: File not found"));
  EXPECT_EQ(TextOf("frmMain", "tmin"), "41");
  EXPECT_FALSE(session_->HasEnded());
}

TEST_F(SessionTest, SubmitRegistersOneRestartAndCopiesTheStartScript) {
  InstallSolver(kGoodSolver);
  Start(MakeFile("run1.txt", "76.7"));
  Choose("mnuFileSubmit");
  Verdict();
  EXPECT_THAT(FileBytes(root_.File("config/autostart/polefit-restart.desktop")),
              HasSubstr("polefit\"\n"));
  EXPECT_TRUE(
      QTest::qWaitFor([this] { return FileBytes(base_ + "/DOSstart.tmp") == "start\r\n"; }));
}

TEST_F(SessionTest, ExamplesManualAndMailGoToTheDesktopsPrograms) {
  const std::string program = root_.File("any program");
  const std::string words = root_.File("words");
  WriteBytes(program, "#!/bin/sh\nprintf '%s' \"$*\" > '" + words + "'\n");
  ::chmod(program.c_str(), 0755);
  std::filesystem::create_directories(root_.File("none/applications"));
  WriteBytes(root_.File("none/applications/any.desktop"),
             "[Desktop Entry]\nExec=\"" + program + "\" --open %u\n");
  WriteBytes(root_.File("none/applications/mimeapps.list"),
             "[Default Applications]\ntext/plain=any.desktop\ntext/rtf=any.desktop\n"
             "x-scheme-handler/mailto=any.desktop\n");
  const auto opened = [&] {
    EXPECT_TRUE(QTest::qWaitFor([&] { return !FileBytes(words).empty(); }));
    const std::string bytes = FileBytes(words);
    std::filesystem::remove(words);
    return bytes;
  };
  Start();
  answers_.Choose(MakeFile("Ex-it's a.1", "1"));
  Choose("mnuViewDemos");
  EXPECT_EQ(opened(), "--open " + Installed("User/Ex-it's a.1"));
  Choose("mnuHelpEmail");
  EXPECT_EQ(FileBytes(words),
            "--open mailto:support@polefit.example?subject=Polefit%204.12%20questions/problems");
  std::filesystem::remove(words);
  answers_.Press(QMessageBox::Ok);
  Choose("mnuHelpManual");
  EXPECT_EQ(answers_.said.back(), "Polefit|Cannot find '" + Installed("manual.rtf") + "'.");
  WriteBytes(Installed("manual.rtf"), "{\\rtf1 x}");
  Choose("mnuHelpManual");
  EXPECT_EQ(opened(), "--open " + Installed("manual.rtf"));
}

}  // namespace
}  // namespace polefit
