#include "program/ui/session.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLabel>
#include <QMenu>
#include <QPlainTextEdit>
#include <QTabWidget>
#include <csignal>

#include "platform/ui/termination.h"
#include "program/ui/installed_program.h"

namespace polefit::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;

using SessionTest = InstalledProgram;

constexpr const char* kFreshTitle = "Start Up Values - Polefit";
constexpr const char* kDemoTitle = "Polefit Demo ... a Veltra Based Application";

TEST_F(SessionTest, AFirstStartOpensTheIntroductionWhichLeadsOutOrToTheMainForm) {
  std::filesystem::remove(Installed("Polefit.ini"));
  std::filesystem::remove(Installed("User"));
  Start();
  EXPECT_THAT(Titles(), ElementsAre("Introduction to Veltra Based Software"));
  EXPECT_EQ(session->Values().files.currentFolder, "null");
  Click("cmdExitIntro");
  EXPECT_TRUE(session->HasEnded());
  EXPECT_TRUE(std::filesystem::is_empty(Installed("")));
  Start();
  Click("cmdCreateIntro");
  EXPECT_THAT(Titles(), ElementsAre(kFreshTitle));
  EXPECT_TRUE(HasFocus("chkEqualDelay"));
  Start();
  EXPECT_THAT(Titles(), ElementsAre(kFreshTitle));
}

TEST_F(SessionTest, ADemoRunsFromTheIntroductionAndCancelLeadsToTheMainForm) {
  std::filesystem::remove(Installed("Polefit.ini"));
  InstallSolver("echo \"$1\" >> words; say converged");
  MakeFile("Ex-Delay.111");
  Start();
  Click("cmdRunIntro");
  EXPECT_THAT(Titles(), ElementsAre(kDemoTitle));
  EXPECT_EQ(TextOf("Description1"), "4 Poles & 3 (Omega) Zeros to equalize sidelobe peaks");
  EXPECT_THAT(TextOf("Description4"), HasSubstr("'losless'"));
  Click("cmdRunDemo");
  EXPECT_THAT(Verdict(), StartsWith("Good: "));
  EXPECT_EQ(TextOf("lblDataFile"), "No data file was chosen.");
  Click("Exam5");
  Click("cmdRunDemo");
  EXPECT_THAT(Verdict(), StartsWith("Good: "));
  QTest::keyClick(&The("Exam5"), Qt::Key_Return);
  EXPECT_THAT(Verdict(), StartsWith("Good: "));
  EXPECT_EQ(FileBytes(Installed("words")), "\nEx-Delay.111\nEx-Delay.111\n");
  EXPECT_THAT(Titles(), ElementsAre("Ex-Delay.111 - Polefit Run", kDemoTitle));
  The("cmdRunDemo").window()->close();
  EXPECT_THAT(Titles(), ElementsAre(kFreshTitle)) << "the run's panel has its place again";
  EXPECT_TRUE(The("frmRun").isVisible());
  EXPECT_TRUE(HasFocus("chkEqualDelay"));
}

TEST_F(SessionTest, DemosFromTheMenuTakeItsPlaceAndGiveItBack) {
  Start();
  Choose("mnuDemosRun");
  EXPECT_THAT(Titles(), ElementsAre(kDemoTitle));
  Click("Exam2");
  Click("cmdCancelDemo");
  EXPECT_THAT(Titles(), ElementsAre(kFreshTitle));
  SetText("tmin", "1");
  answers.Press(QMessageBox::Cancel);
  Choose("mnuDemosRun");
  EXPECT_THAT(Titles(), ElementsAre("Start Up Values* - Polefit"));
  answers.Press(QMessageBox::No);
  Choose("mnuDemosRun");
  EXPECT_FALSE(The<QAbstractButton>("Exam2").isChecked());
  Click("cmdCancelDemo");
  EXPECT_EQ(TextOf("tmin"), "1");
  EXPECT_TRUE(HasFocus("chkEqualDelay"));
}

TEST_F(SessionTest, ATypicalRunFromOpenToTheImprovedValues) {
  InstallSolver("report; values; say 'converged (6 of 8 starts agree); rms error .001'");
  Start();
  answers.Choose(MakeFile("Ex-Yzero.101"));
  Choose("mnuFileOpen");
  GridView& passData = session->Values().windows.frmMain.PassData();
  EXPECT_EQ(passData.RowCount(), 5);
  The<QTabWidget>("CVX_Tabs").setCurrentIndex(3);
  for (int column = 1; column <= 4; ++column) passData.SetText(2, column, "2");
  SetText("Note1", "mine");
  answers.Choose("run1.txt");
  Choose("mnuFileSaveAs");
  answers.Press(QMessageBox::No);
  Click("cmdSubmit");
  EXPECT_THAT(Verdict(), StartsWith("Good: "));
  EXPECT_THAT(TextOf("lblEnding"), StartsWith("converged (6 of 8 starts agree)"));
  EXPECT_THAT(FileBytes(Installed("User/run1.txt")), HasSubstr(" 2\t\t! 23."));
  Click("cmdReport");
  EXPECT_EQ(The<QPlainTextEdit>("viewerText").toPlainText(), "the report\n");
  delete The("viewerText").window();
  Click("cmdImproved");
  EXPECT_EQ(TextOf("tmin"), "80.1");
  EXPECT_EQ(TextOf("LastFileName"), "Start Up Values");
  EXPECT_EQ(session->Values().document.DataChanged, 0);
  EXPECT_THAT(answers.said, ::testing::Each("Data in form has changed!|Save current data?"));
  Start();
  EXPECT_EQ(TextOf("tmin"), "80.1");
}

TEST_F(SessionTest, AFileOnTheCommandLineIsOpenedAfterStartUp) {
  const std::string path = root.File("-a file.txt");
  std::filesystem::rename(MakeFile("-a file.txt", "12"), path);
  Start(path);
  EXPECT_EQ(TextOf("tmin"), "12");
  EXPECT_EQ(TextOf("LastFileName"), "-a file.txt");
  SetText("tmin", "13");
  Choose("mnuFileSave");
  EXPECT_THAT(FileBytes(path), HasSubstr("13\t\t! 1a."));
  answers.Press(QMessageBox::Ok);
  Start(Installed("none.txt"));
  EXPECT_EQ(TextOf("LastFileName"), "Start Up Values");
  EXPECT_THAT(answers.said.back(), HasSubstr("none.txt' file?"));
}

TEST_F(SessionTest, SaveRefusesPatternsAndAsksBeforeItOverwrites) {
  const std::string path = MakeFile("old.txt", "5");
  Start();
  for (const auto& name : {std::string("run*.txt"), std::string("none/new.txt"),
                           std::string("a\\b.txt"), std::string(251, 'n')}) {
    answers.Choose(name);
    answers.Press(QMessageBox::Ok);
  }
  answers.Choose("old.txt");
  answers.Press(QMessageBox::No);
  answers.Choose("new.txt");
  Choose("mnuFileSaveAs");
  EXPECT_EQ(TextOf("LastFileName"), "new.txt");
  EXPECT_TRUE(std::filesystem::exists(root.File("desktop/polefit/QtProject.conf")));
  EXPECT_FALSE(std::filesystem::exists(root.File("desktop/QtProject.conf"))) << "other programs'";
  EXPECT_THAT(FileBytes(path), HasSubstr("5\t\t! 1a."));
}

TEST_F(SessionTest, TheOpenDialogCountsWhatItsFilterHidesAndOpensItByName) {
  MakeFile("seen.1", "7");
  MakeFile("hidden.txt", "8");
  MakeFile("hidden.dat", "9");
  Start(Installed("User/seen.1"));
  answers.Do([](QDialog& dialog) {
    EXPECT_EQ(dialog.findChild<QLabel*>("lblHiddenFiles")->text(),
              "2 files in this folder are hidden by the filter.");
    auto* name = dialog.findChild<QLineEdit*>("fileNameEdit");
    EXPECT_EQ(name->selectedText(), "*.*");
    QTest::keyClicks(name, "hidden.txt");
    auto* open = dialog.findChild<QDialogButtonBox*>("buttonBox")->button(QDialogButtonBox::Open);
    EXPECT_TRUE(QTest::qWaitFor([&] { return open->isEnabled(); }, 20000));
    open->click();
  });
  Choose("mnuFileOpen");
  EXPECT_EQ(TextOf("tmin"), "8");
  answers.Do([](QDialog& dialog) {
    auto* name = dialog.findChild<QLineEdit*>("fileNameEdit");
    EXPECT_EQ(name->text() + '|' + name->selectedText(), "hidden.*|.*");
    dialog.reject();
  });
  Choose("mnuFileSaveAs");
}

TEST_F(SessionTest, TheCurrentFolderIsTheOneChosenLast) {
  const std::string path = root.File("elsewhere.txt");
  Start();
  answers.Choose(path);
  Choose("mnuFileSaveAs");
  EXPECT_EQ(std::filesystem::current_path(), root.Path());
  SetText("tmin", "3");
  Choose("mnuFileSave");
  EXPECT_THAT(FileBytes(path), HasSubstr("3\t\t! 1a."));
}

TEST_F(SessionTest, InAFolderThatIsGoneSaveAsksForAnotherAndNewChangesNothing) {
  std::filesystem::create_directory(root.File("gone"));
  const std::string path = root.File("gone/run1.txt");
  std::filesystem::rename(MakeFile("run1.txt"), path);
  Start(path);
  std::filesystem::remove_all(root.File("gone"));
  answers.Do([](QDialog& dialog) {
    EXPECT_TRUE(dynamic_cast<QFileDialog&>(dialog).directory().exists());
    dialog.reject();
  });
  Choose("mnuFileSave");
  answers.Press(QMessageBox::Ok);
  answers.Press(QMessageBox::Ok);
  Choose("mnuFileNew");
  EXPECT_THAT(answers.said.back(), HasSubstr("works in is gone."));
  EXPECT_EQ(TextOf("tmin"), "76.7");
}

TEST_F(SessionTest, ClosingTheWindowEndsTheProgramAndAsksNothingButTheNextStartDoes) {
  const std::string path = MakeFile("run1.txt", "5");
  Start(path);
  SetText("tmin", "1");
  Choose("mnuFileExit");
  EXPECT_TRUE(session->HasEnded());
  Start();
  const Notice notice = session->Values().notices.Waiting().at(0);
  EXPECT_THAT(notice.sentence, StartsWith("run1.txt had changes of "));
  notice.buttons.at(0).action();
  EXPECT_EQ(TextOf("tmin"), "1");
  EXPECT_THAT(FileBytes(path), HasSubstr("5\t\t! 1a."));
  Choose("mnuFileSave");
  EXPECT_THAT(FileBytes(path), HasSubstr("1\t\t! 1a."));
  Choose("mnuFileExit");
  Start();
  EXPECT_THAT(session->Values().notices.Waiting(), ::testing::IsEmpty());
}

TEST_F(SessionTest, WhatIsTypedIsCopiedTwoSecondsAfterTheLastKey) {
  Start();
  const auto copies = [this] {
    return std::filesystem::exists(root.File("desktop/polefit/recovery")) &&
           !std::filesystem::is_empty(root.File("desktop/polefit/recovery"));
  };
  SetText("tmin", "1");
  EXPECT_FALSE(copies());
  EXPECT_TRUE(Comes(copies));
}

TEST_F(SessionTest, ASignalToEndLeavesTheLastKeysToTheNextStart) {
  Start(MakeFile("run1.txt"));
  const Termination termination([this] { session->End(); });
  SetText("tmin", "31");
  ::raise(SIGTERM);
  EXPECT_TRUE(QTest::qWaitFor([this] { return session->HasEnded(); }, 20000));
  Start();
  session->Values().notices.Waiting().at(0).buttons.at(0).action();
  EXPECT_EQ(TextOf("tmin"), "31");
}

TEST_F(SessionTest, ALastRunThatCannotBeShownIsToldAfterTheIntroductionAndTruly) {
  std::filesystem::remove(Installed("Polefit.ini"));
  std::string bytes = FileBytes(MakeFile("run1.txt"));
  bytes.replace(bytes.find("-999\t\t! 11. "), 4, "1 2");
  WriteBytes(Installed("last-run.ini"), bytes);
  std::set<std::string> titles;
  answers.Do([&](QDialog& dialog) {
    titles = Titles();
    dialog.reject();
  });
  Start();
  Click("cmdCreateIntro");
  EXPECT_THAT(titles, ::testing::Not(::testing::Contains(StartsWith("Introduction"))));
  EXPECT_THAT(answers.said.back(), HasSubstr("last-run.ini\n\nThe form shows what could be read."));
}

TEST_F(SessionTest, RecentFilesOpenFromTheirMenuAndOnesThatAreGoneAreGrey) {
  const std::string gone = MakeFile("gone & away.txt", "5");
  Start(gone);
  answers.Choose(MakeFile("run1.txt", "6"));
  Choose("mnuFileOpen");
  answers.Choose("run2.txt");
  Choose("mnuFileSaveAs");
  std::filesystem::remove(gone);
  auto* recent = &The<QMenu>("mnuFileRecent");
  Q_EMIT recent->aboutToShow();
  const QList<QAction*> entries = recent->actions();
  ASSERT_EQ(entries.size(), 3);
  EXPECT_THAT(entries[2]->text().toStdString(), ::testing::EndsWith("User/gone && away.txt"));
  EXPECT_FALSE(entries[2]->isEnabled());
  SetText("tmin", "7");
  answers.Press(QMessageBox::No);
  entries[1]->trigger();
  EXPECT_EQ(TextOf("tmin"), "6");
  Choose("mnuEditUndo");
  EXPECT_EQ(TextOf("tmin"), "7");
}

TEST_F(SessionTest, ABrokenInstallationEndsTheProgramWithItsMessage) {
  WriteBytes(Installed("Polefit.ini"), "");
  answers.Press(QMessageBox::Ok);
  Start();
  EXPECT_TRUE(session->HasEnded());
  EXPECT_THAT(Titles(), ::testing::IsEmpty());
  EXPECT_THAT(answers.said.back(), HasSubstr("Input past end of fileSuggest re-installing"));
}

TEST_F(SessionTest, AnErrorThatNoRoutineCatchesIsShownAndTheFormStays) {
  Start();
  SetText("tmin", "41");
  answers.Press(QMessageBox::Ok);
  Choose("mnuHelpEmail");
  EXPECT_THAT(answers.said.back(), StartsWith("Polefit|Error 53: File not found"));
  const std::string report = Installed("~pft-out.txt");
  ASSERT_EQ(::mkfifo(report.c_str(), 0600), 0);
  answers.Press(QMessageBox::Ok);
  Choose("mnuViewOutput");
  EXPECT_THAT(answers.said.back(),
              HasSubstr("Path/File access error: " + report +
                        "\n\nIt is a folder, a pipe or a device, not a file."));
  EXPECT_EQ(TextOf("tmin"), "41");
  EXPECT_FALSE(session->HasEnded());
}

TEST_F(SessionTest, SubmitRegistersOneRestartAndCopiesTheStartScript) {
  InstallSolver("exit");
  Start(MakeFile("run1.txt"));
  Choose("mnuFileSubmit");
  const std::string entry = root.File("desktop/autostart/polefit-restart.desktop");
  EXPECT_THAT(FileBytes(entry), HasSubstr("polefit\"\n"));
  const auto isCopied = [this] { return FileBytes(base + "/DOSstart.tmp") == "start\r\n"; };
  EXPECT_TRUE(Comes(isCopied));
}

TEST_F(SessionTest, ExamplesManualAndMailGoToTheDesktopsPrograms) {
  const std::string program = root.File("any program");
  const std::string words = root.File("words");
  WriteBytes(program, "sleep .1; printf '%s' \"$*\" > '" + words + "'\n");
  std::filesystem::create_directories(root.File("desktop/applications"));
  WriteBytes(root.File("desktop/applications/any.desktop"),
             "[Desktop Entry]\nExec=sh \"" + program + "\" --open %u\n");
  WriteBytes(root.File("desktop/applications/mimeapps.list"),
             "[Default Applications]\ntext/plain=any.desktop\ntext/rtf=any.desktop\n"
             "x-scheme-handler/mailto=any.desktop\n");
  const auto opened = [&] {
    EXPECT_TRUE(Comes([&] { return !FileBytes(words).empty(); }));
    std::string bytes = FileBytes(words);
    std::filesystem::remove(words);
    return bytes;
  };
  Start();
  answers.Choose(MakeFile("Ex-it's a.1"));
  Choose("mnuViewDemos");
  EXPECT_EQ(opened(), "--open " + Installed("User/Ex-it's a.1"));
  answers.Press(QMessageBox::Ok);
  Choose("mnuHelpManual");
  EXPECT_EQ(answers.said.back(), "Polefit|Cannot find '" + Installed("manual.rtf") + "'.");
  WriteBytes(Installed("manual.rtf"), "{\\rtf1 x}");
  Choose("mnuHelpManual");
  EXPECT_EQ(opened(), "--open " + Installed("manual.rtf"));
  bool isDrawn = false;
  QTimer::singleShot(10, &The("CVX_Tabs"), [&] {
    isDrawn = true;
    EXPECT_FALSE(The("CVX_Tabs").window()->close());
  });
  Choose("mnuHelpEmail");
  EXPECT_TRUE(isDrawn);
  // The program has waited for the end of the mail client.
  EXPECT_EQ(FileBytes(words),
            "--open mailto:support@polefit.example?subject=Polefit%204.12%20questions/problems");
}

}  // namespace
}  // namespace polefit::testing
