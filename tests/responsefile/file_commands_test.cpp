#include "responsefile/file_commands.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "form/scripted_program.h"
#include "platform/error_of.h"
#include "platform/text.h"
#include "responsefile/writer.h"

namespace polefit {
namespace {

using ::testing::ElementsAre;
using testing::ErrorOf;
using testing::FileBytes;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

constexpr const char* kSaveQuestion =
    "MessageBox 35 [Data in form has changed!] Save current data?";
constexpr const char* kSaveDialog = "ShowSave [Save Response Input File As ...] ";
constexpr const char* kOpenDialog = "ShowOpen [Open Response Input File] *.*";

class FileCommandsTest : public ::testing::Test {
 protected:
  void ExpectEffects(const std::vector<std::string>& expected) {
    EXPECT_EQ(host_.TakeTranscript(), expected);
  }

  /// A file in the "User" folder whose tmin answer is the name.
  std::string MakeFile(const std::string& name) {
    ResponseRecord record;
    record.Slot(slot::kTmin) = name;
    record.passband.Resize(1);
    record.delay.Resize(1);
    WriteResponseFile(host_, record, {scripted_.user, name});
    host_.TakeTranscript();
    return scripted_.user + "/" + name;
  }

  std::string Saved(const std::string& name) { return FileBytes(scripted_.user + "/" + name); }

  testing::ScriptedProgram scripted_;
  testing::ScriptedHost& host_ = scripted_.host;
  testing::FakeForm& form_ = scripted_.form;
  Program& program_ = scripted_.program;
  FileState& files_ = program_.files;
};

TEST_F(FileCommandsTest, PromptSaveChangesTakesTheFormAndAsksWhenDataChanged) {
  form_.SetText("Gain", "7");
  EXPECT_EQ(PromptSaveChanges(program_, 0), kGoOn);
  EXPECT_EQ(program_.record.Slot(slot::kGain), "7");
  host_.AnswerBox(Answer::no);
  EXPECT_EQ(PromptSaveChanges(program_, 1), kGoOn);
  host_.AnswerBox(Answer::cancel);
  EXPECT_EQ(PromptSaveChanges(program_, 1), kStop);
  ExpectEffects({std::string(kSaveQuestion) + " -> no", std::string(kSaveQuestion) + " -> cancel"});
}

TEST_F(FileCommandsTest, YesToSaveAlwaysAsksForAName) {
  files_.currentFileName = "run1.txt";
  host_.AnswerBox(Answer::yes);
  host_.AnswerDialog("");
  EXPECT_EQ(PromptSaveChanges(program_, 1), kStop);
  host_.AnswerBox(Answer::yes);
  host_.AnswerDialog(scripted_.user + "/run2.txt");
  EXPECT_EQ(PromptSaveChanges(program_, 1), kGoOn);
  ExpectEffects({std::string(kSaveQuestion) + " -> yes", std::string(kSaveDialog) + "run1.* -> ",
                 std::string(kSaveQuestion) + " -> yes",
                 std::string(kSaveDialog) + "run1.* -> @/Tessel.hz/User/run2.txt",
                 "OpenForWriting @/Tessel.hz/User/run2.txt", "CloseFile"});
}

TEST_F(FileCommandsTest, NewAsksThenEmptiesEverythingButYout) {
  ResponseRecord& record = program_.record;
  record.passband.Resize(3);
  record.passband.At(2, 3) = "Yout";
  host_.ChangeFolder(host_.Root());
  host_.TakeTranscript();
  host_.AnswerBox(Answer::cancel);
  FileNew(program_);
  EXPECT_EQ(files_.currentFileName, "Start Up Values");
  form_.SetText("Remax", "5 10 7");
  program_.DataChanged = 0;
  host_.AnswerBox(Answer::ok);
  FileNew(program_);
  ExpectEffects({"MessageBox 33 [Confirm 'New' Response.] Okay to Clear responses? -> cancel",
                 "MessageBox 33 [Confirm 'New' Response.] Okay to Clear responses? -> ok"});
  EXPECT_EQ(files_.currentFileName, "New data");
  EXPECT_EQ(files_.currentFolder, host_.Root());
  EXPECT_EQ(form_.Text("LastFileName"), "New data");
  EXPECT_EQ(form_.Text("Remax"), "");
  EXPECT_EQ(form_.Text("tmin"), "");
  EXPECT_EQ(form_.Text("nZpairs"), "0");
  EXPECT_EQ(form_.Text("Note1"), "");
  EXPECT_EQ(form_.passData.RowCount(), 3);
  EXPECT_EQ(record.passband.RowsOf(1), 1);
  EXPECT_EQ(record.delay.RowsOf(2), 1);
  EXPECT_EQ(program_.DataChanged, 0);
}

TEST_F(FileCommandsTest, YoutKeepsItsCellsOverNew) {
  ResponseRecord& record = program_.record;
  record.nFreqPoints = 1;
  for (int column = 1; column <= 4; ++column) form_.passData.SetText(1, column, "1");
  host_.AnswerBox(Answer::ok);
  FileNew(program_);
  EXPECT_EQ(record.passband.RowsOf(1), 1);
  EXPECT_GT(record.passband.RowsOf(3), 1);
  EXPECT_EQ(record.passband.At(1, 3), "1");
}

TEST_F(FileCommandsTest, OpenShowsTheFileAndKeepsItsNameWhateverLine1Says) {
  MakeFile("made.txt");
  std::filesystem::rename(scripted_.user + "/made.txt", host_.Path("run1.txt"));
  host_.AnswerDialog(host_.Path("run1.txt"));
  FileOld(program_);
  ExpectEffects(
      {std::string(kOpenDialog) + " -> @/run1.txt", "OpenForReading @/run1.txt", "CloseFile"});
  EXPECT_EQ(host_.lastDialog.filter,
            std::string("All Files (*.*)|*.*|Response Files (*.?\?)|*.?;*.?\?|"
                        "Example Response Files (Ex-*.?\?)|Ex-*.?;Ex-*.?\?"));
  EXPECT_EQ(host_.lastDialog.filterIndex, 2);
  EXPECT_EQ(form_.Text("tmin"), "made.txt");
  EXPECT_EQ(form_.Text("LastFileName"), "made.txt");
  EXPECT_EQ(files_.currentFileName, "run1.txt");
  EXPECT_EQ(files_.currentFolder, host_.Root());
  EXPECT_EQ(files_.lastUsedName, "made.txt");
  EXPECT_EQ(program_.CMDialog1.initialFolder, host_.Root());
  EXPECT_EQ(program_.DataChanged, 0);
}

TEST_F(FileCommandsTest, ACancelledOpenChangesNothing) {
  const FileState before = files_;
  host_.AnswerDialog("");
  FileOld(program_);
  EXPECT_EQ(host_.transcript.size(), 1U);
  EXPECT_EQ(files_.currentFileName, before.currentFileName);
  program_.DataChanged = 1;
  host_.AnswerBox(Answer::cancel);
  FileOld(program_);
  EXPECT_EQ(host_.transcript.size(), 2U);
}

TEST_F(FileCommandsTest, SaveWritesTheCurrentFileOrAsks) {
  MakeFile("run1.txt");
  SetCurrentFile(host_, files_, scripted_.user + "/run1.txt");
  form_.SetText("tmin", "8");
  FileSave(program_);
  ExpectEffects({"OpenForWriting @/Tessel.hz/User/run1.txt", "CloseFile"});
  EXPECT_THAT(Saved("run1.txt"), HasSubstr("8\t\t! 1a. "));
  EXPECT_EQ(program_.DataChanged, 1);
  files_.currentFileName = "New data";
  host_.AnswerDialog("");
  FileSave(program_);
  EXPECT_THAT(host_.transcript, ElementsAre(StartsWith(kSaveDialog)));
}

TEST_F(FileCommandsTest, SavedCountsAreThoseOfTheRowsWritten) {
  program_.record.nFreqPoints = 1;
  form_.passData.SetRowCount(6);
  for (int cell = 0; cell < 8; ++cell) form_.passData.SetText(1 + cell / 4, 1 + cell % 4, "1");
  host_.AnswerDialog(scripted_.user + "/two.txt");
  EXPECT_TRUE(FileSaveAs(program_));
  EXPECT_THAT(Saved("two.txt"), HasSubstr("\r\n 2\t\t! 23. "));
  EXPECT_THAT(Saved("two.txt"), HasSubstr("1  1  1  1\t\t ! Point #  2 \r\n 0\t\t! \r\n"));
}

TEST_F(FileCommandsTest, SaveAsSuggestsTheStemOrAPrefixAsLongAsTheScratchText) {
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {"run1.txt", "", "run1.*"},   {"ex-a.12", "scratch", "ex-a.*"},
      {"a.b.c", "", "a.*"},         {".hidden", "abc", ".hi.*"},
      {"New data", "äöü", "New.*"}, {"New data", "a long scratch text", "New data.*"},
      {"*.*", "", "*.*"},           {"New data", "", ".*"}};
  for (const auto& [name, scratch, expected] : cases) {
    files_.currentFileName = name;
    program_.Scratch = scratch;
    host_.AnswerDialog("");
    EXPECT_FALSE(FileSaveAs(program_));
    EXPECT_EQ(host_.lastDialog.fileName, expected);
  }
  EXPECT_EQ(host_.lastDialog.filter, "All Files (*.*)|*.*|Text Files (*.txt)|*.txt");
  EXPECT_EQ(host_.lastDialog.filterIndex, 1);
}

TEST_F(FileCommandsTest, SaveAsTakesTheNewNameEverywhere) {
  host_.AnswerDialog(host_.Path("run2.txt"));
  EXPECT_TRUE(FileSaveAs(program_));
  EXPECT_EQ(files_.currentFileName, "run2.txt");
  EXPECT_EQ(files_.lastUsedFolder, host_.Root());
  EXPECT_EQ(program_.record.LastFileName, "run2.txt");
  EXPECT_EQ(form_.Text("LastFileName"), "run2.txt");
  EXPECT_EQ(program_.CMDialog1.initialFolder, host_.Root());
  EXPECT_THAT(FileBytes(host_.Path("run2.txt")), StartsWith("run2.txt\t\t! 22, 0, and 9 "));
}

TEST_F(FileCommandsTest, CharactersThatTheFileCannotHoldAreToldOnce) {
  form_.SetText("Note1", "Ω and 漢 and ä");
  for (int save = 0; save < 2; ++save) {
    if (save == 0) host_.AnswerBox(Answer::ok);
    host_.AnswerDialog(scripted_.user + "/n.txt");
    EXPECT_TRUE(FileSaveAs(program_));
  }
  EXPECT_THAT(
      host_.transcript,
      ::testing::Contains("MessageBox 48 [Characters replaced] 'n.txt' cannot hold 2 of the "
                          "characters typed; each stands as \"?\" in the file. -> ok"));
  EXPECT_THAT(Saved("n.txt"), HasSubstr("? and ? and \xE4\t\t! 20. "));
}

TEST_F(FileCommandsTest, DeleteAsksAndLeavesTheFormAsItIs) {
  const std::string path = MakeFile("old.txt");
  const std::string dialog = "ShowOpen [Select File to be Deleted] *.* -> @/Tessel.hz/User/old.txt";
  const std::string question =
      "MessageBox 36 [Confirm Delete?] Delete '@/Tessel.hz/User/old.txt' File. -> ";
  host_.AnswerDialog(path);
  host_.AnswerBox(Answer::no);
  FileDelete(program_);
  host_.AnswerDialog(path);
  host_.AnswerBox(Answer::yes);
  FileDelete(program_);
  ExpectEffects(
      {dialog, question + "no", dialog, question + "yes", "DeleteFile @/Tessel.hz/User/old.txt"});
  EXPECT_EQ(host_.lastDialog.filter, "All Files (*.*)|*.*|");
  EXPECT_EQ(files_.lastUsedName, path);
  EXPECT_EQ(files_.lastUsedFolder, scripted_.user);
  EXPECT_EQ(files_.currentFileName, "Start Up Values");
}

TEST_F(FileCommandsTest, DeleteLeavesPatternsMissingFilesAndACancelledDialogAlone) {
  MakeFile("old.txt");
  for (const char* const name : {"/*.*", "/ol?.txt", "/none.txt"}) {
    host_.AnswerDialog(scripted_.user + name);
    FileDelete(program_);
  }
  host_.AnswerDialog("");
  FileDelete(program_);
  EXPECT_EQ(host_.transcript.size(), 4U);
  EXPECT_THAT(Saved("old.txt"), StartsWith("old.txt"));
}

constexpr const char* kMedium = "Put a floppy disk in the drive and cloce the drive door.";

TEST_F(FileCommandsTest, OpenSortsErrorsByNumber) {
  const std::string path = MakeFile("a.txt");
  const std::string dialog = std::string(kOpenDialog) + " -> @/Tessel.hz/User/a.txt";
  const std::string title = " [In 'FileOld' routine ...] ";
  const std::string failed = "OpenForReading @/Tessel.hz/User/a.txt -> error ";
  const auto open = [&](int error, int times, std::vector<Answer> answers) {
    host_.AnswerDialog(path);
    if (error != 0) host_.Fail("OpenForReading", error, 1, times);
    for (const Answer answer : answers) host_.AnswerBox(answer);
    FileOld(program_);
  };
  open(71, 1, {Answer::ok});
  ExpectEffects({dialog, failed + "71", "MessageBox 481" + title + kMedium + " -> ok",
                 "OpenForReading @/Tessel.hz/User/a.txt", "CloseFile"});
  form_.SetText("tmin", "edited");
  program_.record.Slot(slot::kTmin) = "before";
  program_.DataChanged = 0;
  open(71, 1, {Answer::cancel});
  ExpectEffects({dialog, failed + "71", "MessageBox 481" + title + kMedium + " -> cancel"});
  EXPECT_EQ(form_.Text("tmin"), "edited");
  open(68, 2, {Answer::ok, Answer::ok});
  const std::string unavailable =
      "MessageBox 480" + title + "This drive or path does not exist: a.txt -> ok";
  ExpectEffects({dialog, failed + "68", unavailable, failed + "68", unavailable,
                 "OpenForReading @/Tessel.hz/User/a.txt", "CloseFile"});
  EXPECT_THROW(open(70, 1, {Answer::ok}), ProgramEnded);
  ExpectEffects({dialog, failed + "70",
                 "MessageBox 16" + title + "Unexpected error # 70 occured: Permission denied -> ok",
                 "EndProgram"});
}

TEST_F(FileCommandsTest, ARecordThatCannotBeShownEndsTheProgram) {
  ResponseRecord record;
  record.Slot(slot::kZeroCounts) = "1 2";
  record.passband.Resize(1);
  record.delay.Resize(1);
  WriteResponseFile(host_, record, {scripted_.user, "bad.txt"});
  host_.AnswerDialog(scripted_.user + "/bad.txt");
  host_.AnswerBox(Answer::ok);
  EXPECT_THROW(FileOld(program_), ProgramEnded);
  EXPECT_THAT(host_.transcript,
              ::testing::Contains("MessageBox 16 [In 'FileOld' routine ...] Unexpected error # 9 "
                                  "occured: Subscript out of range -> ok"));
}

TEST_F(FileCommandsTest, SaveAsSortsErrorsByNumber) {
  const std::string title = " [In 'FileSaveAs' routine ...] ";
  const auto save = [&](const char* operation, int error, std::vector<Answer> answers) {
    host_.AnswerDialog(scripted_.user + "/s.txt");
    host_.Fail(operation, error);
    for (const Answer answer : answers) host_.AnswerBox(answer);
    const bool written = FileSaveAs(program_);
    return written;
  };
  EXPECT_TRUE(save("OpenForWriting", 71, {Answer::ok}));
  EXPECT_THAT(host_.TakeTranscript()[2], "MessageBox 481" + title + kMedium + " -> ok");
  EXPECT_FALSE(save("OpenForWriting", 71, {Answer::cancel}));
  EXPECT_EQ(form_.Text("LastFileName"), "s.txt");
  host_.TakeTranscript();
  EXPECT_TRUE(save("OpenForWriting", 68, {Answer::ok}));
  EXPECT_THAT(host_.TakeTranscript()[2],
              "MessageBox 48" + title + "This drive or path does not exist: s.txt -> ok");
  EXPECT_THROW(save("WriteLine", 61, {Answer::ok}), ProgramEnded);
  EXPECT_THAT(host_.TakeTranscript()[4],
              "MessageBox 16" + title + "Unexpected error # 61 occured: Disk full -> ok");
}

TEST_F(FileCommandsTest, SaveAndDeletePassTheirErrorsOn) {
  const std::string path = MakeFile("run1.txt");
  SetCurrentFile(host_, files_, path);
  host_.Fail("OpenForWriting", error_number::kPermissionDenied);
  EXPECT_EQ(ErrorOf([&] { FileSave(program_); }), error_number::kPermissionDenied);
  host_.Fail("DeleteFile", error_number::kPermissionDenied);
  host_.AnswerDialog(path);
  host_.AnswerBox(Answer::yes);
  EXPECT_EQ(ErrorOf([&] { FileDelete(program_); }), error_number::kPermissionDenied);
  EXPECT_THAT(Saved("run1.txt"), ::testing::Not(IsEmpty()));
}

}  // namespace
}  // namespace polefit
