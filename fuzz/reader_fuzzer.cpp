// Bytes in; the record they give, written and read again, must be the same record wherever the
// format loses nothing.

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "base/text.h"
#include "platform/linux/console_host.h"
#include "responsefile/reader.h"
#include "responsefile/writer.h"

namespace {

using namespace polefit;

/// The reader's and writer's file operations on two texts in memory.
class MemoryHost : public ConsoleHost {
 public:
  MemoryHost() : ConsoleHost("/nonexistent/registry.reg") {}

  void SetInput(std::string bytes) {
    input_ = std::move(bytes);
    at_ = 0;
  }
  const std::string& Output() const { return output_; }

  std::string CurrentFolder() override { return "/here"; }
  std::string_view ReadLine() override {
    if (at_ >= input_.size()) throw MakeRunTimeError(error_number::kInputPastEndOfFile);
    const std::size_t end = std::min(input_.find('\n', at_), input_.size());
    std::string_view bytes = std::string_view(input_).substr(at_, end - at_);
    at_ = end + 1;
    if (end < input_.size() && bytes.ends_with('\r')) bytes.remove_suffix(1);
    line_ = FromWindows1252(bytes);
    return line_;
  }
  void OpenForWriting(const std::string& /*path*/, Saving /*way*/) override { output_.clear(); }
  void WriteLine(std::string_view line) override {
    int replaced = 0;
    output_ += ToWindows1252(line, line_, replaced);
    if (replaced > 0) std::abort();  // what was read can be written
    output_ += "\r\n";
  }
  int CloseFile() override { return 0; }

 private:
  std::string input_;
  std::size_t at_ = 0;
  std::string line_;
  std::string output_;
};

bool Read(MemoryHost& host, ResponseRecord& record) {
  std::string name;
  std::string folder;
  try {
    ReadResponse(host, record, name, folder);
    return true;
  } catch (const RunTimeError&) {
    return false;
  }
}

/// True when a value line gives the text back as it is.
bool Survives(const std::string& text) {
  return !text.starts_with(' ') && !text.starts_with("-999");
}

/// True when a grid row gives the cell back as it is.
bool CellSurvives(const std::string& cell, bool first) {
  return !first || !cell.starts_with("-999");
}

template <std::size_t Columns>
bool RowsSurvive(const PointLists<Columns>& points, int count) {
  for (int row = 1; row <= count; ++row) {
    for (int column = 1; column <= points.kColumns; ++column) {
      if (!CellSurvives(points.At(row, column), column == 1)) return false;
    }
  }
  return true;
}

bool Survives(const ResponseRecord& record) {
  const bool slots = std::all_of(record.slots.begin(), record.slots.end(),
                                 [](const std::string& text) { return Survives(text); });
  const bool solver = std::all_of(record.solver.begin(), record.solver.end(),
                                  [](const std::string& text) { return Survives(text); });
  const bool solverKept =
      record.solverCount == 0 || !(record.solver[0] + record.solver[1] + record.solver[2]).empty();
  return slots && solver && solverKept && Survives(record.Note1) && Survives(record.Note2) &&
         Survives(record.LastFileName) && RowsSurvive(record.passband, record.nFreqPoints) &&
         RowsSurvive(record.delay, record.nDelayPoints);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  MemoryHost host;
  ResponseRecord first;
  host.SetInput(std::string(reinterpret_cast<const char*>(data), size));
  if (!Read(host, first)) return 0;

  if (!Survives(first)) return 0;
  ResponseRecord written = first;
  WriteResponseFile(host, written, {"/here", first.LastFileName});
  // Whatever the count answers said, the file says how many rows there are.
  first.Slot(slot::kFreqPointCount) = std::to_string(first.nFreqPoints);
  first.Slot(slot::kDelayPointCount) = std::to_string(first.nDelayPoints);
  ResponseRecord second;
  host.SetInput(host.Output());
  if (!Read(host, second) || !(second == first)) std::abort();
  return 0;
}
