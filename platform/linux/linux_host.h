#pragma once

#include <string>

#include "platform/host.h"
#include "platform/linux/shared_file.h"
#include "platform/linux/user_values.h"

namespace polefit {

/// The half of the Host that needs no window: files, folders, per-user values, clock, version.
class LinuxHost : public Host {
 public:
  /// `userValuesPath` is the file of the per-user store.
  explicit LinuxHost(const std::string& userValuesPath = UserValuesPath());

  ProcessName StartProcess(const ProcessStart& start) override;
  std::optional<ProcessState> StateOfProcess(long processId) override;
  bool EndGroup(long processGroup, bool atOnce) override;

  std::string LookUpFile(const std::string& path) override;
  bool LookUpFolder(const std::string& path) override;

  void OpenForReading(const std::string& path) override;
  void OpenForWriting(const std::string& path, Saving way) override;
  std::string_view ReadLine() override { return file_.ReadLine(); }
  int LinesRead() const override { return file_.LinesRead(); }
  void WriteLine(std::string_view line) override { file_.WriteLine(line); }
  int CloseFile() override { return file_.Close(); }
  void AbandonFile() override { file_.Abandon(); }

  std::string ReadFile(const std::string& path) override;
  std::string ReadFilePart(const std::string& path, std::uint64_t offset,
                           std::size_t most) override;
  void ReplaceFile(const std::string& path, std::string_view bytes, Readers readers) override;
  void MoveFile(const std::string& from, const std::string& to) override;
  void DeleteFile(const std::string& path) override;
  std::optional<FileState> StateOfFile(const std::string& path) override;
  std::vector<std::string> FilesIn(const std::string& folder) override;
  std::unique_ptr<HeldLock> TakeLock(const std::string& path,
                                     std::chrono::milliseconds patience) override;
  void MakeFolder(const std::string& path) override;
  void MakeOwnFolders(const std::string& path) override;
  std::string CurrentFolder() override;
  std::string ResolvedPath(const std::string& path) override;
  void ChangeFolder(const std::string& path) override;
  void ChangeDrive(const std::string& path) override;
  std::string ShortPath(const std::string& folder) override;
  void MakeLink(const std::string& target, const std::string& path) override;
  std::string OwnFolder() override;
  std::optional<Installation> SharedInstallation() override;
  std::string ConfigurationFolder() override;
  std::string StateFolder() override;
  std::string RuntimeFolder() override;

  std::optional<RegistryKey> RegOpenKeyExA(std::uint32_t root, const std::string& subKey,
                                           std::uint32_t access) override;
  std::optional<CreatedKey> RegCreateKeyExA(std::uint32_t root, const std::string& subKey) override;
  std::optional<RegistryValue> RegQueryValueExA(RegistryKey key, const std::string& name) override;
  bool RegSetValueExA(RegistryKey key, const std::string& name,
                      const RegistryValue& value) override;
  void RegCloseKey(RegistryKey key) override;

  std::string UserSetting(const std::string& name) override;
  void KeepUserSetting(const std::string& name, const std::string& bytes) override;
  void WithdrawRestart() override;

  std::int64_t MillisecondsNow() override;
  std::string FormatNow(const char* pattern) override;
  std::uint32_t GetVersion() override;

 private:
  SharedFile file_;
  UserValues values_;
};

}  // namespace polefit
