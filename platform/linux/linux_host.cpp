#include "platform/linux/linux_host.h"

#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <climits>
#include <clocale>
#include <cstdlib>
#include <ctime>
#include <memory>

#include "base/pattern.h"
#include "base/text.h"
#include "platform/linux/detached_process.h"
#include "platform/linux/file_lock.h"
#include "platform/linux/file_reading.h"
#include "platform/linux/folders.h"
#include "platform/linux/installation.h"
#include "platform/linux/restart_entry.h"
#include "platform/linux/safe_file.h"
#include "platform/linux/user_folders.h"
#include "platform/linux/user_settings.h"
#include "platform/paths.h"

namespace polefit {

namespace {

constexpr const char* kSettingsName = "settings";

/// Does `action`; an error of it names what it was about.
template <typename Action>
auto About(const std::string& path, Action action) {
  try {
    return action();
  } catch (RunTimeError& error) {
    error.path = path;
    throw;
  }
}

/// What is at `path`; nothing when nothing is there. Other failures throw.
std::optional<struct stat> StatusOf(const std::string& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) == 0) return status;
  const bool nothingThere =
      errno == ENOENT || errno == ENOTDIR || errno == ENAMETOOLONG || errno == ELOOP;
  if (nothingThere) return std::nullopt;
  throw FromSystemError(errno);
}

/// For a look-up, nothing is there that this user may not look up.
std::optional<mode_t> ModeOf(const std::string& path) {
  try {
    const std::optional<struct stat> status = StatusOf(path);
    return status ? std::optional(status->st_mode) : std::nullopt;
  } catch (const RunTimeError& error) {
    if (error.number != error_number::kPermissionDenied) throw;
    return std::nullopt;
  }
}

bool IsLink(const std::string& path) {
  struct stat status {};
  return ::lstat(path.c_str(), &status) == 0 && S_ISLNK(status.st_mode);
}

bool IsFile(std::optional<mode_t> mode) {
  return mode && !S_ISDIR(*mode);
}

/// The first name in byte order of a file in `folder` that fits `name`, or "".
std::string FirstMatch(const std::string& folder, const std::string& name) {
  const std::unique_ptr<DIR, int (*)(DIR*)> listing(::opendir(folder.c_str()), ::closedir);
  if (listing == nullptr) {
    if (errno == ENOENT || errno == ENOTDIR || errno == EACCES) return {};
    throw FromSystemError(errno);
  }
  std::string first;
  while (const dirent* const entry = ::readdir(listing.get())) {
    const std::string candidate = entry->d_name;
    const bool better = first.empty() || candidate < first;
    if (better && FitsPattern(candidate, name) && IsFile(ModeOf(JoinPath(folder, candidate)))) {
      first = candidate;
    }
  }
  return first;
}

/// The time in the pattern of strftime, with the names of a locale; "" is the user's.
std::string FormatTime(const std::tm& time, const char* pattern, const char* localeName) {
  std::array<char, 256> text{};
  locale_t locale = ::newlocale(LC_TIME_MASK, localeName, nullptr);
  if (locale == nullptr) locale = ::newlocale(LC_TIME_MASK, "C", nullptr);
  std::string whole = pattern;
  const std::size_t halfDay = whole.find("%p");
  if (halfDay != std::string::npos &&
      ::strftime_l(text.data(), text.size(), "%p", &time, locale) == 0) {
    // Many languages have no such names.
    whole.replace(halfDay, 2, time.tm_hour < 12 ? "AM" : "PM");
  }
  ::strftime_l(text.data(), text.size(), whole.c_str(), &time, locale);
  ::freelocale(locale);
  return text.data();
}

}  // namespace

ProcessName LinuxHost::StartProcess(const ProcessStart& start) {
  return StartDetached(start);
}

std::optional<ProcessState> LinuxHost::StateOfProcess(long processId) {
  return LookAtProcess(processId);
}

bool LinuxHost::EndGroup(long processGroup, bool atOnce) {
  return EndProcessGroup(processGroup, atOnce);
}

LinuxHost::LinuxHost(const std::string& userValuesPath) : values_(userValuesPath) {}

std::string LinuxHost::LookUpFile(const std::string& path) {
  const std::string name = CutPath(path).name;
  if (!HasWildcards(name)) return !name.empty() && IsFile(ModeOf(path)) ? name : "";
  return FirstMatch(FolderOf(path), name);
}

bool LinuxHost::LookUpFolder(const std::string& path) {
  const std::optional<mode_t> mode = ModeOf(path);
  return mode && S_ISDIR(*mode);
}

void LinuxHost::OpenForReading(const std::string& path) {
  About(path, [&] { file_.OpenForReading(path); });
}

void LinuxHost::OpenForWriting(const std::string& path, Saving way) {
  About(path, [&] { file_.OpenForWriting(path, way); });
}

std::string LinuxHost::ReadFile(const std::string& path) {
  return About(path, [&] { return WholeFile(path); });
}

std::string LinuxHost::ReadFilePart(const std::string& path, std::uint64_t offset,
                                    std::size_t most) {
  return About(path, [&] { return PartOfFile(path, offset, most); });
}

void LinuxHost::ReplaceFile(const std::string& path, std::string_view bytes, Readers readers) {
  About(path, [&] { ReplaceFileSafely(path, bytes, readers); });
}

void LinuxHost::MoveFile(const std::string& from, const std::string& to) {
  About(to, [&] { MoveFileSafely(from, to); });
}

std::optional<FileState> LinuxHost::StateOfFile(const std::string& path) {
  constexpr std::int64_t kNanosecondsPerSecond = 1'000'000'000;
  const std::optional<struct stat> status = About(path, [&] { return StatusOf(path); });
  if (!status || !S_ISREG(status->st_mode)) return std::nullopt;
  return FileState{static_cast<std::uint64_t>(status->st_size),
                   status->st_mtim.tv_sec * kNanosecondsPerSecond + status->st_mtim.tv_nsec,
                   status->st_uid == ::geteuid(), IsLink(path)};
}

std::vector<std::string> LinuxHost::FilesIn(const std::string& folder) {
  return About(folder, [&] { return RegularFilesIn(folder); });
}

std::unique_ptr<HeldLock> LinuxHost::TakeLock(const std::string& path,
                                              std::chrono::milliseconds patience) {
  return About(path, [&] { return TakeFileLock(path, patience); });
}

void LinuxHost::MakeOwnFolders(const std::string& path) {
  About(path, [&] { MakeFoldersTo(path, Readers::ownerOnly); });
}

void LinuxHost::DeleteFile(const std::string& path) {
  About(path, [&] {
    if (::unlink(path.c_str()) != 0) throw FromSystemError(errno);
  });
}

void LinuxHost::MakeFolder(const std::string& path) {
  About(path, [&] {
    if (::mkdir(path.c_str(), 0777) != 0) {
      throw FromSystemError(errno, error_number::kPathNotFound);
    }
  });
}

std::string LinuxHost::CurrentFolder() {
  std::array<char, PATH_MAX> buffer{};
  if (::getcwd(buffer.data(), buffer.size()) == nullptr) {
    RunTimeError error = FromSystemError(errno, error_number::kPathNotFound);
    error.description += ": the folder that the program works in is gone.";
    throw error;
  }
  return buffer.data();
}

std::string LinuxHost::ResolvedPath(const std::string& path) {
  std::array<char, PATH_MAX> folder{};
  if (::realpath(FolderOf(path).c_str(), folder.data()) == nullptr) return path;
  const std::string resolved = folder.data();
  return JoinPath(resolved == "/" ? "" : resolved, CutPath(path).name);
}

void LinuxHost::ChangeFolder(const std::string& path) {
  About(path, [&] {
    if (::chdir(path.c_str()) != 0) throw FromSystemError(errno, error_number::kPathNotFound);
  });
}

void LinuxHost::ChangeDrive(const std::string& /*path*/) {}

std::string LinuxHost::ShortPath(const std::string& folder) {
  if (folder.empty()) return "/";  // what is left of "/name" before its separator
  if (LookUpFolder(folder)) return folder;
  return About(folder,
               []() -> std::string { throw MakeRunTimeError(error_number::kPathNotFound); });
}

void LinuxHost::MakeLink(const std::string& target, const std::string& path) {
  About(path, [&] { LinkTo(target, path); });
}

std::string LinuxHost::OwnFolder() {
  return OwnFolderFor(ExecutableFolder());
}

std::optional<Installation> LinuxHost::SharedInstallation() {
  return SharedInstallationWith(ExecutableFolder());
}

std::string LinuxHost::ConfigurationFolder() {
  return OwnConfigurationFolder();
}

std::string LinuxHost::StateFolder() {
  return OwnStateFolder();
}

std::string LinuxHost::RuntimeFolder() {
  return OwnRuntimeFolder();
}

std::optional<RegistryKey> LinuxHost::RegOpenKeyExA(std::uint32_t root, const std::string& subKey,
                                                    std::uint32_t access) {
  return values_.Open(root, subKey, access);
}

std::optional<CreatedKey> LinuxHost::RegCreateKeyExA(std::uint32_t root,
                                                     const std::string& subKey) {
  return values_.Create(root, subKey);
}

std::optional<RegistryValue> LinuxHost::RegQueryValueExA(RegistryKey key, const std::string& name) {
  return values_.Query(key, name);
}

bool LinuxHost::RegSetValueExA(RegistryKey key, const std::string& name,
                               const RegistryValue& value) {
  return values_.Set(key, name, value);
}

void LinuxHost::RegCloseKey(RegistryKey key) {
  values_.Close(key);
}

std::string LinuxHost::UserSetting(const std::string& name) {
  return UserSettings(JoinPath(ConfigurationFolder(), kSettingsName)).Get(name);
}

void LinuxHost::KeepUserSetting(const std::string& name, const std::string& bytes) {
  UserSettings(JoinPath(ConfigurationFolder(), kSettingsName)).Keep(name, bytes);
}

void LinuxHost::WithdrawRestart() {
  WithdrawAutostartEntry();
}

std::int64_t LinuxHost::MillisecondsNow() {
  using namespace std::chrono;
  return duration_cast<milliseconds>(system_clock::now().time_since_epoch()).count();
}

std::string LinuxHost::FormatNow(const char* pattern) {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  ::localtime_r(&now, &local);
  const std::string text = FormatTime(local, pattern, "");
  // Names that the files' code page lacks would reach them as question marks.
  std::string bytes;
  int replaced = 0;
  ToWindows1252(text, bytes, replaced);
  return replaced == 0 ? text : FormatTime(local, pattern, "C");
}

std::uint32_t LinuxHost::GetVersion() {
  constexpr std::uint32_t kMajor = 4;
  constexpr std::uint32_t kMinor = 10;
  return kMajor | (kMinor << 8U);  // a platform that can run the console solver
}

}  // namespace polefit
