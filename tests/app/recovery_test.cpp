#include "app/recovery.h"

#include <gmock/gmock.h>

#include "app/file_commands.h"
#include "app/former_versions.h"
#include "app/version_list.h"
#include "form/changes.h"
#include "form/scripted_program.h"
#include "form/transfer.h"
#include "grids/cell_editor.h"

namespace polefit::testing {
namespace {

using std::chrono::milliseconds;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

struct RecoveryTest : ::testing::Test, ScriptedProgram {
  RecoveryTest() {
    PutAnswers(program);
    NoteShown(program);
    host.TakeTranscript();
  }
  std::vector<std::string> Copies() {
    std::vector<std::string> copies;
    for (const std::string& name : host.FilesIn(host.Path("state/recovery"))) {
      if (name.ends_with(".json")) copies.push_back(name);
    }
    return copies;
  }
  std::vector<VersionLine> Unsaved(const std::string& path) { return ListVersions(host, path); }
  void Offer() {
    OfferRecovered(program, [this] { ++shown; });
  }
  void Press(std::size_t button) {
    const Notice notice = program.notices.Waiting().at(0);
    program.notices.Remove(notice.about);
    notice.buttons.at(button).action();
  }

  int shown = 0;
};

TEST_F(RecoveryTest, TheCopyIsDueAfterTwoSecondsOfRestAndAtLatestAfterTwenty) {
  RecoveryKeeper keeper(program);
  EXPECT_EQ(keeper.Due(), std::nullopt);
  keeper.NoteChange(milliseconds(1000));
  EXPECT_EQ(keeper.Due(), milliseconds(3000));
  keeper.NoteChange(milliseconds(2500));
  EXPECT_EQ(keeper.Due(), milliseconds(4500));
  keeper.NoteChange(milliseconds(20500));
  EXPECT_EQ(keeper.Due(), milliseconds(21000));
  keeper.Keep();
  EXPECT_EQ(keeper.Due(), std::nullopt);
  EXPECT_THAT(Copies(), IsEmpty()) << "nothing differs";
  EXPECT_THAT(host.transcript, IsEmpty());
}

TEST_F(RecoveryTest, ComesAndGoesWithWhatIsNotSavedWhateverTheMarkOfChangesSays) {
  RecoveryKeeper keeper(program);
  const auto copiesAfter = [&](const std::function<void()>& change) {
    change();
    program.document.DataChanged = 0;
    keeper.Keep();
    return Copies().size();
  };
  const std::string path = user + "/a.1";
  EXPECT_EQ(copiesAfter([&] { form.SetText("Gain", "7"); }), 1U);
  host.AnswerDialog(path);
  EXPECT_EQ(copiesAfter([&] { FileSaveAs(program); }), 0U);
  EXPECT_EQ(copiesAfter([&] { form.passData.SetText(1, 2, "a lone cell"); }), 1U);
  EXPECT_EQ(copiesAfter([&] { FileSave(program); }), 1U) << "no save reaches it";
  EXPECT_EQ(copiesAfter([&] { form.passData.SetText(1, 2, " "); }), 0U);
  EXPECT_FALSE(Differs(program));
  EXPECT_EQ(copiesAfter([&] { form.SetText("Gain", "8"); }), 1U);
  EXPECT_EQ(copiesAfter([&] { form.SetText("Gain", "7"); }), 0U);
}

TEST_F(RecoveryTest, AFaultIsToldOnceAndTheNextCopyIsTriedAgain) {
  form.SetText("Gain", "7");
  for (const char* const operation : {"MakeOwnFolders", "TakeLock", "ReplaceFile"}) {
    RecoveryKeeper keeper(program);
    host.Fail(operation, error_number::kDiskFull, 1, 2);
    keeper.Keep();
    EXPECT_THAT(program.notices.Waiting(), SizeIs(1)) << operation;
    program.notices.Remove("recovery copy");
    keeper.Keep();
    EXPECT_THAT(program.notices.Waiting(), IsEmpty()) << operation;
    EXPECT_THAT(Copies(), IsEmpty());
    keeper.Keep();
    EXPECT_THAT(Copies(), SizeIs(1));
    form.SetText("Gain", "1");
    NoteShown(program);
    keeper.Keep();
    form.SetText("Gain", "7");
  }
}

TEST_F(RecoveryTest, AWindowThatIsGoneIsOfferedOnceAndRestoredUnderItsName) {
  const std::string path = user + "/vna.1";
  program.files.currentFileName = "vna.1";
  {
    RecoveryKeeper keeper(program);
    form.SetText("Gain", "7");
    form.passData.SetRowCount(10);
    form.passData.SetText(9, 3, "typed, incomplete");
    keeper.Keep();
    Offer();
    EXPECT_THAT(program.notices.Waiting(), IsEmpty()) << "its window lives";
  }
  form.SetText("Gain", "1");
  form.passData.SetText(9, 3, "");
  NoteShown(program);
  host.ChangeFolder(host.Root());
  program.files.currentFileName = "Start Up Values";
  Offer();
  EXPECT_THAT(Copies(), IsEmpty());
  const Notice notice = program.notices.Waiting().at(0);
  EXPECT_EQ(notice.sentence, "vna.1 had changes of 3 Mar 09:05 that were not saved.");
  EXPECT_THAT(Unsaved(path), SizeIs(1));
  host.TakeTranscript();
  Press(0);
  EXPECT_EQ(form.Text("Gain"), "7");
  EXPECT_EQ(form.passData.Text(9, 3), "typed, incomplete");
  EXPECT_EQ(program.files.currentFileName, "vna.1");
  EXPECT_EQ(host.CurrentFolder(), user);
  EXPECT_EQ(host.LookUpFile(path), "");
  EXPECT_TRUE(Differs(program));
  Offer();
  EXPECT_THAT(program.notices.Waiting(), IsEmpty()) << "offered once";
  form.SetText("Gain", "2");
  host.ReplyToBox(Reply::no);
  OpenVersionAsNew(program, Unsaved(path).at(0).version);
  EXPECT_EQ(form.Text("Gain"), "7") << "and kept under the former versions";
}

TEST_F(RecoveryTest, SeveralWindowsAreOfferedTogetherAndWhatIsNoCopyGoes) {
  host.MakeOwnFolders(host.Path("state/recovery"));
  for (const char* const name : {"1-1.json", "1-2.json"}) {
    RecoveryCopy copy{CellsOf(program), 1000};
    copy.cells.typed.Note1 = name;
    WriteBytes(host.Path("state/recovery/" + std::string(name)), RecoveryText(copy));
  }
  WriteBytes(host.Path("state/recovery/1-3.json"), "{\"format\":\"polefit recovery 1\"}");
  WriteBytes(host.Path("state/recovery/1-4.json.new"), "{");
  Offer();
  EXPECT_THAT(host.FilesIn(host.Path("state/recovery")), IsEmpty());
  EXPECT_EQ(program.notices.Waiting().at(0).sentence, "2 windows had changes that were not saved.");
  Press(0);
  EXPECT_EQ(shown, 1);
  EXPECT_THAT(Unsaved(user + "/Start Up Values"), SizeIs(2));
}

TEST_F(RecoveryTest, ACopyHoldsEverythingAndADamagedOneIsNone) {
  form.SetText("Note1", "Ω \"quoted\"\t\\ \x01");
  form.passData.SetRowCount(5);
  form.passData.SetText(3, 1, " 1,5 ");
  ShowCellEditor(program.windows.grids);
  form.editor.SetText("half typed");
  const RecoveryCopy copy{CellsOf(program), 1234567890};
  ASSERT_TRUE(copy.cells.editor.has_value());
  const std::string text = RecoveryText(copy);
  EXPECT_EQ(ReadRecovery(text), copy);
  for (std::size_t length = 0; length < text.size(); length += 97) {
    EXPECT_EQ(ReadRecovery(text.substr(0, length)), std::nullopt) << length;
  }
  const auto count = text.find("\"counts\"");
  std::string wrong = text;
  wrong.replace(wrong.find('0', count), 1, "32000");
  EXPECT_EQ(ReadRecovery(wrong), std::nullopt) << "more points than rows";
}

}  // namespace
}  // namespace polefit::testing
