#include "app/former_versions.h"

#include <gmock/gmock.h>

#include "app/file_commands.h"
#include "app/form_load.h"
#include "app/part_read.h"
#include "base/error_of.h"
#include "exchange/import/new_problem.h"
#include "form/changes.h"
#include "form/scripted_program.h"
#include "grids/grid_routines.h"
#include "responsefile/writer.h"

namespace polefit::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

struct FormerVersionsTest : ::testing::Test, ScriptedProgram {
  /// A file in the "User" folder with this gain and so many passband points, opened.
  std::string Open(const std::string& name, int points = 0, const std::string& gain = "1") {
    ResponseRecord record = BuiltInAnswers();
    record.Slot(slot::kGain) = gain;
    record.nFreqPoints = static_cast<std::int16_t>(points);
    record.passband.Resize(points + 1);
    for (int row = 1; row <= points; ++row) {
      for (int column = 1; column <= 4; ++column) record.passband.At(row, column) = "1";
    }
    WriteResponseFile(host, record, {user, name});
    OpenNamedFile(program, user + "/" + name);
    return user + "/" + name;
  }
  std::vector<std::string> Kept(const std::string& path) {
    VersionStore store(host);
    std::vector<std::string> bytes;
    for (const Version& version : store.Of(path)) bytes.push_back(store.BytesOf(version));
    return bytes;
  }
  const Notice& TheNotice() {
    EXPECT_THAT(program.notices.Waiting(), SizeIs(1));
    return program.notices.Waiting().at(0);
  }
  void Press(const std::string& caption) {
    const Notice notice = TheNotice();
    program.notices.Remove(notice.about);
    const auto button = std::ranges::find(notice.buttons, caption, &NoticeButton::caption);
    ASSERT_NE(button, notice.buttons.end()) << caption;
    button->action();
  }
};

TEST_F(FormerVersionsTest, ASaveKeepsWhatItReplacesToTheByte) {
  const std::string path = Open("a.1", 1);
  const std::string first = FileBytes(path);
  FileSave(program);
  EXPECT_THAT(Kept(path), IsEmpty()) << "the same is no other version";
  form.SetText("Gain", "2");
  host.TakeTranscript();
  FileSave(program);
  EXPECT_THAT(host.transcript, ElementsAre("OpenForWriting @/Tessel.hz/User/a.1", "CloseFile"));
  const std::string second = FileBytes(path);
  form.SetText("Gain", "3");
  host.AnswerDialog(path);
  FileSaveAs(program);
  EXPECT_THAT(Kept(path), ElementsAre(second, first));
  EXPECT_THAT(program.notices.Waiting(), IsEmpty());
}

TEST_F(FormerVersionsTest, AVersionThatCannotBeKeptIsToldAndStopsNoSave) {
  const std::string path = Open("a.1");
  form.SetText("Gain", "2");
  host.Fail("ReplaceFile", error_number::kDiskFull);
  FileSave(program);
  EXPECT_THAT(FileBytes(path), HasSubstr("\r\n2\t\t! 12."));
  EXPECT_EQ(TheNotice().sentence,
            "The former content of 'a.1' could not be kept under Former Versions: Disk full.");
}

TEST_F(FormerVersionsTest, AnOverwrittenMeasurementCanBePutBackAndIsNotWrittenOverAgain) {
  const std::string path = user + "/dut.s2p";
  WriteBytes(path, "! measured\n1 2 3 4 5 6 7 8 9\n");
  host.AnswerChoice("Open All the Same");
  host.ReplyToBox(Reply::ok);
  OpenNamedFile(program, path);
  program.notices.Remove("part read");
  FileSave(program);
  EXPECT_EQ(TheNotice().sentence,
            "'dut.s2p' was no whole Response Input File before it was saved over.");
  Press("Put It Back");
  EXPECT_EQ(FileBytes(path), "! measured\n1 2 3 4 5 6 7 8 9\n");
  EXPECT_EQ(program.files.currentFileName, "New data");
  EXPECT_THAT(Kept(path), SizeIs(2));
}

TEST_F(FormerVersionsTest, PointsThatASaveDroppedComeBackIntoFileAndForm) {
  const std::string path = Open("a.1", 2);
  const std::string former = FileBytes(path);
  ClearBoth(program.windows.grids);
  FileSave(program);
  EXPECT_EQ(TheNotice().sentence, "'a.1' held 2 points before it was saved without any.");
  Press("Put It Back");
  EXPECT_EQ(FileBytes(path), former);
  EXPECT_EQ(program.document.record.nFreqPoints, 2);
  EXPECT_FALSE(Differs(program));
}

TEST_F(FormerVersionsTest, ASaveOntoALinkSaysThatTheFileBehindItStays) {
  const std::string target = Open("a.1", 1, "5");
  const std::string before = FileBytes(target);
  std::filesystem::create_symlink(target, user + "/link.1");
  OpenNamedFile(program, user + "/link.1");
  form.SetText("Gain", "6");
  FileSave(program);
  EXPECT_EQ(FileBytes(target), before);
  EXPECT_EQ(
      TheNotice().sentence,
      "'link.1' was a link. Now it is a file of its own, and the file that it led to is as it "
      "was.");
  program.notices.Remove("link " + user + "/link.1");
  form.SetText("Gain", "7");
  FileSave(program);
  EXPECT_THAT(program.notices.Waiting(), IsEmpty());
}

TEST_F(FormerVersionsTest, AChangeByAnotherProgramIsToldAfterTheSave) {
  const std::string path = Open("a.1", 1);
  std::string changed = FileBytes(path);
  changed.replace(changed.find("\r\n1\t\t! 12."), 3, "\r\n7");
  WriteBytes(path, changed);
  form.SetText("Gain", "2");
  FileSave(program);
  EXPECT_EQ(TheNotice().sentence,
            "'a.1' had been changed by another program before it was saved over.");
  EXPECT_THAT(Kept(path), ElementsAre(changed));
  form.SetText("Gain", "3");
  host.ReplyToBox(Reply::cancel);
  Press("Put It Back");
  EXPECT_THAT(FileBytes(path), HasSubstr("\r\n2\t\t! 12.")) << "the form differed and stayed";
}

TEST_F(FormerVersionsTest, AVersionOpensAsDataInNoFile) {
  const std::string path = Open("a.1", 1, "5");
  form.SetText("Gain", "6");
  FileSave(program);
  const Version version = VersionStore(host).Of(path).at(0);
  OpenVersionAsNew(program, version);
  EXPECT_EQ(form.Text("Gain"), "5");
  EXPECT_EQ(program.files.currentFileName, "New data");
  EXPECT_TRUE(Differs(program));
  host.ReplyToBox(Reply::cancel);
  form.SetText("Gain", "8");
  OpenVersionAsNew(program, version);
  EXPECT_EQ(form.Text("Gain"), "8");
  const std::string measured = user + "/m.s2p";
  WriteBytes(measured, "1 2 3\n");
  KeepFile(program, measured, VersionKind::foreign);
  host.ReplyToBox(Reply::no);
  EXPECT_NE(ErrorOf([&] { OpenVersionAsNew(program, VersionStore(host).Of(measured).at(0)); }), 0);
  EXPECT_EQ(form.Text("Gain"), "8");
}

TEST_F(FormerVersionsTest, AFileReadInPartLeadsBackToWhatWasThere) {
  Open("a.1", 1, "5");
  form.SetText("Gain", "6");
  std::string text = FileBytes(user + "/a.1");
  const std::size_t row = text.find("1  1  1  1");
  const std::pair<std::size_t, const char*> cuts[] = {
      {text.find("\t\t! 3."), "bad.1 ends before answer line 7."},
      {row, "bad.1 was read in part, up to row 0."},
      {text.find("20. \xBB"), "bad.1 was read in part, up to line 31."}};
  for (const auto& [length, sentence] : cuts) {
    WriteBytes(user + "/bad.1", text.substr(0, length));
    host.AnswerChoice("Open All the Same");
    host.ReplyToBox(Reply::ok);
    OpenNamedFile(program, user + "/bad.1");
    EXPECT_EQ(TheNotice().sentence, sentence);
    Press("Back to What Was There");
    EXPECT_EQ(form.Text("Gain"), "6");
    EXPECT_EQ(program.files.currentFileName, "a.1");
  }
}

TEST_F(FormerVersionsTest, AnUnfinishedSaveIsOfferedFromTheNameWithTilde) {
  const std::string path = Open("my.1", 1, "5");
  const std::string whole = FileBytes(path);
  form.SetText("Gain", "6");
  // On a full disk the version cannot be kept either; what was there stands beside the torn file.
  host.Fail("MakeOwnFolders", error_number::kDiskFull);
  host.Fail("WriteLine", error_number::kDiskFull, 5);
  const RunTimeError error = ThrownBy([this] { FileSave(program); });
  EXPECT_EQ(error.path, path);
  EXPECT_EQ(error.reason, "'my.1' is incomplete; its former content stands in 'my.1~'");
  EXPECT_EQ(FileBytes(path + "~"), whole);
  FileSave(program);
  EXPECT_THAT(program.notices.Waiting(), IsEmpty()) << "the torn file is nobody's data";
  EXPECT_THAT(Kept(path), ElementsAre(whole));
  for (const bool isMissing : {true, false}) {
    WriteBytes(path + "~", whole);
    if (isMissing) {
      host.DeleteFile(path);
    } else {
      WriteBytes(path, whole.substr(0, 200));
    }
    program.files.currentFileName = "other.1";
    LookForFormerContents(program, user);
    EXPECT_THAT(TheNotice().sentence,
                HasSubstr(isMissing ? "'my.1' is missing" : "'my.1' is incomplete"));
    Press("Put It Back");
    EXPECT_EQ(FileBytes(path), whole);
    EXPECT_EQ(host.LookUpFile(path + "~"), "");
  }
}

}  // namespace
}  // namespace polefit::testing
