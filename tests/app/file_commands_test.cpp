#include "app/file_commands.h"

#include <gmock/gmock.h>

#include <filesystem>

#include "app/form_load.h"
#include "app/import_points.h"
#include "app/viewers.h"
#include "base/error_of.h"
#include "form/scripted_program.h"
#include "responsefile/writer.h"

namespace polefit::testing {
namespace {

using ::testing::Contains;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::SizeIs;
using ::testing::StartsWith;

using Texts = std::vector<std::string>;

const std::string kSaveBox = "MessageBox 35 [Data in form has changed!] Save current data? -> ";
const std::string kNewBox = "MessageBox 33 [Confirm 'New' Response.] Okay to Clear responses? -> ";
const std::string kSaveDialog = "ShowSave [Save Response Input File As ...] ";
const std::string kOpenDialog = "ShowOpen [Open Response Input File] *.* -> ";
const std::string kMedium = "Put a floppy disk in the drive and cloce the drive door. -> ";

struct FileCommandsTest : ::testing::Test, ScriptedProgram {
  Files& files = program.files;

  /// What the command does when it gets these answers to its boxes and paths from its dialogs.
  Texts EffectsOf(const std::function<void(Program&)>& command,
                  const std::vector<Reply>& replies = {}, const Texts& paths = {}) {
    for (const Reply reply : replies) host.ReplyToBox(reply);
    for (const std::string& path : paths) host.AnswerDialog(path);
    host.TakeTranscript();
    command(program);
    return host.TakeTranscript();
  }

  /// A file in the "User" folder whose tmin answer is its name.
  std::string MakeFile(const std::string& name, const char* zeroCounts = "0 0 0") {
    ResponseRecord record;
    record.Slot(slot::kTmin) = name;
    record.Slot(slot::kZeroCounts) = zeroCounts;
    WriteResponseFile(host, record, {user, name});
    return InUser(name);
  }
  std::string InUser(const std::string& name) const { return user + "/" + name; }
};

TEST_F(FileCommandsTest, ChangedDataAreOfferedForSavingAlwaysUnderAName) {
  const auto prompt = [this](Reply reply) {
    host.ReplyToBox(reply);
    return PromptSaveChanges(program, 1);
  };
  files.currentFileName = "run1.txt";
  form.SetText("Gain", "7");
  EXPECT_EQ(PromptSaveChanges(program, 0), kGoOn);
  EXPECT_EQ(program.document.record.Slot(slot::kGain), "7");
  EXPECT_EQ(prompt(Reply::no), kGoOn);
  EXPECT_EQ(prompt(Reply::cancel), kStop);
  host.AnswerDialog("");
  EXPECT_EQ(prompt(Reply::yes), kStop);
  host.AnswerDialog(InUser("run2.txt"));
  EXPECT_EQ(prompt(Reply::yes), kGoOn);
  EXPECT_THAT(host.transcript,
              ElementsAre(kSaveBox + "no", kSaveBox + "cancel", kSaveBox + "yes",
                          kSaveDialog + "run1.* -> ", kSaveBox + "yes",
                          kSaveDialog + "run1.* -> @/Tessel.hz/User/run2.txt",
                          "OpenForWriting @/Tessel.hz/User/run2.txt", "CloseFile"));
}

TEST_F(FileCommandsTest, NewAsksThenEmptiesEverythingButYout) {
  const ResponseRecord& record = program.document.record;
  program.document.record.nFreqPoints = program.document.record.nDelayPoints = 1;
  for (int column = 1; column <= 4; ++column) form.passData.SetText(1, column, "1");
  for (const int column : {1, 2}) form.delayData.SetText(1, column, "1");
  form.SetText("Remax", "5 10 7");
  program.document.DataChanged = 0;
  host.ChangeFolder(host.Root());
  EXPECT_THAT(EffectsOf(FileNew, {Reply::cancel}), ElementsAre(kNewBox + "cancel"));
  EXPECT_EQ(files.currentFileName, "Start Up Values");
  EXPECT_THAT(EffectsOf(FileNew, {Reply::ok}), ElementsAre(kNewBox + "ok"));
  EXPECT_THAT((Texts{files.currentFileName, form.Text("LastFileName")}), Each("New data"));
  EXPECT_THAT((Texts{form.Text("Remax"), form.Text("tmin"), form.Text("Note1")}), Each(""));
  EXPECT_EQ(form.Text("nZpairs"), "0");
  EXPECT_EQ(form.passData.RowCount(), 3);
  EXPECT_EQ(files.currentFolder, host.Root());
  EXPECT_EQ(record.passband.RowsOf(1), 1);
  EXPECT_EQ(record.delay.RowsOf(2), 1);
  EXPECT_EQ(record.passband.At(1, 3), "1");
  EXPECT_EQ(program.document.DataChanged, 0);
}

TEST_F(FileCommandsTest, OpenShowsTheFileAndKeepsItsNameWhateverLine1Says) {
  std::filesystem::rename(MakeFile("made.txt"), host.Path("run1.txt"));
  EXPECT_THAT(EffectsOf(FileOld, {}, {host.Path("run1.txt")}),
              ElementsAre(kOpenDialog + "@/run1.txt", "OpenForReading @/run1.txt", "CloseFile"));
  EXPECT_EQ(host.lastDialog.filter,
            "All Files (*.*)|*.*|Response Files (*.?\?)|*.?;*.?\?|"
            "Example Response Files (Ex-*.?\?)|Ex-*.?;Ex-*.?\?");
  EXPECT_EQ(host.lastDialog.filterIndex, 2);
  EXPECT_THAT((Texts{form.Text("tmin"), form.Text("LastFileName"), files.lastUsedName}),
              Each("made.txt"));
  EXPECT_EQ(files.currentFileName, "run1.txt");
  EXPECT_THAT((Texts{files.currentFolder, program.windows.CMDialog1.initialFolder}),
              Each(host.Root()));
  EXPECT_EQ(program.document.DataChanged, 0);
}

TEST_F(FileCommandsTest, ACancelledOpenChangesNothing) {
  EXPECT_THAT(EffectsOf(FileOld, {}, {""}), SizeIs(1));
  program.document.DataChanged = 1;
  EXPECT_THAT(EffectsOf(FileOld, {Reply::cancel}), SizeIs(1));
  EXPECT_EQ(files.currentFileName, "Start Up Values");
}

TEST_F(FileCommandsTest, SaveWritesTheCurrentFileOrAsks) {
  SetCurrentFile(host, files, MakeFile("run1.txt"));
  form.SetText("tmin", "8");
  EXPECT_THAT(EffectsOf(FileSave),
              ElementsAre("OpenForWriting @/Tessel.hz/User/run1.txt", "CloseFile"));
  EXPECT_THAT(FileBytes("run1.txt"), HasSubstr("8\t\t! 1a. "));
  EXPECT_EQ(program.document.DataChanged, 1);
  files.currentFileName = "New data";
  EXPECT_THAT(EffectsOf(FileSave, {}, {""}), ElementsAre(StartsWith(kSaveDialog)));
}

TEST_F(FileCommandsTest, SaveAsSuggestsTheStemOrAPrefixAsLongAsTheScratchText) {
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {"run1.txt", "", "run1.*"},   {"ex-a.12", "scratch", "ex-a.*"},
      {"a.b.c", "", "a.*"},         {".hidden", "abc", ".hi.*"},
      {"New data", "äöü", "New.*"}, {"New data", "a long scratch text", "New data.*"},
      {"*.*", "", "*.*"},           {"New data", "", ".*"}};
  for (const auto& [name, scratch, expected] : cases) {
    files.currentFileName = name;
    program.Scratch = scratch;
    EffectsOf(FileSaveAs, {}, {""});
    EXPECT_EQ(host.lastDialog.fileName, expected);
  }
  EXPECT_EQ(host.lastDialog.filter, "All Files (*.*)|*.*|Text Files (*.txt)|*.txt");
  EXPECT_EQ(host.lastDialog.filterIndex, 1);
}

TEST_F(FileCommandsTest, SaveAsWritesTheRowsThereAreAndTakesTheNewNameEverywhere) {
  program.document.record.nFreqPoints = 1;
  form.passData.SetRowCount(6);
  for (int cell = 0; cell < 8; ++cell) form.passData.SetText(1 + cell / 4, 1 + cell % 4, "1");
  EffectsOf(FileSaveAs, {}, {host.Path("run2.txt")});
  EXPECT_THAT((Texts{files.currentFileName, program.document.record.LastFileName,
                     form.Text("LastFileName")}),
              Each("run2.txt"));
  EXPECT_THAT((Texts{files.lastUsedFolder, program.windows.CMDialog1.initialFolder}),
              Each(host.Root()));
  const std::string saved = FileBytes("run2.txt");
  EXPECT_THAT(saved,
              StartsWith("run2.txt\t\t! 22, 2, and 9          March 03, 2004 @ 9:05 AM\r\n"));
  EXPECT_THAT(saved, HasSubstr("1  1  1  1\t\t ! Point #  2 \r\n 0\t\t! \r\n"));
}

TEST_F(FileCommandsTest, CharactersThatTheFileCannotHoldAreToldOnce) {
  form.SetText("Note1", "Ω and 漢 and ä");
  EXPECT_THAT(EffectsOf(FileSaveAs, {Reply::ok}, {InUser("n.txt")}),
              Contains("MessageBox 48 [Characters replaced] 'n.txt' cannot hold 2 of the "
                       "characters typed; each stands as \"?\" in the file. -> ok"));
  EXPECT_THAT(FileBytes("n.txt"), HasSubstr("? and ? and \xE4\t\t! 20. "));
  EXPECT_THAT(EffectsOf(FileSaveAs, {}, {InUser("n.txt")}), SizeIs(3));
}

TEST_F(FileCommandsTest, DeleteAsksAndLeavesTheFormAsItIs) {
  const std::string path = MakeFile("old.txt");
  const std::string dialog = "ShowOpen [Select File to be Deleted] *.* -> @/Tessel.hz/User/old.txt";
  const std::string question =
      "MessageBox 36 [Confirm Delete?] Delete '@/Tessel.hz/User/old.txt' File. -> ";
  EXPECT_THAT(EffectsOf(FileDelete, {Reply::no}, {path}), ElementsAre(dialog, question + "no"));
  EXPECT_THAT(EffectsOf(FileDelete, {Reply::yes}, {path}),
              ElementsAre(dialog, question + "yes", "DeleteFile @/Tessel.hz/User/old.txt"));
  EXPECT_EQ(host.lastDialog.filter, "All Files (*.*)|*.*|");
  EXPECT_THAT((Texts{files.lastUsedName, files.lastUsedFolder, files.currentFileName}),
              ElementsAre(path, user, "Start Up Values"));
}

TEST_F(FileCommandsTest, DeleteLeavesPatternsMissingFilesAndACancelledDialogAlone) {
  MakeFile("old.txt");
  for (const std::string& path :
       {InUser("*.*"), InUser("ol?.txt"), InUser("none.txt"), std::string()}) {
    EXPECT_THAT(EffectsOf(FileDelete, {}, {path}), SizeIs(1)) << path;
  }
}

TEST_F(FileCommandsTest, OpenSortsErrorsByNumber) {
  const std::string path = MakeFile("a.txt");
  const std::string dialog = kOpenDialog + "@/Tessel.hz/User/a.txt";
  const std::string opened = "OpenForReading @/Tessel.hz/User/a.txt";
  const std::string failed = opened + " -> error ";
  const std::string title = " [In 'FileOld' routine ...] ";
  const std::string medium = "MessageBox 481" + title + kMedium;
  const std::string unavailable =
      "MessageBox 480" + title + "This drive or path does not exist: a.txt -> ok";
  const auto open = [&](int error, int times, const std::vector<Reply>& replies) {
    host.Fail("OpenForReading", error, 1, times);
    return EffectsOf(FileOld, replies, {path});
  };
  EXPECT_THAT(open(71, 1, {Reply::ok}),
              ElementsAre(dialog, failed + "71", medium + "ok", opened, "CloseFile"));
  EXPECT_THAT(open(68, 2, {Reply::ok, Reply::ok}),
              ElementsAre(dialog, failed + "68", unavailable, failed + "68", unavailable, opened,
                          "CloseFile"));
  form.SetText("tmin", "edited");
  program.document.DataChanged = 0;
  EXPECT_THAT(open(71, 1, {Reply::cancel}), ElementsAre(dialog, failed + "71", medium + "cancel"));
  EXPECT_EQ(form.Text("tmin"), "edited");
  EXPECT_THROW(open(70, 1, {Reply::ok}), ProgramEnded);
  const std::string unexpected = "Unexpected error # 70 occured: Permission denied -> ok";
  EXPECT_THAT(host.transcript, ElementsAre(dialog, failed + "70",
                                           "MessageBox 16" + title + unexpected, "EndProgram"));
}

TEST_F(FileCommandsTest, ARecordThatCannotBeShownEndsTheProgram) {
  const std::string path = MakeFile("bad.txt", "1 2");
  host.AnswerChoice("Open All the Same");
  EXPECT_THROW(EffectsOf(FileOld, {Reply::ok}, {path}), ProgramEnded);
  EXPECT_THAT(host.transcript,
              Contains("MessageBox 16 [In 'FileOld' routine ...] Unexpected error # 9 "
                       "occured: Subscript out of range -> ok"));
}

TEST_F(FileCommandsTest, OpenLooksFirstAndAsksAboutAnythingElse) {
  const std::string measured = InUser("dut.s2p");
  WriteBytes(measured, "! measured\n# MHz S RI R 50\n1 2 3 4 5 6 7 8 9\n");
  const std::string doubt =
      "Ask 'dut.s2p' does not look like a Response Input File. [Open All the Same] [Cancel] -> ";
  const auto open = [this](const std::string& path) {
    return [=](Program& values) { OpenNamedFile(values, path); };
  };
  form.SetText("Gain", "7");
  program.document.DataChanged = 0;
  host.AnswerChoice("Cancel");
  EXPECT_THAT(EffectsOf(FileOld, {}, {measured, MakeFile("a.1")}),
              ElementsAre(kOpenDialog + "@/Tessel.hz/User/dut.s2p", doubt + "Cancel",
                          kOpenDialog + "@/Tessel.hz/User/a.1",
                          "OpenForReading @/Tessel.hz/User/a.1", "CloseFile"));
  host.AnswerChoice("Cancel");
  EXPECT_THAT(EffectsOf(open(measured)), ElementsAre(doubt + "Cancel"));
  EXPECT_EQ(files.currentFileName, "a.1");
  host.AnswerChoice("Open All the Same");
  EXPECT_THAT(EffectsOf(open(measured), {Reply::ok}),
              Contains("MessageBox 16 [In 'FileReadMe' routine ...] Unexpected error # 62 "
                       "occured: Input past end of file -> ok"));
  EXPECT_EQ(files.currentFileName, "dut.s2p");
  host.Fail("ReadFile", 70);
  EXPECT_THAT(EffectsOf(open(InUser("a.1"))), Contains("OpenForReading @/Tessel.hz/User/a.1"));
}

TEST_F(FileCommandsTest, AMeasuredFileCanBringItsPointsInstead) {
  const std::string measured = InUser("dut.s2p");
  WriteBytes(measured, "# MHz S RI R 50\n1 2 3 4 5 6 7 8 9\n2 2 3 4 5 6 7 8 9\n");
  const std::string doubt =
      "Ask 'dut.s2p' does not look like a Response Input File. [Open All the Same] "
      "[Import Its Points ...] [Cancel] -> Import Its Points ...";
  Texts imported;
  const PointsImport import = [&](const std::string& path) { imported.push_back(path); };
  host.AnswerChoice("Import Its Points ...");
  EXPECT_THAT(EffectsOf([&](Program& values) { OpenChosenFile(values, import); }, {}, {measured}),
              ElementsAre(kOpenDialog + "@/Tessel.hz/User/dut.s2p", doubt));
  host.AnswerChoice("Import Its Points ...");
  EXPECT_THAT(EffectsOf([&](Program& values) { OpenNamedFile(values, measured, import); }),
              ElementsAre(doubt));
  EXPECT_THAT(imported, ElementsAre(measured, measured));
  const AskForPlan no = [](auto&, const auto&, const auto&) { return false; };
  EXPECT_THAT(EffectsOf([&](Program& values) { ImportChosenFile(values, no); }, {}, {measured}),
              SizeIs(2))
      << "a dialog for points asks about none";
  EXPECT_EQ(files.currentFileName, "Start Up Values");
}

TEST_F(FileCommandsTest, SaveAsRefusesTheNamesOfDataInNoFile) {
  for (const char* const name : {"Start Up Values", "New data"}) {
    host.AnswerChoice("OK");
    const Texts effects =
        EffectsOf([](Program& values) { FileSaveAs(values); }, {}, {InUser(name), ""});
    EXPECT_THAT(effects, Contains(StartsWith("Ask \"" + std::string(name) + "\" stands for")));
    EXPECT_THAT(effects, Each(::testing::Not(StartsWith("OpenForWriting"))));
  }
}

TEST_F(FileCommandsTest, SaveAsSortsErrorsByNumber) {
  const std::string title = " [In 'FileSaveAs' routine ...] ";
  bool isWritten = false;
  const auto save = [&](const char* operation, int error, Reply reply) {
    host.Fail(operation, error);
    return EffectsOf([&](Program&) { isWritten = FileSaveAs(program); }, {reply},
                     {InUser("s.txt")});
  };
  EXPECT_THAT(save("OpenForWriting", 71, Reply::ok),
              Contains("MessageBox 481" + title + kMedium + "ok"));
  EXPECT_TRUE(isWritten);
  save("OpenForWriting", 71, Reply::cancel);
  EXPECT_FALSE(isWritten);
  EXPECT_EQ(form.Text("LastFileName"), "s.txt");
  EXPECT_THAT(save("OpenForWriting", 68, Reply::ok),
              Contains("MessageBox 48" + title + "This drive or path does not exist: s.txt -> ok"));
  EXPECT_TRUE(isWritten);
  EXPECT_THROW(save("WriteLine", 61, Reply::ok), ProgramEnded);
  EXPECT_THAT(host.transcript,
              Contains("MessageBox 16" + title + "Unexpected error # 61 occured: Disk full -> ok"));
}

TEST_F(FileCommandsTest, SaveAndDeletePassTheirErrorsOn) {
  const std::string path = MakeFile("run1.txt");
  SetCurrentFile(host, files, path);
  for (const char* const operation : {"OpenForWriting", "DeleteFile"}) host.Fail(operation, 70);
  EXPECT_EQ(ErrorOf([&] { FileSave(program); }), 70);
  EXPECT_EQ(ErrorOf([&] { EffectsOf(FileDelete, {Reply::yes}, {path}); }), 70);
  EXPECT_THAT(FileBytes(path), StartsWith("run1.txt"));
  // Its line break would make two of the first line.
  std::filesystem::rename(path, InUser("two\nlines.1"));
  files.currentFileName = "two\nlines.1";
  EXPECT_EQ(ErrorOf([&] { FileSave(program); }), error_number::kBadFileNumber);
  EXPECT_THAT(FileBytes("two\nlines.1"), StartsWith("run1.txt"));
}

using ViewersTest = FileCommandsTest;

TEST_F(ViewersTest, AnExampleOpensInTheEditorAndTheDialogFolderStays) {
  CommonDialog& dialog = program.windows.CMDialog1;
  dialog.initialFolder = "/data";
  dialog.cancelIsError = true;
  EXPECT_THAT(EffectsOf(ViewExampleFile, {}, {InUser("Ex-a b.1")}),
              ElementsAre("ShowOpen [Open an Example File for illustration]  -> "
                          "@/Tessel.hz/User/Ex-a b.1",
                          "StartProgram 3 notepad.exe @/Tessel.hz/User/Ex-a b.1"));
  EXPECT_EQ(host.lastDialog.initialFolder, user);
  EXPECT_EQ(host.lastDialog.filter, "All Files (*.*)|*.*|Example Response Files (ex-*.*)|ex-*.*");
  EXPECT_EQ(host.lastDialog.filterIndex, 2);
  EXPECT_THAT(EffectsOf(ViewExampleFile, {}, {""}), SizeIs(1));
  EXPECT_EQ(dialog.initialFolder, "/data");
}

TEST_F(ViewersTest, TheReportOpensWhenThereIsOne) {
  EXPECT_THAT(EffectsOf(ViewLastOutput, {Reply::ok}),
              ElementsAre("MessageBox 48 ['~pft-out.txt' output file not found.] Try a 'Submit' "
                          "command then retry this View option. -> ok"));
  WriteBytes(host.Path("Tessel.hz/~pft-out.txt"), "");
  EXPECT_THAT(EffectsOf(ViewLastOutput), ElementsAre("ShellExecuteA @/Tessel.hz/~pft-out.txt"));
}

}  // namespace
}  // namespace polefit::testing
