#include "base/run_time_error.h"

#include <cerrno>
#include <system_error>

namespace polefit {

namespace {

struct Description {
  int number;
  const char* text;
};

constexpr Description kDescriptions[] = {
    {5, "Invalid procedure call or argument"},
    {6, "Overflow"},
    {7, "Out of memory"},
    {9, "Subscript out of range"},
    {13, "Type mismatch"},
    {52, "Bad file name or number"},
    {53, "File not found"},
    {55, "File already open"},
    {57, "Device I/O error"},
    {58, "File already exists"},
    {61, "Disk full"},
    {62, "Input past end of file"},
    {68, "Device unavailable"},
    {70, "Permission denied"},
    {71, "Disk not ready"},
    {75, "Path/File access error"},
    {76, "Path not found"},
    {error_number::kDialogCancelled, "Cancel was selected."},
};

}  // namespace

const std::string& InWords(const RunTimeError& error) {
  return error.reason.empty() ? error.description : error.reason;
}

RunTimeError MakeRunTimeError(int number) {
  for (const Description& entry : kDescriptions) {
    if (entry.number == number) return {number, entry.text};
  }
  return {number, "Application-defined or object-defined error"};
}

RunTimeError FromSystemError(int systemError, int missing) {
  using namespace error_number;
  switch (systemError) {
    case ENOMEDIUM:
    case EIO:
    // A server that does not answer: as with an empty drive, the user may try again or leave it.
    case ENOTCONN:
    case ESTALE:
    case EHOSTDOWN:
    case EHOSTUNREACH:
    case ENETUNREACH:
    case ETIMEDOUT:
    case EREMOTEIO:
      return MakeRunTimeError(kDiskNotReady);
    case ENODEV:
    case ENXIO:
      return MakeRunTimeError(kDeviceUnavailable);
    case ENOENT:
      return MakeRunTimeError(missing);
    case ENOTDIR:
      return MakeRunTimeError(kPathNotFound);
    case EACCES:
    case EPERM:
    case EROFS:
      return MakeRunTimeError(kPermissionDenied);
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
      return MakeRunTimeError(kDiskFull);
    default:
      return MakeRunTimeError(kPathFileAccessError);
  }
}

RunTimeError InSystemWords(int systemError) {
  const int number = FromSystemError(systemError, error_number::kPathNotFound).number;
  return {number, std::generic_category().message(systemError)};
}

}  // namespace polefit
