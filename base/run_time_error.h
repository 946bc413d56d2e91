#pragma once

#include <string>

namespace polefit {

/// An error with the number and the description that the user sees.
struct RunTimeError {
  int number = 0;
  std::string description;
  /// The file, folder or program that it was about; "" where the description names it.
  std::string path = {};
  /// What is wrong in words, where the description only names the kind of error.
  std::string reason = {};
};

/// The reason, else the description.
const std::string& InWords(const RunTimeError& error);

namespace error_number {
inline constexpr int kOverflow = 6;
inline constexpr int kOutOfMemory = 7;
inline constexpr int kSubscriptOutOfRange = 9;
inline constexpr int kBadFileNumber = 52;
inline constexpr int kFileNotFound = 53;
inline constexpr int kFileAlreadyOpen = 55;
inline constexpr int kDiskFull = 61;
inline constexpr int kInputPastEndOfFile = 62;
inline constexpr int kDeviceUnavailable = 68;
inline constexpr int kPermissionDenied = 70;
inline constexpr int kDiskNotReady = 71;
inline constexpr int kPathFileAccessError = 75;
inline constexpr int kPathNotFound = 76;
inline constexpr int kRegistryFailure = 1001;
inline constexpr int kDialogCancelled = 32755;
}  // namespace error_number

/// The error `number` with its usual description.
RunTimeError MakeRunTimeError(int number);

/// The run-time error that stands for a failed system call.
/// `systemError` is an errno value; `missing` is what ENOENT means for the call,
/// kFileNotFound or kPathNotFound.
RunTimeError FromSystemError(int systemError, int missing = error_number::kFileNotFound);

/// The same with the system's own words as the description; ENOENT is a missing path.
RunTimeError InSystemWords(int systemError);

}  // namespace polefit
