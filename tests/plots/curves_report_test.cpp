// What the pane draws of a result and what the run's report says of it.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <sstream>

#include "base/text_format.h"
#include "plots/fit_curves.h"
#include "solver/example_problem.h"
#include "solver/report/last_run.h"
#include "solver/report/report.h"

namespace polefit::testing {
namespace {

using Row = std::vector<std::string>;

/// A solved example: its report's tables, and the curves that the pane draws of the kept values.
struct Solved {
  explicit Solved(const char* name) {
    const ResponseRecord record = ExampleRecord(name);
    const Problem problem = GoodProblem(record);
    std::ostringstream progress;
    Journal journal(problem, progress);
    const Summary summary = Solve(problem, journal, [] { return false; });
    const Figures figures = FiguresOf(problem, summary);
    lines = FullReport({name, "/data", "today", 1, ResultText(summary)},
                       {record, problem, summary, figures, journal, {}});
    std::vector<Finding> findings;
    curves = CurvesOf(LastRunRecord(record, problem, summary.best), CurveRole::result, "result",
                      findings);
  }

  /// The cells of a section's rows, without its headings.
  std::vector<Row> Table(const char* heading) const {
    std::vector<Row> rows;
    for (auto line = std::ranges::find(lines, heading); line != lines.end() && !line->empty();
         ++line) {
      std::istringstream cells(*line);
      Row row;
      for (std::string cell; cells >> cell;) row.push_back(cell);
      if (row[0] == std::to_string(rows.size() + 1)) rows.push_back(row);
    }
    return rows;
  }

  std::vector<std::string> lines;
  std::optional<FitCurves> curves;
};

/// The value with the digits of a cell.
void ExpectDigits(const std::string& cell, double value) {
  if (std::isnan(value)) {
    EXPECT_EQ(cell, "-");
    return;
  }
  const std::string mantissa = cell.substr(0, cell.find('e'));
  const auto point = mantissa.find('.');
  const int digits = point == std::string::npos ? 0 : static_cast<int>(mantissa.size() - point - 1);
  const bool hasExponent = mantissa.size() < cell.size();
  EXPECT_EQ(std::stod(cell), std::stod(Format(hasExponent ? "%.*e" : "%.*f", digits, value)))
      << cell << " is " << value;
}

TEST(Curves, AreTheTablesOfTheReportDigitByDigit) {
  for (const char* const name : {"Ex-Yzero.101", "Ex-Yzero.102", "Ex-CNTL.1", "Ex-Zpair.1",
                                 "Ex-Delay.101", "Ex-Delay.111", "Ex-Delay.112"}) {
    SCOPED_TRACE(name);
    const Solved solved(name);
    ASSERT_TRUE(solved.curves);
    const PassbandFit& points = solved.curves->passband;
    const auto passband = solved.Table("PASSBAND FIT");
    ASSERT_EQ(passband.size(), points.frequency.size());
    for (std::size_t i = 0; i < passband.size(); ++i) {
      const double values[] = {points.obtained[i], points.error[i], points.decibels[i],
                               points.weighted[i]};
      for (std::size_t column = 0; column < std::size(values); ++column) {
        ExpectDigits(passband[i].at(4 + column), values[column]);
      }
    }
    const DelayFit& delay = solved.curves->delayPoints;
    const auto group = solved.Table("GROUP DELAY");
    ASSERT_EQ(group.size(), delay.frequency.size());
    for (std::size_t i = 0; i < group.size(); ++i) {
      const double values[] = {delay.tx[i], delay.own[i], delay.total[i], delay.error[i]};
      for (std::size_t column = 0; column < std::size(values); ++column) {
        ExpectDigits(group[i].at(2 + column), values[column]);
      }
    }
  }
}

}  // namespace
}  // namespace polefit::testing
