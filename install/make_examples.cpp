// Writes the example problems that the demos run; scripts/make_examples calls it.
//   make_examples FOLDER                 the examples made from plain data
//   make_examples FOLDER NAME LAST_RUN   the example NAME from the answers of a run

#include <array>
#include <iostream>
#include <string>

#include "base/number.h"
#include "platform/linux/console_host.h"
#include "record/response_record.h"
#include "responsefile/reader.h"
#include "responsefile/writer.h"

namespace polefit {

namespace {

/// Frequency in MHz, Yin, Yout: a 50 ns pulse to a 35 % raised cosine with its null at 10 MHz.
constexpr std::array<std::array<const char*, 3>, 21> kPulseToNyquist = {{
    {"0", "1", "1"},
    {"0.5", "0.99897", "1"},
    {"1", "0.99589", "1"},
    {"1.5", "0.99077", "1"},
    {"2", "0.98363", "1"},
    {"2.5", "0.9745", "1"},
    {"3", "0.9634", "1"},
    {"3.5", "0.95038", "1"},
    {"4", "0.93549", "1"},
    {"4.5", "0.91878", "1"},
    {"5", "0.90032", "0.99686"},
    {"5.5", "0.88016", "0.95753"},
    {"6", "0.85839", "0.87654"},
    {"6.5", "0.83509", "0.76125"},
    {"7", "0.81033", "0.62217"},
    {"7.5", "0.78421", "0.47196"},
    {"8", "0.75683", "0.32431"},
    {"8.5", "0.72827", "0.19266"},
    {"9", "0.69865", "0.089"},
    {"9.5", "0.66806", "0.02277"},
    {"10", "0.63662", "0"},
}};

/// A 75 ns pulse to an 80 % raised cosine with its null at 10 MHz.
constexpr std::array<std::array<const char*, 3>, 21> kReceiverToNyquist = {{
    {"0", "1", "1"},
    {"0.5", "0.99723", "1"},
    {"1", "0.98902", "1"},
    {"1.5", "0.97568", "0.99528"},
    {"2", "0.95764", "0.97553"},
    {"2.5", "0.93542", "0.94096"},
    {"3", "0.90954", "0.89266"},
    {"3.5", "0.88048", "0.83213"},
    {"4", "0.8486", "0.76125"},
    {"4.5", "0.81413", "0.68224"},
    {"5", "0.77717", "0.59755"},
    {"5.5", "0.73774", "0.50982"},
    {"6", "0.69578", "0.42178"},
    {"6.5", "0.65125", "0.33618"},
    {"7", "0.60423", "0.25569"},
    {"7.5", "0.55497", "0.1828"},
    {"8", "0.50393", "0.1198"},
    {"8.5", "0.45178", "0.06863"},
    {"9", "0.39934", "0.0309"},
    {"9.5", "0.34741", "0.00779"},
    {"10", "0.29669", "0"},
}};

/// Frequency in MHz and the group delay in ns of a 5-pole 0.1 dB Chebyshev low-pass, 12.5 MHz.
constexpr std::array<std::array<const char*, 2>, 17> kReceiverDelay = {{
    {"0.5", "44.597"},
    {"1", "44.498"},
    {"1.5", "44.361"},
    {"2", "44.228"},
    {"2.5", "44.144"},
    {"3", "44.158"},
    {"3.5", "44.314"},
    {"4", "44.646"},
    {"4.5", "45.171"},
    {"5", "45.892"},
    {"5.5", "46.788"},
    {"6", "47.818"},
    {"6.5", "48.923"},
    {"7", "50.037"},
    {"7.5", "51.101"},
    {"8", "52.085"},
    {"8.5", "53.016"},
}};

template <typename Table, std::size_t Columns>
void Fill(const Table& table, PointLists<Columns>& points, std::int16_t& count,
          std::string& answer) {
  count = static_cast<std::int16_t>(table.size());
  points.Resize(count + 1);
  for (int row = 1; row <= count; ++row) {
    const auto& cells = table[static_cast<std::size_t>(row - 1)];
    for (std::size_t column = 0; column < cells.size(); ++column) {
      points.At(row, static_cast<int>(column) + 1) = cells[column];
    }
    if (points.kColumns == 4) points.At(row, 4) = "1";
  }
  answer = SignedText(count);
}

void FillPassband(const std::array<std::array<const char*, 3>, 21>& table, ResponseRecord& record) {
  Fill(table, record.passband, record.nFreqPoints, record.Slot(slot::kFreqPointCount));
}

ResponseRecord SidelobeExample() {
  ResponseRecord record;
  record.slots = {"N",
                  "76.7",
                  "-2",
                  "0",
                  "N",
                  "10",
                  "10",
                  "0 4",
                  "",
                  ".5 .5 .4 .3",
                  ".15 .45 .75 1",
                  "N",
                  ".05",
                  "N",
                  "N",
                  "3 0 0",
                  "1 1.3 1.8",
                  "",
                  "",
                  "1",
                  ".005",
                  "4"};
  FillPassband(kPulseToNyquist, record);
  record.delay.Resize(1);
  record.Slot(slot::kDelayPointCount) = SignedText(0);
  record.Note1 =
      "Pulse shaping: a 50 ns pulse becomes a 35 % raised-cosine Nyquist pulse, null at 10 MHz.";
  record.Note2 =
      "4 pole pairs; 3 omega-axis zeros: the 1st held at the null, sidelobes made equal.";
  return record;
}

ResponseRecord ControlsExample() {
  ResponseRecord record = SidelobeExample();
  record.solver = {"8 15 12", "1 0 0", "1e-7 1e-7 1e-7", "60", "5", "1500", "2", "8", ".00001"};
  record.Note2 = "As Ex-Yzero.101, with solver controls of its own: tighter, and a fuller report.";
  return record;
}

ResponseRecord ZeroPairExample() {
  ResponseRecord record = SidelobeExample();
  record.Slot(slot::kZeroCounts) = "0 1 0";
  record.Slot(slot::kYzero) = "";
  record.Slot(slot::kZreal) = ".05";
  record.Slot(slot::kZimag) = "1.1";
  record.Note2 = "As Ex-Yzero.101, but one zero pair beside the omega axis in place of its zeros.";
  return record;
}

ResponseRecord DelayExample(const char* wantedDelay) {
  ResponseRecord record;
  record.slots = {"Y", wantedDelay, "-1",        "0", "N",   "10", "10", "0 3",
                  "",  ".5 .4 .3",  ".3 .7 1.1", "Y", ".5",  "N",  "Y",  "1 0 0",
                  "1", "",          "",          "1", ".05", "3"};
  FillPassband(kReceiverToNyquist, record);
  Fill(kReceiverDelay, record.delay, record.nDelayPoints, record.Slot(slot::kDelayPointCount));
  record.Note1 =
      "Receiver: a 75 ns pulse, delayed by a 5-pole low-pass (TX), becomes an 80 % raised cosine.";
  const std::string target = std::string(wantedDelay) == "0"
                                 ? "the flat delay is free."
                                 : "total delay " + std::string(wantedDelay) + " ns wanted.";
  record.Note2 = "3 pole pairs, null held at 10 MHz, lossless sigma zero; " + target;
  return record;
}

void WriteExamples(const std::string& folder) {
  ConsoleHost host;
  const auto write = [&](const char* name, ResponseRecord record) {
    WriteResponseFile(host, record, {folder, name});
  };
  write("Ex-Yzero.101", SidelobeExample());
  write("Ex-CNTL.1", ControlsExample());
  write("Ex-Zpair.1", ZeroPairExample());
  write("Ex-Delay.101", DelayExample("0"));
  write("Ex-Delay.111", DelayExample("170"));
}

/// The problem that a run has left, to be continued.
void WriteContinued(const std::string& folder, const std::string& name,
                    const std::string& lastRun) {
  ConsoleHost host;
  ResponseRecord record;
  std::string former;
  std::string formerFolder;
  host.OpenForReading(lastRun);
  ReadResponse(host, record, former, formerFolder);
  host.CloseFile();
  record.Note2 = "As " + former + ", starting from the answers that its run has left.";
  WriteResponseFile(host, record, {folder, name});
}

}  // namespace

}  // namespace polefit

int main(int argc, char** argv) {
  try {
    switch (argc) {
      case 2:
        polefit::WriteExamples(argv[1]);
        return 0;
      case 4:
        polefit::WriteContinued(argv[1], argv[2], argv[3]);
        return 0;
      default:
        std::cerr << "usage: make_examples FOLDER [NAME LAST_RUN]\n";
        return 6;
    }
  } catch (const polefit::RunTimeError& error) {
    std::cerr << "make_examples: " << error.description << '\n';
    return 1;
  }
}
