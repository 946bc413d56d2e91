#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace polefit {

/// The report's lines, meant for 79 columns. UTF-8.
class ReportText {
 public:
  static constexpr std::size_t kColumns = 79;

  /// Adds a line as it is: a figure that were cut would read as another one.
  void Line(std::string_view text = "");
  /// Adds a text broken at blanks into lines; those after the first begin with `indent` blanks.
  void Wrapped(const std::string& text, std::size_t indent);
  /// Adds an empty line and a heading that stands out.
  void Heading(const std::string& title);

  const std::vector<std::string>& Lines() const { return lines_; }

 private:
  std::vector<std::string> lines_;
};

/// How the figures of a column are written: with as many decimals as show `digits` significant
/// digits of the largest, or with exponents where these tell more. No text has more than `width`
/// characters, the minus sign not counted.
class FigureFormat {
 public:
  /// A figure that would show fewer than `leastDigits` significant digits has an exponent.
  FigureFormat(double largest, int width, int digits, int leastDigits = 0);

  std::string operator()(double value) const;

 private:
  std::string WithExponent(double value) const;

  int width_;
  int digits_;
  int leastDigits_;
  int decimals_;  ///< -1: all figures have exponents
};

/// The largest size of some numbers; 0 when there are none.
double LargestSize(const std::vector<double>& values);

/// Columns side by side, aligned to the right, with a blank between them.
class ReportTable {
 public:
  /// All columns have the same number of cells, and no cell is wider than `width`.
  void Add(std::string heading, std::string unit, int width, std::vector<std::string> cells);
  /// Adds a column of figures in a format.
  void Add(std::string heading, std::string unit, int width, const std::vector<double>& values,
           const FigureFormat& format);
  void Write(ReportText& text) const;

 private:
  struct Column {
    int width;
    /// The heading, the unit and the cells.
    std::vector<std::string> lines;
  };
  std::vector<Column> columns_;
};

}  // namespace polefit
