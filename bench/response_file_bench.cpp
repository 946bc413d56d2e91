// Reading and writing the largest Response Input File, each beside the least that the same bytes
// can take: std::getline over the lines, one fwrite of the whole. The files written are new ones;
// a save over a former file also waits until the new one is on the disk.

#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "base/number.h"
#include "platform/linux/console_host.h"
#include "responsefile/reader.h"
#include "responsefile/writer.h"

namespace {

using namespace polefit;

std::string Decimal(double number) {
  char text[32];
  std::snprintf(text, sizeof text, "%.5g", number);
  return text;
}

ResponseRecord LargestRecord() {
  ResponseRecord record;
  record.slots.fill("1 2 3 4");
  record.Slot(slot::kFreqPointCount) = SignedText(kMostPoints);
  record.Slot(slot::kDelayPointCount) = SignedText(kMostPoints);
  record.passband.Resize(kMostPoints + 1);
  record.delay.Resize(kMostPoints + 1);
  for (int row = 1; row <= kMostPoints; ++row) {
    record.passband.At(row, 1) = Decimal(row * 0.0005);
    record.passband.At(row, 2) = Decimal(1 / (1.0 + row));
    record.passband.At(row, 3) = Decimal(1 - row / 40000.0);
    record.passband.At(row, 4) = "1";
    record.delay.At(row, 1) = Decimal(row * 0.0005);
    record.delay.At(row, 2) = Decimal(44 + row * 0.001);
  }
  record.nFreqPoints = kMostPoints;
  record.nDelayPoints = kMostPoints;
  return record;
}

/// The largest file on disk, and its bytes.
class LargestFile {
 public:
  LargestFile() {
    WriteResponseFile(host, record, {folder, "largest.txt"});
    std::ifstream file(path, std::ios::binary);
    bytes.assign(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
  }
  ~LargestFile() { std::filesystem::remove(path); }
  void Remove(benchmark::State& state) const {
    state.PauseTiming();
    std::filesystem::remove(path);
    state.ResumeTiming();
  }

  LargestFile(const LargestFile&) = delete;
  LargestFile& operator=(const LargestFile&) = delete;

  std::string folder = std::filesystem::temp_directory_path();
  std::string path = folder + "/largest.txt";
  ConsoleHost host{folder + "/registry.reg"};
  ResponseRecord record = LargestRecord();
  std::string bytes;
};

void ReadRecord(benchmark::State& state) {
  LargestFile file;
  for (auto _ : state) {
    ResponseRecord record;
    std::string name;
    std::string folder;
    file.host.OpenForReading(file.path);
    ReadResponse(file.host, record, name, folder);
    file.host.CloseFile();
    benchmark::DoNotOptimize(record);
  }
}
BENCHMARK(ReadRecord)->Unit(benchmark::kMillisecond);

void ReadLinesOnly(benchmark::State& state) {
  LargestFile file;
  for (auto _ : state) {
    std::ifstream stream(file.path, std::ios::binary);
    for (std::string line; std::getline(stream, line);) benchmark::DoNotOptimize(line);
  }
}
BENCHMARK(ReadLinesOnly)->Unit(benchmark::kMillisecond);

void WriteRecord(benchmark::State& state) {
  LargestFile file;
  for (auto _ : state) {
    file.Remove(state);
    WriteResponseFile(file.host, file.record, {file.folder, "largest.txt"});
  }
}
BENCHMARK(WriteRecord)->Unit(benchmark::kMillisecond);

void WriteBytesOnly(benchmark::State& state) {
  LargestFile file;
  for (auto _ : state) {
    file.Remove(state);
    std::FILE* const stream = std::fopen(file.path.c_str(), "wb");
    std::fwrite(file.bytes.data(), 1, file.bytes.size(), stream);
    std::fclose(stream);
  }
}
BENCHMARK(WriteBytesOnly)->Unit(benchmark::kMillisecond);

}  // namespace
