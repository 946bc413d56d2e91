#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <optional>

#include "app/file_commands.h"
#include "app/form_load.h"
#include "app/former_versions.h"
#include "app/recovery.h"
#include "app/submission.h"
#include "app/version_store.h"
#include "exchange/import/new_problem.h"
#include "form/changes.h"
#include "form/fake_form.h"
#include "platform/linux/system_faults.h"
#include "platform/scripted_host.h"
#include "responsefile/writer.h"
#include "runs/run_watch.h"

namespace polefit::testing {
namespace {

/// Starts runs as the program does, up to the process, and has an answer for every box and dialog:
/// what is asked in each case depends on the fault.
struct AnsweringHost : ScriptedHost {
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
    constexpr int kRetryOrSkip = 481;
    const bool asksToSave = (style & 0xF) == kYesNoCancel;
    boxes += asksToSave ? 0 : 1;
    if (asksToSave) return Reply::no;
    return style == kRetryOrSkip && skips ? Reply::cancel : Reply::ok;
  }
  void ShowOpen(CommonDialog& dialog) override { Take(dialog); }
  void ShowSave(CommonDialog& dialog) override { Take(dialog); }
  void Take(CommonDialog& dialog) {
    dialog.fileName = chosen;
    ChangeFolder(chosen.substr(0, chosen.rfind('/')));
  }

  RunWatch runs{*this};
  std::string chosen;
  bool skips = false;
  int boxes = 0;
};

/// A window with a saved file, an answer changed since, and another file beside.
struct ChangedFile {
  ChangedFile() {
    program.folders = {
        host.Root(), host.Path("Tessel.hz"), host.Path("Tessel.hz/last-run.ini"), {}};
    WriteBytes(host.Path("DOSstart.cvx"), "start");
    host.MakeFolder(user);
    host.ChangeFolder(user);
    host.chosen = other;
    former = MakeFile("my.1", "former");
    formerOther = MakeFile("other.1", "other");
    OpenNamedFile(program, path);
    form.SetText("Gain", "typed");
    program.document.DataChanged = 1;
  }
  std::string MakeFile(const std::string& name, const std::string& gain) {
    ResponseRecord record = BuiltInAnswers();
    record.Slot(slot::kGain) = gain;
    WriteResponseFile(host, record, {user, name});
    return FileBytes(user + "/" + name);
  }

  bool IsRunning() const { return host.runs.IsOn(); }
  static bool IsTypedIn(const std::string& file) {
    const std::string bytes = FileBytes(file);
    return bytes.find("typed\t\t! 12.") != std::string::npos && bytes.ends_with("variables?\r\n");
  }
  bool IsSaved() const { return IsTypedIn(path); }
  /// Whole under one name or another.
  bool Has(const std::string& file, const std::string& content) {
    if (FileBytes(file) == content || FileBytes(file + "~") == content) return true;
    VersionStore store(host);
    return std::ranges::any_of(
        store.Of(file), [&](const Version& version) { return store.BytesOf(version) == content; });
  }
  bool HasFormer() { return Has(path, former) && Has(other, formerOther); }
  /// The gain that the next start offers to bring back; "" for nothing.
  std::string Recovered() {
    FakeForm nextForm;
    Program next{host, nextForm};
    NoteShown(next);
    OfferRecovered(next, [] {});
    if (next.notices.Waiting().empty()) return {};
    next.notices.Waiting().front().buttons.front().action();
    return nextForm.Text("Gain");
  }

  AnsweringHost host;
  FakeForm form;
  Program program{host, form};
  const std::string user = host.Path("Tessel.hz/User");
  const std::string path = user + "/my.1";
  const std::string other = user + "/other.1";
  std::string former;
  std::string formerOther;
};

constexpr std::array kErrors = {EIO, ENOSPC, EACCES, EROFS, ESTALE, ENOTCONN, EMFILE};

/// What the program does when nothing catches an error of `command`, or the error ends it. True
/// when the user was told of something.
bool IsTold(ChangedFile& window, const std::function<void()>& command) {
  try {
    command();
  } catch (const ProgramEnded&) {
    RecoveryKeeper(window.program).Keep();
  } catch (const RunTimeError& error) {
    window.host.AbandonFile();
    return !error.description.empty();
  }
  return window.host.boxes > 0 || !window.program.notices.Waiting().empty();
}

TEST(CommandFaults, WhateverSystemCallFailsACommandIsDoneOrToldAndLosesNothing) {
  const auto shows = [](ChangedFile& window, const char* gain) {
    return window.form.Text("Gain") == gain;
  };
  const struct {
    const char* name;
    std::function<void(ChangedFile&)> run;
    std::function<bool(ChangedFile&)> isDone;
  } commands[] = {
      {"Save", [](ChangedFile& window) { FileSave(window.program); },
       [](ChangedFile& window) { return window.IsSaved(); }},
      {"Save As", [](ChangedFile& window) { FileSaveAs(window.program); },
       [](ChangedFile& window) { return ChangedFile::IsTypedIn(window.other); }},
      {"Open", [](ChangedFile& window) { FileOld(window.program); },
       [&](ChangedFile& window) { return shows(window, "other"); }},
      {"Put Back",
       [](ChangedFile& window) { PutContentBack(window.program, window.path, window.formerOther); },
       [&](ChangedFile& window) { return FileBytes(window.path) == window.formerOther; }}};
  for (const auto& command : commands) {
    int at = 0;
    for (bool isStruck = true; isStruck;) {
      const int error = kErrors.at(static_cast<std::size_t>(++at) % kErrors.size());
      const std::string when =
          command.name + (" " + std::to_string(at)) + ": " + std::strerror(error);
      ChangedFile window;
      window.host.skips = at % 2 == 0;
      bool isTold = false;
      isStruck =
          RunUnder({"", at, error}, [&] { isTold = IsTold(window, [&] { command.run(window); }); });
      const bool isDone = command.isDone(window);
      // A former version that cannot be kept stops no save, and a notice says so.
      EXPECT_TRUE(window.HasFormer() || (isDone && isTold)) << when;
      EXPECT_TRUE(isDone || isTold) << when;
      EXPECT_TRUE(isDone || isStruck) << when;
      EXPECT_TRUE(isDone || shows(window, "typed")) << when;
    }
    EXPECT_GT(at, 5) << command.name;
  }
}

TEST(CommandFaults, WhateverSystemCallOfASubmitFailsNothingIsLostAndOnlyASavedFileIsRun) {
  bool isStruck = true;
  int at = 0;
  while (isStruck) {
    const int error = kErrors.at(static_cast<std::size_t>(++at) % kErrors.size());
    const std::string when = std::to_string(at) + ": " + std::strerror(error);
    ChangedFile window;
    bool isTold = false;
    isStruck = RunUnder({"", at, error},
                        [&] { isTold = IsTold(window, [&] { SubmitRun(window.program); }); });
    EXPECT_TRUE(window.HasFormer() || window.IsSaved()) << when;
    EXPECT_TRUE(window.IsSaved() || !window.IsRunning()) << when;
    EXPECT_TRUE(window.IsRunning() || (isStruck && isTold)) << when;
    EXPECT_EQ(window.form.Text("Gain"), "typed") << when;
    if (window.IsRunning()) continue;
    // The user tries again; no process of the first try may be in the way.
    EXPECT_TRUE(window.host.processes.empty()) << when;
    SubmitRun(window.program);
    EXPECT_TRUE(window.IsSaved() && window.IsRunning()) << when;
    const auto files = window.host.FilesIn(window.user);
    EXPECT_THAT(files, ::testing::ElementsAre("my.1", "other.1")) << when;
  }
  EXPECT_GT(at, 100);
}

/// `action` in a process of its own, which is killed at its n-th system call; false when it came to
/// an end before.
bool IsKilledAt(int at, const std::function<void()>& action) {
  const pid_t process = ::fork();
  if (process == 0) {
    RunUnder({"", at, 0, true}, action);
    ::_exit(0);
  }
  int status = 0;
  ::waitpid(process, &status, 0);
  return WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
}

TEST(CommandFaults, WhereverASubmitIsKilledFormerFileAndTypedAnswersAreThere) {
  int at = 0;
  for (bool isKilled = true; isKilled;) {
    ChangedFile window;
    {
      RecoveryKeeper keeper(window.program);
      keeper.Keep();
      isKilled = IsKilledAt(++at, [&] { SubmitRun(window.program); });
    }
    EXPECT_TRUE(window.HasFormer() || window.IsSaved()) << at;
    EXPECT_EQ(window.Recovered(), "typed") << at;
  }
  EXPECT_GT(at, 100);
}

/// A start in this folder as it stands: what the form shows then.
std::string StartIn(ScriptedHost& host) {
  FakeForm form;
  Program program{host, form};
  LoadMainForm(program);
  return form.Text("Gain");
}

TEST(CommandFaults, AFirstStartThatFailsOrIsKilledLeavesTheNextOneWhole) {
  for (const bool isKill : {false, true}) {
    int at = 0;
    for (bool isStruck = true; isStruck;) {
      AnsweringHost host;
      ++at;
      const int error = kErrors.at(static_cast<std::size_t>(at) % kErrors.size());
      const auto start = [&] {
        try {
          StartIn(host);
        } catch (const ProgramEnded&) {
          EXPECT_GT(host.boxes, 0) << at;
        }
      };
      isStruck = isKill ? IsKilledAt(at, start) : RunUnder({"", at, error}, start);
      host.AbandonFile();
      EXPECT_EQ(StartIn(host), "1") << at;
      EXPECT_THAT(FileBytes(host.Path("Tessel.hz/Polefit.ini")), ::testing::EndsWith("run\r\n"));
    }
    EXPECT_GT(at, 10);
  }
}

}  // namespace
}  // namespace polefit::testing
