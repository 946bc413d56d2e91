#include "app/current_file.h"

#include <gmock/gmock.h>

#include "app/file_commands.h"
#include "app/form_replacement.h"
#include "form/scripted_program.h"
#include "form/transfer.h"

namespace polefit::testing {
namespace {

using ::testing::HasSubstr;

/// "run1", saved and open, and the same by another program with Tmin 99.
struct CurrentFileTest : ::testing::Test, ScriptedProgram {
  CurrentFileTest() {
    PutAnswers(program);
    host.AnswerDialog(user + "/run1");
    FileSaveAs(program);
    other = FileBytes(user + "/run1");
    other.replace(other.find("76.7"), 4, "99");
  }
  std::string Said() {
    const auto& waiting = program.notices.Waiting();
    return waiting.empty() ? "" : waiting.front().sentence;
  }
  void Press(const std::string& caption) {
    for (const NoticeButton& button : program.notices.Waiting().front().buttons) {
      if (button.caption == caption) return button.action();
    }
    ADD_FAILURE() << "no button " << caption;
  }

  std::string other;
  CurrentFile file{program};
};

TEST_F(CurrentFileTest, WhatAnotherProgramWritesIsReloadedOrPassedOver) {
  EXPECT_EQ(file.Follow(), host.ResolvedPath(user + "/run1"));
  file.Look();
  EXPECT_EQ(Said(), "") << "our own save";
  host.Fail("WriteLine", error_number::kDiskFull, 5);
  EXPECT_THROW(FileSave(program), RunTimeError);
  host.AbandonFile();
  file.Look();
  EXPECT_EQ(Said(), "") << "our own, and not complete";
  FileSave(program);
  WriteBytes(user + "/run1", other);
  file.Look();
  EXPECT_EQ(Said(), "'run1' was changed by another program.");
  Press("Reload");
  EXPECT_EQ(form.Text("tmin"), "99");
  file.Look();
  WriteBytes(user + "/run1", other + "! a remark");
  file.Look();
  Press("Keep Mine");
  program.notices.Remove("changed file");
  file.Look();
  EXPECT_EQ(Said(), "") << "decided";
  host.ReplyToBox(Reply::cancel);
  form.SetText("tmin", "5");
  WriteBytes(user + "/run1", other + "! another one");
  file.Look();
  Press("Reload");
  EXPECT_EQ(form.Text("tmin"), "5") << "asked first, and cancelled";
}

TEST_F(CurrentFileTest, ASecondWindowOnTheSameFileSaysSoUntilItHasAnotherOne) {
  file.Follow();
  CurrentFile second(program);
  second.Follow();
  EXPECT_THAT(Said(), HasSubstr("'run1' is open in another window too"));
  program.files.currentFileName = "New data";
  EXPECT_EQ(second.Follow(), "");
  EXPECT_EQ(Said(), "");
  file.Follow();
  program.files.currentFileName = "run1";
  second.Follow();
  EXPECT_EQ(Said(), "") << "the first window has left it";
}

}  // namespace
}  // namespace polefit::testing
