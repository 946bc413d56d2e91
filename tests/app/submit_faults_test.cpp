#include <gmock/gmock.h>

#include <array>
#include <cerrno>
#include <cstring>

#include "app/form_load.h"
#include "app/submission.h"
#include "app/version_store.h"
#include "form/fake_form.h"
#include "platform/linux/system_faults.h"
#include "platform/scripted_host.h"
#include "responsefile/writer.h"
#include "runs/run_watch.h"

namespace polefit::testing {
namespace {

/// Starts runs as the program does, up to the process, and has an answer for every box: what is
/// asked in each case depends on the fault.
struct RunningHost : ScriptedHost {
  long StartProgram(const Command& command) override {
    const bool isRun = command.kind == CommandKind::runSolver;
    return isRun ? runs.Start(command) : ScriptedHost::StartProgram(command);
  }
  bool EndGroup(long group, bool atOnce) override {
    processes.clear();
    return ScriptedHost::EndGroup(group, atOnce);
  }
  Reply MessageBox(const std::string& /*text*/, int style, const std::string& /*title*/) override {
    constexpr int kYesNoCancel = 3;
    return (style & 0xF) == kYesNoCancel ? Reply::no : Reply::ok;
  }

  RunWatch runs{*this};
};

/// A window with a saved file and an answer changed since.
struct ChangedFile {
  ChangedFile() {
    program.folders = {
        host.Root(), host.Path("Tessel.hz"), host.Path("Tessel.hz/last-run.ini"), {}};
    WriteBytes(host.Path("DOSstart.cvx"), "start");
    WriteBytes(host.Path("Tessel.hz/last-run.ini"), "former values");
    host.MakeFolder(user);
    host.ChangeFolder(user);
    ResponseRecord record;
    for (const Question& question : kQuestions) {
      if (question.kind == AnswerKind::flag) record.Slot(question.slot) = "N";
    }
    record.Slot(slot::kGain) = "former";
    record.Slot(slot::kZeroCounts) = "0 0 0";
    WriteResponseFile(host, record, {user, "my.1"});
    former = FileBytes(path);
    OpenNamedFile(program, path);
    form.SetText("Gain", "typed");
    program.document.DataChanged = 1;
  }

  bool IsRunning() const { return host.runs.IsOn(); }
  bool IsSaved() const {
    const std::string bytes = FileBytes(path);
    return bytes.find("typed\t\t! 12.") != std::string::npos && bytes.ends_with("variables?\r\n");
  }
  /// Whole under one name or another.
  bool HasFormer() {
    if (FileBytes(path) == former || FileBytes(path + "~") == former) return true;
    VersionStore store(host);
    return std::ranges::any_of(
        store.Of(path), [&](const Version& version) { return store.BytesOf(version) == former; });
  }

  RunningHost host;
  FakeForm form;
  Program program{host, form};
  const std::string user = host.Path("Tessel.hz/User");
  const std::string path = user + "/my.1";
  std::string former;
};

TEST(SubmitFaults, WhateverSystemCallFailsNothingIsLostAndOnlyASavedFileIsRun) {
  constexpr std::array kErrors = {EIO, ENOSPC, EACCES};
  bool isStruck = true;
  int at = 0;
  while (isStruck) {
    const int error = kErrors.at(static_cast<std::size_t>(++at) % kErrors.size());
    const std::string when = std::to_string(at) + ": " + std::strerror(error);
    ChangedFile window;
    isStruck = RunUnder({"", at, error}, [&] {
      try {
        SubmitRun(window.program);
      } catch (const ProgramEnded&) {
        // Some errors end the program; what was typed is in the recovery copy then.
      }
    });
    EXPECT_TRUE(window.HasFormer() || window.IsSaved()) << when;
    EXPECT_TRUE(window.IsSaved() || !window.IsRunning()) << when;
    EXPECT_TRUE(isStruck || window.IsRunning()) << when;
    EXPECT_EQ(window.form.Text("Gain"), "typed") << when;
    if (window.IsRunning()) continue;
    // The user tries again; no process of the first try may be in the way.
    EXPECT_TRUE(window.host.processes.empty()) << when;
    window.host.AbandonFile();
    SubmitRun(window.program);
    EXPECT_TRUE(window.IsSaved() && window.IsRunning()) << when;
    EXPECT_EQ(window.host.FilesIn(window.user), std::vector<std::string>{"my.1"}) << when;
  }
  EXPECT_GT(at, 100);
}

}  // namespace
}  // namespace polefit::testing
