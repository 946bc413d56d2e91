#include "app/own_folders.h"

#include <gmock/gmock.h>

#include "app/form_load.h"
#include "app/start_up.h"
#include "demos/introduction.h"
#include "form/fake_form.h"
#include "platform/scripted_host.h"

namespace polefit::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

/// An installation for all users, and a user whose home has blanks and accents.
class OwnFoldersTest : public ::testing::Test {
 protected:
  OwnFoldersTest() {
    host_.installation = {host_.Path("lib"), host_.Path("share")};
    host_.ownFolder = base_ + "/Tessel.hz";
    WriteBytes(host_.Path("share/DOSstart.cvx"), "start");
    WriteBytes(host_.Path("share/Tessel.hz/manual.rtf"), "the manual");
    WriteBytes(host_.Path("share/Tessel.hz/Examples/Ex-CNTL.1"), "1\nas shipped");
    WriteBytes(host_.Path("share/Tessel.hz/Examples/Ex-Zpair.1"), "1\nas shipped");
  }
  std::string Own(const std::string& name) const { return base_ + "/Tessel.hz/" + name; }

  ScriptedHost host_;
  FakeForm form_;
  Program program_{host_, form_};
  const std::string base_ = host_.Path("Frau Müller/polefit/cv-Tools");
};

TEST_F(OwnFoldersTest, TheIntroductionMakesNothingAndStaysWhereItIs) {
  // A settings file of that name where the user happens to stand is another one.
  WriteBytes(host_.Path("Polefit.ini"), "h\r\n1\r\n");
  EXPECT_TRUE(WantsIntroduction(program_));
  EXPECT_EQ(host_.CurrentFolder(), host_.Root());
  EXPECT_THAT(host_.transcript, ElementsAre());
}

TEST_F(OwnFoldersTest, TheFirstUseMakesTheFoldersAndLaterOnesAddOnlyWhatIsMissing) {
  Start_Path(program_);
  EXPECT_EQ(program_.folders.BaseFolder, base_);
  EXPECT_EQ(FileBytes(base_ + "/DOSstart.cvx"), "start");
  EXPECT_EQ(FileBytes(Own("User/Ex-CNTL.1")), "1\nas shipped");
  EXPECT_EQ(std::filesystem::read_symlink(Own("manual.rtf")),
            host_.Path("share/Tessel.hz/manual.rtf"));

  WriteBytes(Own("User/Ex-CNTL.1"), "1\nmine");
  host_.DeleteFile(Own("User/Ex-Zpair.1"));
  // The next release lies elsewhere.
  std::filesystem::rename(host_.Path("share"), host_.Path("share 2"));
  host_.installation->shipped = host_.Path("share 2");
  LoadMainForm(program_);
  EXPECT_EQ(FileBytes(Own("User/Ex-CNTL.1")), "1\nmine");
  EXPECT_EQ(FileBytes(Own("User/Ex-Zpair.1")), "1\nas shipped");
  EXPECT_EQ(FileBytes(Own("manual.rtf")), "the manual");
  EXPECT_EQ(host_.CurrentFolder(), Own("User"));
  EXPECT_FALSE(WantsIntroduction(program_));
}

TEST_F(OwnFoldersTest, ProgramsAndShippedFilesAreSharedAndAllElseIsTheUsers) {
  Start_Path(program_);
  const Places places = PlacesOf(program_);
  EXPECT_EQ(places.Solver(), host_.Path("lib/pfit"));
  EXPECT_EQ(places.FrontEnd(), host_.Path("lib/polefit"));
  EXPECT_EQ(places.Examples(), host_.Path("share/Tessel.hz/Examples"));
  EXPECT_EQ(places.Report(), Own("~pft-out.txt"));
  host_.installation.reset();
  EXPECT_EQ(PlacesOf(program_).Solver(), Own("pfit"));
  EXPECT_EQ(PlacesOf(program_).Examples(), Own("Examples"));
}

TEST_F(OwnFoldersTest, WhatCannotBeMadeIsToldBeforeTheGivenMessage) {
  const struct {
    const char* operation;
    int error;
    const char* sentence;
  } cases[] = {
      {"MakeOwnFolders", error_number::kPermissionDenied, "/Tessel.hz/User' for you: Permission"},
      {"ReplaceFile", error_number::kDiskFull, "cv-Tools/DOSstart.cvx' for you: Disk full."},
      {"MakeLink", error_number::kPermissionDenied, "/manual.rtf' for you: Permission denied."},
  };
  for (const auto& [operation, error, sentence] : cases) {
    host_.Fail(operation, error);
    host_.Fail("OpenForWriting", error);
    host_.ReplyToBox(Reply::ok, Reply::ok);
    host_.TakeTranscript();
    EXPECT_THROW(LoadMainForm(program_), ProgramEnded) << operation;
    std::vector<std::string> boxes = host_.TakeTranscript();
    std::erase_if(boxes, [](const std::string& line) { return !line.starts_with("MessageBox"); });
    ASSERT_EQ(boxes.size(), 2U) << operation;
    EXPECT_THAT(boxes[0], HasSubstr(sentence));
    EXPECT_THAT(boxes[1], HasSubstr("[In 'Start_INI' routine ...]"));
  }
}

}  // namespace
}  // namespace polefit::testing
