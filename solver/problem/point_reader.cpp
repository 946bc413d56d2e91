#include "solver/problem/point_reader.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <limits>
#include <map>
#include <string>

#include "base/number.h"
#include "base/text.h"

namespace polefit {

namespace {

/// The filled cells at the beginning of a row.
template <std::size_t Columns>
int FilledCells(const PointLists<Columns>& points, int row) {
  int count = 0;
  while (count < points.kColumns && !points.At(row, count + 1).empty()) ++count;
  return count;
}

/// Stands for a cell with a fault. It is not equal to 0, so that nothing is said about all points
/// together that the mended cell could make wrong.
constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();

/// The faults of a table's rows. What is wrong in many rows is told once, at the first of them.
class RowFaults {
 public:
  explicit RowFaults(AnswerReader& answers) : answers_(answers) {}
  ~RowFaults() {
    for (const Entry& entry : entries_) {
      const std::vector<int>& rows = rows_[entry.kind];
      const bool isToldOnce = rows.size() > kMostTold;
      if (isToldOnce && entry.topic.place.row != rows.front()) continue;
      answers_.Fault(entry.topic, entry.rest + (isToldOnce ? Others(rows) : std::string()),
                     entry.cure);
    }
  }
  RowFaults(const RowFaults&) = delete;
  RowFaults& operator=(const RowFaults&) = delete;

  /// `kind` is the same for what is wrong in the same way.
  void Add(const Topic& topic, const std::string& rest, const std::string& kind,
           Cure cure = Cure::none) {
    entries_.push_back({topic, rest, kind, cure});
    rows_[kind].push_back(topic.place.row);
  }

 private:
  static constexpr std::size_t kMostTold = 3;
  struct Entry {
    Topic topic;
    std::string rest;
    std::string kind;
    Cure cure;
  };

  static std::string Others(const std::vector<int>& rows) {
    return " The same in " + std::to_string(rows.size() - 1) + " more rows, up to row " +
           std::to_string(rows.back()) + ".";
  }

  AnswerReader& answers_;
  std::vector<Entry> entries_;
  std::map<std::string, std::vector<int>> rows_;
};

/// Whether the numbers of a column are decibels, as a level never is: some below 0, none above.
template <std::size_t Columns>
bool LooksLikeDecibels(const PointLists<Columns>& points, int column, int count) {
  int negative = 0;
  for (int row = 1; row <= count; ++row) {
    const std::optional<double> value = ParseNumber(points.At(row, column));
    if (!value || *value > 0) return false;
    if (*value < 0) ++negative;
  }
  return negative > 1;
}

/// What a file makes of a cell with a comma or a blank in it: "0 and 92" of "0,92".
std::string CellsOfText(std::string text) {
  std::replace(text.begin(), text.end(), ',', ' ');
  std::string cells;
  for (const std::string& word : Words(text)) cells += (cells.empty() ? "" : " and ") + word;
  return cells;
}

/// Reads the needed cells of one row.
class RowReader {
 public:
  RowReader(RowFaults& faults, FindingTable table) : faults_(faults), table_(table) {}

  /// Nothing is said about the sign of the numbers in this column.
  void PassOverSign(int column) { isDecibels_.at(static_cast<std::size_t>(column - 1)) = true; }

  template <std::size_t Columns>
  std::vector<double> Read(const PointLists<Columns>& points, int row, int needed,
                           const std::vector<const char*>& names, int mayBeNegative) {
    const int found = FilledCells(points, row);
    if (found < needed) {
      const std::string count = std::to_string(found);
      faults_.Add(PointTopic(table_, row, found + 1),
                  ": " + count + " value(s) found, " + std::to_string(needed) + " needed.", count);
    }
    std::vector<double> values(static_cast<std::size_t>(needed), kUnknown);
    for (int column = 1; column <= std::min(found, needed); ++column) {
      const auto index = static_cast<std::size_t>(column - 1);
      const std::string& text = points.At(row, column);
      const std::optional<double> value = ParseNumber(text);
      if (value && (*value >= 0 || column == mayBeNegative)) {
        values[index] = *value;
        continue;
      }
      if (value && isDecibels_[index]) continue;
      AddFault(row, column, names.at(index), text);
    }
    return values;
  }

 private:
  void AddFault(int row, int column, const std::string& name, const std::string& text) {
    const Topic topic = PointTopic(table_, row, column);
    const std::string begin = ": " + name + " ";
    if (ParseNumber(text)) {
      return faults_.Add(topic, begin + text + " is negative.", name + " negative");
    }
    const std::string quoted = begin + '"' + text + '"';
    if (IsOutOfRange(text)) {
      return faults_.Add(topic, quoted + " is out of range (1e-308 to 1e308).", name + " range");
    }
    if (TrimBlanks(text).find_first_of(", ") == std::string_view::npos) {
      return faults_.Add(topic, quoted + " is not a number.", name);
    }
    const std::optional<std::string> meant = WithDecimalPoint(text);
    faults_.Add(topic,
                quoted + " is read as " + CellsOfText(text) +
                    (meant ? "; type " + *meant + "." : "; a cell holds one number."),
                name + " cells", meant ? Cure::commasToPoints : Cure::none);
  }

  RowFaults& faults_;
  FindingTable table_;
  std::array<bool, PassbandLists::kColumns> isDecibels_ = {};
};

/// The power of ten of a number's last decimal; trailing zeros count, and an exponent does.
double LastDecimal(std::string_view text) {
  double place = 0;
  bool isBehindPoint = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == 'e' || text[i] == 'E') {
      return place + ParseNumber(text.substr(i + 1)).value_or(0);
    }
    if (isBehindPoint && IsDigit(text[i])) --place;
    if (text[i] == '.') isBehindPoint = true;
  }
  return place;
}

/// The unit that a column is typed in: that of its finest number. A coarse column, "1" and "0" say,
/// is meant exactly: 0.
class ColumnUnit {
 public:
  void Add(const std::string& text, double value) {
    if (std::isnan(value)) return;
    lastDecimal_ = std::min(lastDecimal_, LastDecimal(text));
    largest_ = std::max(largest_, std::abs(value));
  }
  double Unit() const {
    constexpr double kCoarse = 1e-3;
    const double unit = std::pow(10, lastDecimal_);
    return unit <= kCoarse * largest_ ? unit : 0;
  }

 private:
  double lastDecimal_ = std::numeric_limits<double>::infinity();
  double largest_ = 0;
};

/// The data points and the weights that the error measures give them.
class PointReader {
 public:
  PointReader(const ResponseRecord& record, AnswerReader& answers, Problem& problem)
      : record_(record), answers_(answers), problem_(problem) {}

  void Read() {
    if (record_.nFreqPoints > 0) {
      ReadPassband();
      WeighPassband();
      CheckPassband();
    } else {
      answers_.Fault(ShortQuestionTopic(slot::kFreqPointCount), ": there are no passband points.");
    }
    if (!problem_.wantsDelay) return;
    ReadDelay();
    WeighDelay();
    CheckDelay();
  }

 private:
  void ReadPassband() {
    RowFaults faults(answers_);
    RowReader rows(faults, FindingTable::passband);
    TellDecibels(kYinColumn, "Yin", rows);
    TellDecibels(kYoutColumn, "Yout", rows);
    const int needed = problem_.usesWeights ? 4 : 3;
    const std::vector<const char*> names = {"frequency", "Yin", "Yout", "weight"};
    ColumnUnit yin;
    ColumnUnit yout;
    for (int row = 1; row <= record_.nFreqPoints; ++row) {
      const std::vector<double> values = rows.Read(record_.passband, row, needed, names, 0);
      const double weight = problem_.usesWeights ? values[3] : 1;
      problem_.passband.push_back({values[0], values[1], values[2], weight});
      if (values[2] == 0 && problem_.inputPower > 0) RefuseDivision(row, faults);
      yin.Add(record_.passband.At(row, kYinColumn), values[1]);
      yout.Add(record_.passband.At(row, kYoutColumn), values[2]);
    }
    problem_.yinUnit = yin.Unit();
    problem_.youtUnit = yout.Unit();
  }

  void TellDecibels(int column, const char* name, RowReader& rows) {
    if (!LooksLikeDecibels(record_.passband, column, record_.nFreqPoints)) return;
    rows.PassOverSign(column);
    answers_.Fault({PointTopic(FindingTable::passband, 1, column).place, "Passband points"},
                   ": no " + std::string(name) + " is above 0. Are they in dB? Ratios are wanted.",
                   Cure::decibelsToRatios);
  }

  void RefuseDivision(int row, RowFaults& faults) {
    faults.Add(
        PointTopic(FindingTable::passband, row, kYoutColumn),
        ": Yout is 0 and Ipower is " + record_.Slot(slot::kIPower) +
            "; the error cannot be divided by 0 (use Ipower 0 or less, or leave the point out).",
        "division");
  }

  /// Without a point that asks for more than 0 and can be given it, the best gain is 0.
  void CheckPassband() {
    const Topic allPoints = {{.table = FindingTable::passband}, "Passband points"};
    const auto& points = problem_.passband;
    const auto any = [&points](auto fits) {
      return std::any_of(points.begin(), points.end(), fits);
    };
    const bool hasYout = any([](const PassbandPoint& point) { return point.yout != 0; });
    const bool hasBoth =
        any([](const PassbandPoint& point) { return point.yin != 0 && point.yout != 0; });
    const bool hasWeight = any([](const PassbandPoint& point) { return point.weight != 0; });
    if (!hasYout) {
      answers_.Fault(allPoints, ": every Yout is 0.");
    } else if (!hasBoth) {
      answers_.Fault(allPoints, ": no point has both Yin and Yout greater than 0.");
    }
    if (!hasWeight) answers_.Fault(allPoints, ": all weights are 0.");
    if (!hasBoth || !hasWeight) return;
    if (!(problem_.rows.inputs != 0 && problem_.rows.targets != 0).any()) {
      answers_.Fault(allPoints,
                     ": no point with a weight greater than 0 has both Yin and Yout greater "
                     "than 0.");
    }
  }

  void ReadDelay() {
    RowFaults faults(answers_);
    RowReader rows(faults, FindingTable::delay);
    const std::vector<const char*> names = {"frequency", "TX"};
    ColumnUnit tx;
    for (int row = 1; row <= record_.nDelayPoints; ++row) {
      const std::vector<double> values = rows.Read(record_.delay, row, 2, names, kTxColumn);
      problem_.delay.push_back({values[0], values[1]});
      tx.Add(record_.delay.At(row, kTxColumn), values[1]);
    }
    problem_.txUnit = tx.Unit();
  }

  /// A free constant takes one point away.
  void CheckDelay() {
    const Eigen::Index needed = problem_.rows.wantedDelay > 0 ? 1 : 2;
    const Eigen::Index found = record_.nDelayPoints;
    const Eigen::Index counting = (problem_.rows.delayLevels != 0).count();
    if (found < needed) {
      answers_.Fault(ShortQuestionTopic(slot::kEqualDelay),
                     " is Y but there " + std::string(found == 1 ? "is " : "are ") +
                         std::to_string(found) +
                         (found == 1 ? " delay point; at least " : " delay points; at least ") +
                         std::to_string(needed) + " needed.");
    } else if (counting < needed) {
      answers_.Fault({{.table = FindingTable::delay}, "Delay points"},
                     ": " + std::to_string(counting) + " with a weight greater than 0, at least " +
                         std::to_string(needed) +
                         " needed (where Yout is 0 and DelRipplePower is " +
                         record_.Slot(slot::kDelRipplePower) + ", the weight is 0).");
    }
  }

  double LargestYout() const {
    double largest = 0;
    for (const PassbandPoint& point : problem_.passband) largest = std::max(largest, point.yout);
    return largest;
  }

  /// e_i = (Yin |H| - Yout) / Ymax / (Yout / Ymax)^Ipower * Weight, with the factors drawn into
  /// inputs and targets.
  void WeighPassband() {
    const double largest = LargestYout();
    const auto count = static_cast<Eigen::Index>(problem_.passband.size());
    DataRows& rows = problem_.rows;
    rows.frequencies.resize(count);
    rows.inputs.resize(count);
    rows.targets.resize(count);
    rows.weights.resize(count);
    for (Eigen::Index i = 0; i < count; ++i) {
      const PassbandPoint& point = problem_.passband[static_cast<std::size_t>(i)];
      // At Yout = 0 a negative power gives the weight 0.
      const double weight =
          point.weight * std::pow(point.yout / largest, -problem_.inputPower) / largest;
      rows.frequencies[i] = point.frequency / problem_.freqNorm;
      rows.weights[i] = weight;
      rows.inputs[i] = weight * point.yin;
      rows.targets[i] = weight * point.yout;
    }
  }

  /// d_j = FreqNorm / 1000 * (TX + delay - T0) / (Yout / Ymax)^DelRipplePower.
  void WeighDelay() {
    const double largest = LargestYout();
    const auto count = static_cast<Eigen::Index>(problem_.delay.size());
    DataRows& rows = problem_.rows;
    rows.delayFrequencies.resize(count);
    rows.delayOffsets.resize(count);
    rows.delayLevels.resize(count);
    std::vector<PassbandPoint> sorted = problem_.passband;
    std::erase_if(sorted, [](const PassbandPoint& point) { return std::isnan(point.frequency); });
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const PassbandPoint& one, const PassbandPoint& other) {
                       return one.frequency < other.frequency;
                     });
    RowFaults faults(answers_);
    for (Eigen::Index i = 0; i < count; ++i) {
      const DelayPoint& point = problem_.delay[static_cast<std::size_t>(i)];
      const double share = YoutAt(sorted, point.frequency) / largest;
      if (share == 0 && problem_.delayRipplePower > 0) RefuseDelayDivision(i, faults);
      const double level = problem_.freqNorm / 1000 * std::pow(share, -problem_.delayRipplePower);
      rows.delayFrequencies[i] = point.frequency / problem_.freqNorm;
      rows.delayOffsets[i] = level * point.tx;
      rows.delayLevels[i] = level;
    }
    rows.delaySlopes = rows.delayLevels * problem_.DelayUnit();
  }

  void RefuseDelayDivision(Eigen::Index index, RowFaults& faults) {
    faults.Add(PointTopic(FindingTable::delay, static_cast<int>(index) + 1),
               ": Yout is 0 there and DelRipplePower is " + record_.Slot(slot::kDelRipplePower) +
                   "; use 0 or less.",
               "division");
  }

  /// Yout at a frequency: linear between the points, the end value outside.
  static double YoutAt(const std::vector<PassbandPoint>& sorted, double frequency) {
    if (sorted.empty() || std::isnan(frequency)) return kUnknown;
    const auto after = std::upper_bound(
        sorted.begin(), sorted.end(), frequency,
        [](double value, const PassbandPoint& point) { return value < point.frequency; });
    if (after == sorted.begin()) return sorted.front().yout;
    const auto before = std::prev(after);
    if (after == sorted.end()) return before->yout;
    const double share = (frequency - before->frequency) / (after->frequency - before->frequency);
    return before->yout + share * (after->yout - before->yout);
  }

  const ResponseRecord& record_;
  AnswerReader& answers_;
  Problem& problem_;
};

}  // namespace

void ReadPoints(const ResponseRecord& record, AnswerReader& answers, Problem& problem) {
  PointReader(record, answers, problem).Read();
}

}  // namespace polefit
