#pragma once

#include <deque>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/linux/linux_host.h"
#include "platform/temporary_folder.h"

namespace polefit::testing {

/// A Host for tests: real files in a temporary folder, which is the current one while the host
/// lives, and everything else by script. What a test did not script (a box, a dialog) fails it,
/// and so does a scripted answer that nobody asked for.
///
/// `transcript` is the one ordered list of effects, each line the operation and what it was given.
/// The temporary folder is written as "@" in it. Look-ups, readings of whole files, single lines of
/// files and what goes on in the folder of what the program remembers are left out.
class ScriptedHost : private TemporaryFolder, public LinuxHost {
  using Text = const std::string&;
  using Real = LinuxHost;

 public:
  ScriptedHost();
  ~ScriptedHost() override;

  /// Answers the next message boxes that have no answer yet.
  template <typename... Replies>
  void ReplyToBox(Replies... replies) {
    (replies_.push_back(replies), ...);
  }
  /// Presses the button with this caption of the next choice.
  void AnswerChoice(Text caption) { choiceAnswers_.push_back(caption); }
  /// Answers the next file dialog with a path; "" cancels it.
  void AnswerDialog(Text path) { dialogAnswers_.push_back(path); }
  /// Lets `operation` fail with the error `number`, from its n-th call from now on, `times` times.
  void Fail(Text operation, int number, int call = 1, int times = 1);

  /// Lets no operation fail any more.
  void ForgetFaults() { faults_.clear(); }

  /// The temporary folder, and a path in it.
  const std::string& Root() const { return TemporaryFolder::Path(); }
  std::string Path(Text name) const { return File(name); }

  /// Takes the transcript so far and starts a new one.
  std::vector<std::string> TakeTranscript() { return std::exchange(transcript, {}); }

  std::vector<std::string> transcript;
  /// The last file dialog as it was asked for.
  CommonDialog lastDialog;
  std::string ownFolder;
  /// Nothing: all is in the program's own folder.
  std::optional<Installation> installation;
  /// What the clock shows.
  std::string time = "2004-03-03 09:05:00";
  std::uint32_t version = 4U | (10U << 8U);
  /// Milliseconds since 1970.
  std::int64_t now = 1'078'304'700'000;
  /// The processes that there are, by their ids. A started one is added with the next id.
  std::map<long, ProcessState> processes;

  Reply MessageBox(Text text, int style, Text title) override;
  std::size_t Ask(const Choice& choice) override;
  void ShowOpen(CommonDialog& dialog) override { AskForPath(__func__, dialog); }
  void ShowSave(CommonDialog& dialog) override { AskForPath(__func__, dialog); }

  std::string LookUpFile(Text path) override { return Try(__func__).Real::LookUpFile(path); }
  bool LookUpFolder(Text path) override { return Try(__func__).Real::LookUpFolder(path); }
  void OpenForReading(Text path) override { Do(__func__, path).Real::OpenForReading(path); }
  void OpenForWriting(Text path, Saving way) override {
    Do(__func__, path).Real::OpenForWriting(path, way);
  }
  void WriteLine(std::string_view line) override { Try(__func__).Real::WriteLine(line); }
  int CloseFile() override { return Do(__func__).Real::CloseFile(); }
  void AbandonFile() override { Do(__func__).Real::AbandonFile(); }
  std::string ReadFile(Text path) override { return Try(__func__).Real::ReadFile(path); }
  std::string ReadFilePart(Text path, std::uint64_t offset, std::size_t most) override {
    return Try(__func__).Real::ReadFilePart(path, offset, most);
  }
  void ReplaceFile(Text path, std::string_view bytes, Readers readers) override {
    Do(__func__, path).Real::ReplaceFile(path, bytes, readers);
  }
  void MoveFile(Text from, Text to) override {
    Do(__func__, from + " " + to).Real::MoveFile(from, to);
  }
  std::vector<std::string> FilesIn(Text folder) override {
    return Try(__func__).Real::FilesIn(folder);
  }
  std::optional<FileState> StateOfFile(Text path) override {
    return Try(__func__).Real::StateOfFile(path);
  }
  std::unique_ptr<HeldLock> TakeLock(Text path, std::chrono::milliseconds patience) override {
    return Do(__func__, path).Real::TakeLock(path, patience);
  }
  void MakeOwnFolders(Text path) override { Do(__func__, path).Real::MakeOwnFolders(path); }
  void DeleteFile(Text path) override { Do(__func__, path).Real::DeleteFile(path); }
  void MakeFolder(Text path) override { Do(__func__, path).Real::MakeFolder(path); }
  void ChangeFolder(Text path) override { Do(__func__, path).Real::ChangeFolder(path); }
  void ChangeDrive(Text path) override { Do(__func__, path); }
  void MakeLink(Text target, Text path) override {
    Do(__func__, target + " " + path).Real::MakeLink(target, path);
  }
  std::string OwnFolder() override { return ownFolder; }
  std::optional<Installation> SharedInstallation() override { return installation; }
  std::string ConfigurationFolder() override { return File("configuration"); }
  std::string StateFolder() override { return File("state"); }
  std::string RuntimeFolder() override { return File("state/runtime"); }

  long StartProgram(const Command& command) override;
  ProcessName StartProcess(const ProcessStart& start) override;
  std::optional<ProcessState> StateOfProcess(long id) override;
  bool EndGroup(long group, bool atOnce) override;
  void KeepUserSetting(Text name, Text bytes) override {
    Do(__func__, name).Real::KeepUserSetting(name, bytes);
  }
  void WithdrawRestart() override { Do(__func__); }
  std::int64_t MillisecondsNow() override { return now; }
  void ShellExecuteA(Text path) override { Do(__func__, path); }
  void WaitForSingleObject(long id) override { Do(__func__, std::to_string(id)); }
  /// The time above, names in English.
  std::string FormatNow(const char* pattern) override;
  std::uint32_t GetVersion() override { return version; }
  [[noreturn]] void EndProgram() override;

 private:
  void Note(std::string line);
  /// Fails when a test wants it so. The result is this host, to do the real operation with.
  Real& Try(Text operation, Text detail = {});
  /// The same for an operation that stands in the transcript.
  Real& Do(Text operation, Text detail = {});
  void AskForPath(Text operation, CommonDialog& dialog);
  bool IsTaken(CommonDialog& dialog);

  std::string formerFolder_ = Real::CurrentFolder();
  std::deque<Reply> replies_;
  std::deque<std::string> choiceAnswers_;
  std::deque<std::string> dialogAnswers_;
  std::map<std::string, int> calls_;
  /// The error of an operation's n-th call.
  std::map<std::pair<std::string, int>, int> faults_;
};

}  // namespace polefit::testing
