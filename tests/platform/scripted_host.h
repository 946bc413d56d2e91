#pragma once

#include <deque>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/linux_host.h"
#include "platform/temporary_folder.h"

namespace polefit::testing {

/// A Host for tests: real files in a temporary folder, which is the current one while the host
/// lives, and everything else by script. What a test did not script (a box, a dialog) fails it,
/// and so does a scripted answer that nobody asked for.
///
/// `transcript` is the one ordered list of effects, each line the operation and what it was given.
/// The temporary folder is written as "@" in it. Look-ups and single lines of files are left out.
class ScriptedHost : private TemporaryFolder, public LinuxHost {
 public:
  ScriptedHost();
  ~ScriptedHost() override;
  ScriptedHost(const ScriptedHost&) = delete;
  ScriptedHost& operator=(const ScriptedHost&) = delete;

  /// Answers the next message box that has no answer yet.
  void AnswerBox(Answer answer) { boxAnswers_.push_back(answer); }
  /// Answers the next file dialog with a path; "" cancels it.
  void AnswerDialog(const std::string& path) { dialogAnswers_.push_back(path); }
  /// Lets `operation` fail with the error `number`, from its n-th call from now on, `times` times.
  void Fail(const std::string& operation, int number, int call = 1, int times = 1);

  /// The temporary folder, and a path in it.
  const std::string& Root() const { return TemporaryFolder::Path(); }
  std::string Path(const std::string& name) const { return File(name); }

  /// Takes the transcript so far and starts a new one.
  std::vector<std::string> TakeTranscript();

  std::vector<std::string> transcript;
  /// The last file dialog as it was asked for.
  CommonDialog lastDialog;
  std::string ownFolder;
  std::uint32_t version = 4U | (10U << 8U);

  Answer MessageBox(const std::string& text, int style, const std::string& title) override;
  void ShowOpen(CommonDialog& dialog) override { Ask("ShowOpen", dialog); }
  void ShowSave(CommonDialog& dialog) override { Ask("ShowSave", dialog); }

  std::string LookUpFile(const std::string& path) override;
  bool LookUpFolder(const std::string& path) override;
  void OpenForReading(const std::string& path) override;
  void OpenForWriting(const std::string& path) override;
  std::string_view ReadLine() override;
  void WriteLine(std::string_view line) override;
  int CloseFile() override;
  void AbandonFile() override;
  void DeleteFile(const std::string& path) override;
  void MakeFolder(const std::string& path) override;
  void ChangeFolder(const std::string& path) override;
  void ChangeDrive(const std::string& path) override;
  std::string ShortPath(const std::string& folder) override;
  std::string OwnFolder() override { return ownFolder; }

  long StartProgram(const Command& command) override;
  void ShellExecuteA(const std::string& path) override;
  void WaitForSingleObject(long processId) override;
  /// 3 March 2004, 9:05 in the morning, names in English.
  std::string FormatNow(const char* pattern) override;
  std::uint32_t GetVersion() override { return version; }
  [[noreturn]] void EndProgram() override;

 private:
  struct Fault {
    int firstCall = 0;
    int lastCall = 0;
    int number = 0;
  };

  std::string Shown(std::string text) const;
  void FailIfDue(const std::string& operation, const std::string& line);
  void Do(const std::string& operation, const std::string& detail = {});
  void Ask(const std::string& operation, CommonDialog& dialog);

  std::string formerFolder_;
  std::deque<Answer> boxAnswers_;
  std::deque<std::string> dialogAnswers_;
  std::map<std::string, int> calls_;
  std::map<std::string, std::vector<Fault>> faults_;
};

}  // namespace polefit::testing
