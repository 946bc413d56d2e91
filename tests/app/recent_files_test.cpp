#include "app/recent_files.h"

#include <gmock/gmock.h>

#include "app/file_commands.h"
#include "form/scripted_program.h"

namespace polefit::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::SizeIs;

struct RecentFilesTest : ::testing::Test, ScriptedProgram {
  /// The names of the files, those that are gone in brackets.
  std::vector<std::string> Names() {
    std::vector<std::string> names;
    for (const RecentFile& file : RecentFiles(host)) {
      const std::string name = CutPath(file.path).name;
      names.push_back(file.isThere ? name : "(" + name + ")");
    }
    return names;
  }
  void Save(const std::string& path) {
    host.AnswerDialog(path);
    EXPECT_TRUE(FileSaveAs(program));
  }
};

TEST_F(RecentFilesTest, WhatWasOpenedOrSavedLastComesFirstWhateverItsFolderIsCalled) {
  EXPECT_THAT(Names(), SizeIs(0));
  const std::string folder = host.Path("a\nfolder, ä");
  host.MakeFolder(folder);
  Save(folder + "/1.1");
  Save(user + "/2.1");
  OpenResponseFile(program, folder + "/1.1");
  EXPECT_THAT(Names(), ElementsAre("1.1", "2.1"));
  EXPECT_EQ(RecentFiles(host).at(0).path, folder + "/1.1");
  host.DeleteFile(user + "/2.1");
  host.Fail("ReplaceFile", error_number::kDiskFull);
  NoteRecentFile(host, user + "/3.1");
  EXPECT_THAT(Names(), ElementsAre("1.1", "(2.1)")) << "a list that cannot be written stays";
  for (int number = 1; number <= 12; ++number) {
    NoteRecentFile(host, user + "/" + std::to_string(number));
  }
  EXPECT_THAT(Names(), SizeIs(10));
  EXPECT_EQ(Names().at(9), "(3)");
}

TEST_F(RecentFilesTest, OneOfThemIsOpenedAfterTheQuestionAboutChangedData) {
  Save(user + "/1.1");
  form.SetText("Gain", "7");
  host.TakeTranscript();
  host.ReplyToBox(Reply::cancel);
  OpenInsteadOfForm(program, user + "/1.1", {});
  EXPECT_EQ(form.Text("Gain"), "7");
  host.ReplyToBox(Reply::no);
  OpenInsteadOfForm(program, user + "/1.1", {});
  EXPECT_EQ(form.Text("Gain"), "1");
  host.DeleteFile(user + "/1.1");
  host.ReplyToBox(Reply::ok);
  OpenInsteadOfForm(program, user + "/1.1", {});
  EXPECT_THAT(host.transcript.back(), ::testing::HasSubstr("1.1' file?"));
}

}  // namespace
}  // namespace polefit::testing
