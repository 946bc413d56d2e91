#include "program/console.h"

#include <iostream>

#include "check/check.h"
#include "platform/paths.h"
#include "record/response_record.h"
#include "responsefile/reader.h"
#include "responsefile/writer.h"

namespace polefit {

namespace {

constexpr int kCannotRead = 2;
constexpr int kNoSuchFile = 3;
constexpr int kCannotWrite = 4;
constexpr int kWrongUsage = 64;

constexpr const char* kHelp =
    "Usage: polefit [FILE]                   open the window, with FILE in it\n"
    "       polefit --check [--json] FILE    tell what a Response Input File says\n"
    "       polefit --rewrite IN OUT         write IN again, in the layout of a saved file\n"
    "       polefit --version\n"
    "       polefit --help\n"
    "\n"
    "--check ends with 0 when nothing was found, 1 with findings, 2 when the file could not be\n"
    "read to its end, 3 when there is no such file.\n";

int Fail(int exitCode, const std::string& message) {
  std::cerr << "polefit: " << message << '\n';
  return exitCode;
}

int FailReading(const std::string& path, const RunTimeError& error) {
  const bool missing =
      error.number == error_number::kFileNotFound || error.number == error_number::kPathNotFound;
  return Fail(missing ? kNoSuchFile : kCannotRead,
              "cannot read '" + path + "': " + error.description);
}

ResponseTarget TargetOf(const std::string& path) {
  return {FolderOf(path), CutPath(path).name};
}

int Rewrite(Host& host, const std::string& from, const std::string& to) {
  ResponseRecord record;
  try {
    host.OpenForReading(from);
    std::string name;
    std::string folder;
    ReadResponse(host, record, name, folder);
  } catch (const RunTimeError& error) {
    host.CloseFile();
    return FailReading(from, error);
  }
  host.CloseFile();
  try {
    WriteResponseFile(host, record, TargetOf(to));
  } catch (const RunTimeError& error) {
    return Fail(kCannotWrite, "cannot write '" + to + "': " + error.description);
  }
  return 0;
}

int CheckFile(Host& host, const std::string& path, CheckFormat format) {
  try {
    const CheckedFile checked = CheckResponseFile(host, path);
    std::cout << (format == CheckFormat::json ? CheckAsJson(checked) : CheckAsTable(checked));
    if (checked.error) return kCannotRead;
    return checked.findings.empty() ? 0 : 1;
  } catch (const RunTimeError& error) {
    return FailReading(path, error);
  }
}

int PrintVersion() {
  std::cout << "Polefit " POLEFIT_VERSION "\n";
  return 0;
}

int PrintHelp() {
  std::cout << kHelp;
  return 0;
}

}  // namespace

CommandLineResult RunCommandLine(Host& host, std::span<const std::string> arguments) {
  const std::size_t count = arguments.size();
  const std::string first = count > 0 ? arguments[0] : "";
  if (first == "--version" && count == 1) return {PrintVersion(), {}};
  if (first == "--help" && count == 1) return {PrintHelp(), {}};
  if (first == "--check" && count == 2) {
    return {CheckFile(host, arguments[1], CheckFormat::table), {}};
  }
  if (first == "--check" && count == 3 && arguments[1] == "--json") {
    return {CheckFile(host, arguments[2], CheckFormat::json), {}};
  }
  if (first == "--rewrite" && count == 3) return {Rewrite(host, arguments[1], arguments[2]), {}};
  if (first == "--" && count == 2) return {std::nullopt, {arguments[1]}};
  if (count <= 1 && !first.starts_with('-')) return {std::nullopt, {first}};
  return {Fail(kWrongUsage, "unknown option or wrong arguments; 'polefit --help' tells them"), {}};
}

}  // namespace polefit
