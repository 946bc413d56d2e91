#include "exchange/read/network_file.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <map>

#include "base/text.h"
#include "exchange/read/decoding.h"
#include "exchange/read/network_options.h"
#include "exchange/read/number_text.h"

namespace polefit {

namespace {

/// The numbers of one line, or of the lines of one frequency.
struct Numbers {
  int line = 0;
  std::vector<std::string_view> texts;
  std::vector<double> values;
  /// A word among them is no number.
  bool isBroken = false;
};

/// The number of ports in a name's ending like ".s2p"; 0 for ".ts", -1 for any other.
int PortsOfName(std::string_view name) {
  const std::size_t dot = name.rfind('.');
  if (dot == std::string_view::npos) return -1;
  const std::string ending = LowerCase(name.substr(dot + 1));
  if (ending == "ts") return 0;
  if (ending.size() < 3 || ending.front() != 's' || ending.back() != 'p') return -1;
  int ports = 0;
  const char* const end = ending.data() + ending.size() - 1;
  const auto result = std::from_chars(ending.data() + 1, end, ports);
  return result.ec == std::errc() && result.ptr == end && ports > 0 && ports < 100 ? ports : -1;
}

std::string_view WithoutRemark(std::string_view line) {
  return TrimWhite(line.substr(0, line.find('!')));
}

/// The options and the lines of numbers of a file.
class NetworkLines {
 public:
  explicit NetworkLines(std::string_view text) {
    int number = 0;
    for (const std::string_view line : LinesOf(text)) Take(++number, WithoutRemark(line));
  }

  NetworkOptions options;
  std::vector<Numbers> lines;

 private:
  void Take(int number, std::string_view line) {
    if (line.empty()) return;
    if (line.starts_with('[')) return TakeBracket(line);
    if (line.starts_with('#')) {
      // Only the first option line counts.
      if (!std::exchange(hasOptionLine_, true)) TakeOptionLine(line.substr(1), options);
      return;
    }
    if (isInformation_ || hasEnded_ || (options.isVersion2 && !isNetworkData_)) return;
    TakeNumbers(number, line);
  }

  void TakeBracket(std::string_view line) {
    const std::size_t close = line.find(']');
    if (close == std::string_view::npos) return;
    const std::string keyword = LowerCase(TrimWhite(line.substr(1, close - 1)));
    if (keyword == "begin information") isInformation_ = true;
    if (keyword == "end information") isInformation_ = false;
    if (keyword == "network data") isNetworkData_ = true;
    if (keyword == "noise data" || keyword == "end") hasEnded_ = true;
    TakeKeyword(keyword, line.substr(close + 1), options);
  }

  void TakeNumbers(int number, std::string_view line) {
    Numbers numbers;
    numbers.line = number;
    numbers.texts = WordsOf(line);
    for (const std::string_view word : numbers.texts) {
      numbers.values.push_back(CellNumber(word, '.'));
      numbers.isBroken = numbers.isBroken || std::isnan(numbers.values.back());
    }
    // Words before the first numbers are headings.
    if (numbers.isBroken && lines.empty()) return;
    lines.push_back(std::move(numbers));
  }

  bool hasOptionLine_ = false;
  bool isInformation_ = false;
  bool isNetworkData_ = false;
  bool hasEnded_ = false;
};

/// Frequencies with more numbers stand on several lines.
constexpr std::size_t kNumbersOnALine = 9;

/// A frequency and pairs are an odd number of numbers, the pairs on a further line an even one. So
/// the lines alone tell where a frequency begins, and with that how many ports there are.
int PortsByLength(const std::vector<Numbers>& lines) {
  std::map<std::size_t, int> frequenciesOfLength;
  std::size_t length = 0;
  for (const Numbers& line : lines) {
    if (line.texts.size() % 2 == 1 && length > 0) ++frequenciesOfLength[std::exchange(length, 0)];
    length += line.texts.size();
  }
  ++frequenciesOfLength[length];
  int most = 0;
  int ports = 0;
  for (const auto& [numbers, count] : frequenciesOfLength) {
    const double root = std::sqrt(static_cast<double>(numbers - 1) / 2);
    if (count <= most || root < 1 || root != std::floor(root)) continue;
    most = count;
    ports = static_cast<int>(root);
  }
  return ports;
}

/// Puts the lines of one frequency together.
class FrequencyCollector {
 public:
  FrequencyCollector(SourceTable& table, const NetworkOptions& options, std::size_t wanted)
      : table_(table), wanted_(wanted), mayHaveNoise_(!options.isVersion2 && options.ports == 2) {}

  void Take(const Numbers& line) {
    const bool beginsNew = line.texts.size() % 2 == 1;
    if (beginsNew) Drop();
    if (line.isBroken) return Break(line);
    if (open_.texts.empty()) {
      if (!beginsNew) return TakeStrayRest(line);
      open_.line = line.line;
    }
    isBroken_ = false;
    open_.texts.insert(open_.texts.end(), line.texts.begin(), line.texts.end());
    open_.values.insert(open_.values.end(), line.values.begin(), line.values.end());
    if (open_.texts.size() < wanted_) return;
    if (open_.texts.size() > wanted_) return Drop();
    table_.AddRow(open_.line, open_.texts, open_.values);
    lastFrequency_ = open_.values.front();
    open_ = {};
  }

  /// Lets go of a frequency that is not whole: noise data, or a line to be told.
  void Drop() {
    if (open_.texts.empty()) return;
    constexpr std::size_t kNoiseNumbers = 5;
    const bool isNoise = mayHaveNoise_ && open_.texts.size() == kNoiseNumbers &&
                         (noiseLines_ > 0 || open_.values.front() <= lastFrequency_);
    if (isNoise) {
      ++noiseLines_;
    } else {
      table_.skippedLines.push_back(open_.line);
    }
    open_ = {};
  }

  int NoiseLines() const { return noiseLines_; }

 private:
  /// Pairs without a frequency go with one that was broken where frequencies have several lines.
  void TakeStrayRest(const Numbers& line) {
    if (!isBroken_ || wanted_ <= kNumbersOnALine) table_.skippedLines.push_back(line.line);
  }

  void Break(const Numbers& line) {
    table_.skippedLines.push_back(open_.texts.empty() ? line.line : open_.line);
    open_ = {};
    isBroken_ = true;
  }

  SourceTable& table_;
  const std::size_t wanted_;
  const bool mayHaveNoise_;
  Numbers open_;
  /// The line before could not be read; what belongs to its frequency goes with it.
  bool isBroken_ = false;
  double lastFrequency_ = -HUGE_VAL;
  int noiseLines_ = 0;
};

void AddColumns(const NetworkOptions& options, SourceTable& table) {
  table.kind = FileKind::network;
  table.columns.push_back({"Frequency (" + std::string(NameOf(options.unit)) + ")",
                           {Quantity::frequency, options.unit, std::nullopt, std::nullopt}});
  const bool isReal = options.format == PairFormat::realImaginary;
  const bool isDecibel = options.format == PairFormat::decibel;
  const Quantity first = isReal ? Quantity::real : isDecibel ? Quantity::decibel : Quantity::linear;
  const auto angle = isReal ? std::nullopt : std::optional(AngleUnit::degrees);
  for (const auto& [row, column] : PairOrder(options)) {
    const std::string name = ParameterName(options, row, column);
    table.parameters.push_back({name, table.Columns()});
    table.columns.push_back({name + (isReal      ? " re"
                                     : isDecibel ? " (dB)"
                                                 : " mag"),
                             {first, std::nullopt, std::nullopt, std::nullopt}});
    table.columns.push_back(
        {name + (isReal ? " im" : " (deg)"),
         {isReal ? Quantity::imaginary : Quantity::angle, std::nullopt, std::nullopt, angle}});
    // Half a matrix stands for the whole: what mirrors a parameter is the same numbers.
    if (options.matrix != MatrixFormat::full && row != column) {
      table.parameters.push_back(
          {ParameterName(options, column, row), table.parameters.back().column});
    }
  }
}

void AddNotes(const NetworkOptions& options, int noiseLines, SourceTable& table) {
  if (noiseLines > 0) {
    table.notes.push_back("noise data left out (" + std::to_string(noiseLines) + " lines)");
  }
  if (options.parameter != 'S') {
    table.notes.push_back(std::string(1, options.parameter) +
                          " parameters: the magnitude is taken as the file has it (R " +
                          options.reference + ")");
  }
}

void AddRows(const NetworkLines& file, const NetworkOptions& options, SourceTable& table) {
  const std::size_t wanted = 1 + 2 * PairOrder(options).size();
  FrequencyCollector collector(table, options, wanted);
  for (const Numbers& line : file.lines) collector.Take(line);
  collector.Drop();
  AddNotes(options, collector.NoiseLines(), table);
}

/// Where pairs are torn apart at line ends, lines say nothing: the numbers are then counted off, as
/// long as they come out even and the frequencies rise. False where they do not.
bool AddCountedRows(const NetworkLines& file, std::size_t wanted, SourceTable& table) {
  Numbers open;
  double last = -HUGE_VAL;
  for (const Numbers& line : file.lines) {
    if (line.isBroken) return false;
    for (std::size_t i = 0; i < line.texts.size(); ++i) {
      if (open.texts.empty()) {
        if (line.values[i] <= last) return false;
        last = line.values[i];
        open.line = line.line;
      }
      open.texts.push_back(line.texts[i]);
      open.values.push_back(line.values[i]);
      if (open.texts.size() < wanted) continue;
      table.AddRow(open.line, open.texts, open.values);
      open = {};
    }
  }
  return open.texts.empty();
}

SourceTable TableWith(const NetworkLines& file, NetworkOptions options, int ports) {
  options.ports = ports;
  SourceTable table;
  AddColumns(options, table);
  SourceTable counted = table;
  AddRows(file, options, table);
  const std::size_t wanted = 1 + 2 * PairOrder(options).size();
  const bool isTorn = !table.skippedLines.empty() && AddCountedRows(file, wanted, counted);
  if (!isTorn) return table;
  AddNotes(options, 0, counted);
  return counted;
}

}  // namespace

bool IsNetworkFile(std::string_view name, std::string_view text) {
  if (PortsOfName(name) >= 0) return true;
  for (const std::string_view full : LinesOf(text.substr(0, 20'000))) {
    const std::string_view line = WithoutRemark(full);
    if (line.empty()) continue;
    if (LowerCase(line).starts_with("[version]")) return true;
    if (!line.starts_with('#')) return false;
    NetworkOptions options;
    const auto words = static_cast<int>(WordsOf(line.substr(1)).size());
    const int understood = TakeOptionLine(line.substr(1), options);
    // "R 50" is two words and one option.
    if (understood >= 3 && words - understood <= 1) return true;
  }
  return false;
}

SourceTable ReadNetworkFile(std::string_view name, std::string_view text) {
  const NetworkLines file(text);
  if (file.lines.empty()) return NoTable("no rows of numbers");
  const int said = file.options.ports > 0 ? file.options.ports : PortsOfName(name);
  const int byLength = PortsByLength(file.lines);
  SourceTable table;
  if (said > 0) table = TableWith(file, file.options, said);
  if (table.Rows() < 2 && byLength > 0 && byLength != said) {
    table = TableWith(file, file.options, byLength);
    if (said > 0 && table.Rows() > 0) {
      table.notes.push_back("the rows are those of " + std::to_string(byLength) + " port(s), not " +
                            std::to_string(said));
    }
  }
  if (table.Rows() == 0) return NoTable("no row has as many numbers as the ports need");
  return table;
}

}  // namespace polefit
