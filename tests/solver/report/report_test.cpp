#include "solver/report/report.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <random>
#include <set>
#include <sstream>
#include <string>

#include "base/text.h"
#include "base/text_format.h"
#include "bench/families/families.h"
#include "solver/example_problem.h"

namespace polefit::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::SizeIs;

/// The report of a record, solved. No line is wider than 79 columns.
struct Report {
  explicit Report(const char* answers) : Report(ExampleRecord("Ex-Yzero.101", answers)) {}
  explicit Report(const ResponseRecord& record) {
    const Problem problem = GoodProblem(record);
    std::ostringstream progress;
    Journal journal(problem, progress);
    summary = Solve(problem, journal, [] { return false; });
    const Figures figures = FiguresOf(problem, summary);
    lines = FullReport({"x.dat", "/data", "today", 1, ResultText(summary)},
                       {record, problem, summary, figures, journal, {}});
    for (const std::string& line : lines) {
      EXPECT_LE(CharacterCount(line), 79U) << line;
      text += line + "\n";
    }
    // Read alike by text programs that expect single bytes and by those that expect UTF-8.
    EXPECT_THAT(text, Not(HasSubstr("\xC2")));
  }

  std::ptrdiff_t Count(const std::string& part) const {
    return std::count_if(lines.begin(), lines.end(), [&](const std::string& line) {
      return line.find(part) != std::string::npos;
    });
  }
  std::vector<std::string> Section(const std::string& heading) const {
    const auto begin = std::find(lines.begin(), lines.end(), heading) + 2;
    return {begin, std::find(begin, lines.end(), "")};
  }

  Summary summary;
  std::vector<std::string> lines;
  std::string text;
};

/// The numbers of a table's row from a column on; none in its headings.
std::vector<double> Numbers(std::string line, std::size_t from) {
  for (const char* const sign : {"+-", "+"}) {
    for (auto at = line.find(sign, from); at != std::string::npos; at = line.find(sign, at)) {
      if (std::string(sign) == "+" && line[at - 1] == 'e') {
        ++at;
        continue;
      }
      line.replace(at, std::string(sign).size(), " ");
    }
  }
  std::istringstream cells(line.substr(std::min(from, line.size())));
  std::vector<double> numbers;
  for (double number = 0; cells >> number;) numbers.push_back(number);
  return numbers;
}

/// Ex-Delay.101 in other units: with Freq Norm `megahertz`, and Yin and Yout times `size`.
ResponseRecord Rescaled(double megahertz, double size) {
  ResponseRecord record = ExampleRecord("Ex-Delay.101", Format("5=%.17g", megahertz));
  const auto multiply = [](auto& points, int row, int column, double factor) {
    points.At(row, column) = Format("%.17g", std::stod(points.At(row, column)) * factor);
  };
  for (int row = 1; row <= record.nFreqPoints; ++row) {
    multiply(record.passband, row, 1, megahertz / 10);
    for (const int column : {2, 3}) multiply(record.passband, row, column, size);
  }
  for (int row = 1; row <= record.nDelayPoints; ++row) {
    multiply(record.delay, row, 1, megahertz / 10);
    multiply(record.delay, row, 2, 10 / megahertz);
  }
  return record;
}

/// The roots of a list that can be pasted.
std::vector<std::complex<double>> Pasted(const Report& report, const std::string& name) {
  std::vector<std::complex<double>> roots;
  for (auto line = std::find(report.lines.begin(), report.lines.end(), name + " = [") + 1;
       *line != "]"; ++line) {
    std::size_t end = 0;
    const double real = std::stod(*line, &end);
    roots.emplace_back(real, line->ends_with("j,") ? std::stod(line->substr(end)) : 0);
  }
  return roots;
}

/// Whether both have the same roots, in any order.
void CheckSame(const std::vector<std::complex<double>>& roots,
               const std::vector<std::complex<double>>& others) {
  ASSERT_EQ(roots.size(), others.size());
  for (const std::complex<double>& root : roots) {
    EXPECT_TRUE(std::any_of(others.begin(), others.end(), [&root](const auto& other) {
      return std::abs(root - other) < 2e-6 * std::abs(root);
    })) << root;
  }
}

/// The poles and zeros make the passband table, and the tables' columns fit each other.
void CheckTables(const Report& report, double megahertz, double size) {
  std::vector<std::complex<double>> poles;
  std::vector<std::complex<double>> zeros;
  for (const std::string& line : report.Section("POLES AND ZEROS OF H(s)")) {
    const std::vector<double> parts = Numbers(line, 20);
    if (parts.size() < 4) continue;
    for (const std::size_t i : {0U, 1U}) {
      EXPECT_NEAR(parts[i + 2], parts[i] * megahertz, 1e-4 * std::abs(parts[i + 2])) << line;
    }
    auto& places = line.find("pole") != std::string::npos ? poles : zeros;
    for (const double sign : {1, -1}) {
      if (sign > 0 || parts[1] != 0) places.emplace_back(parts[0], sign * parts[1]);
    }
  }
  ASSERT_THAT(poles, SizeIs(7));
  ASSERT_THAT(zeros, SizeIs(3));
  CheckSame(poles, Pasted(report, "p"));
  CheckSame(zeros, Pasted(report, "z"));
  const double constant = std::stod(report.text.substr(report.text.find("K    =") + 6, 20));
  int rows = 0;
  for (const std::string& line : report.Section("PASSBAND FIT")) {
    const std::vector<double> cells = Numbers(line, 0);
    if (cells.size() < 6) continue;
    const std::complex<double> s(0, cells[1] / megahertz);
    std::complex<double> h = constant;
    for (const std::complex<double>& zero : zeros) h *= s - zero;
    for (const std::complex<double>& pole : poles) h /= s - pole;
    EXPECT_NEAR(cells[2] * std::abs(h), cells[4], 6e-4 * size) << line;
    EXPECT_NEAR(cells[4] - cells[3], cells[5], 6e-4 * size) << line;
    ++rows;
  }
  for (const std::string& line : report.Section("GROUP DELAY")) {
    const std::vector<double> cells = Numbers(line, 0);
    if (cells.size() < 6) continue;
    const double ns = 10 / megahertz;
    EXPECT_NEAR(cells[2] + cells[3], cells[4], .002 * ns) << line;
    EXPECT_NEAR(cells[4] - 181.641 * ns, cells[5], .002 * ns) << line;
    ++rows;
  }
  EXPECT_EQ(rows, 21 + 17);
}

TEST(Report, HoldsAtEveryScale) {
  for (const double megahertz : {.001, 10., 10000., 1e9}) {
    for (const double size : {1e-6, 1., 1e6}) {
      SCOPED_TRACE(Format("%g MHz, %g", megahertz, size));
      const Report report(Rescaled(megahertz, size));
      CheckTables(report, megahertz, size);
      for (const std::string name : {"ripple around it", "ripple     "}) {
        const double ripple = std::stod(report.text.substr(report.text.find(name) + name.size()));
        EXPECT_NEAR(ripple * megahertz, 75.37, .011);
      }
      EXPECT_EQ(report.Count("10 * 9.5327e-06 + 6.4267e-05   (W: question 4)"), 1);
    }
  }
}

TEST(Report, SpeaksOfWhatThereIs) {
  const Report equalised("");
  const std::vector<std::string> sidelobes = equalised.Section("SIDELOBES, EQUALISED");
  ASSERT_THAT(sidelobes, SizeIs(5));
  for (std::size_t i = 2; i < 5; ++i) EXPECT_THAT(sidelobes[i], HasSubstr("-53.0"));
  EXPECT_THAT(equalised.text, Not(HasSubstr("GROUP DELAY")));
  EXPECT_THAT(equalised.text, HasSubstr("omega-axis zero 1 is held at 1"));
  EXPECT_THAT(equalised.text, HasSubstr("3 omega-axis zeros: 1 held at 1, 2 placed so that all"));
  EXPECT_THAT(equalised.text, HasSubstr("may end elsewhere."));
  EXPECT_EQ(equalised.Count("-80 +                      * *   "), 1);  // the first two nulls
  const Report delay(ExampleRecord("Ex-Delay.101"));
  EXPECT_THAT(delay.text, HasSubstr("181.64 ns   (free, weighted by question 1b)"));
  EXPECT_THAT(delay.text, HasSubstr("7.537 ns peak to peak, 2.447 ns rms"));
  EXPECT_THAT(delay.Section("TOTAL DELAY IN ns:  * TX + delay of H  - its constant T0  # both"),
              SizeIs(20));
}

TEST(Report, TellsSmallDifferencesOfLargeDelays) {
  ResponseRecord record = ExampleRecord("Ex-Delay.101");
  for (int row = 1; row <= record.nDelayPoints; ++row) record.delay.At(row, 2) = "1e6";
  const Report report(record);
  EXPECT_EQ(report.Count("8.5  1000000.000      150.537  1000150.537        9.991"), 1);
  std::set<std::string> labels;
  for (const std::string& line :
       report.Section("TOTAL DELAY IN ns:  * TX + delay of H  - its constant T0  # both")) {
    if (line.find("1000") < 9) labels.insert(line.substr(0, line.find('+')));
  }
  EXPECT_THAT(labels, SizeIs(9));
}

TEST(Report, NamesBoundsAndThePairThatWantsToSplit) {
  ResponseRecord record = ExampleRecord("Ex-Yzero.101", "6=0 2; 8=.5 .4; 9=.2 .7; 11=0 0 0; 14=.6");
  for (int row = 1; row <= record.nFreqPoints; ++row) {
    // Two different real poles far apart, which a pair can only follow from the axis.
    const double w = .05 * (row - 1);
    record.passband.At(row, 2) = "1";
    record.passband.At(row, 3) =
        PlainNumber(1 / (std::hypot(1, w / .1) * std::hypot(1, w / .9) * (1 + w * w)));
  }
  const Report report(record);
  EXPECT_THAT(report.text, HasSubstr("imaginary part: 0 is the lower bound (the sigma axis)"));
  EXPECT_THAT(report.text, HasSubstr("question 6 = 2 1 reaches F "));
  EXPECT_THAT(report.text, HasSubstr("imaginary part: .6 is the upper bound (question 14)"));
}

/// What the errors of a solved record look like.
ErrorPattern PatternOf(const ResponseRecord& record) {
  Listener nobody;
  const Problem problem = GoodProblem(record);
  return FiguresOf(problem, Solve(problem, nobody, [] { return false; })).errors;
}

TEST(Errors, LookRandomAlsoWhereTheNoiseGoesWithTheLevel) {
  const std::set<std::string> wanted = {"Bessel", "Butterworth", "Chebyshev", "elliptic",
                                        "inverse Chebyshev"};
  std::mt19937 random(5);
  std::normal_distribution<double> noise(1, .003);
  int problems = 0;
  int alarms = 0;
  int lacking = 0;
  int found = 0;
  for (const families::FamilyProblem& family : families::TextbookProblems()) {
    const std::size_t pairs = family.filter.poles.size();
    if (!wanted.contains(family.family) || pairs > 4) continue;
    ResponseRecord record = families::WithoutStarts(family.record);
    for (int row = 1; row <= record.nFreqPoints; ++row) {
      const double yout = ParseNumber(record.passband.At(row, 3)).value();
      record.passband.At(row, 3) = Format("%.14g", yout * noise(random));
    }
    ++problems;
    if (PatternOf(record) == ErrorPattern::systematic) ++alarms;
    if (!family.filter.zeros.empty()) continue;
    ++lacking;
    record.Slot(slot::kNPoles) = Format("0 %d", static_cast<int>(pairs) - 1);
    if (pairs > 1 && PatternOf(record) == ErrorPattern::systematic) ++found;
  }
  EXPECT_EQ(problems, 33);
  EXPECT_LE(alarms, 1);
  EXPECT_GE(found, 13) << "of " << lacking << " that lack poles";
}

TEST(Controls, ActAsTheirRowsSay) {
  const Report plain("");
  EXPECT_EQ(plain.Count("LYNX iteration") + plain.Count("WREN iteration"), 0);

  const Report oneProblem("S1=1 10 7");
  EXPECT_EQ(oneProblem.Count("  2       RHO"), 0);
  EXPECT_EQ(plain.Count("  2       RHO"), 1);
  const Report detailed("S2=1 200 1000");
  EXPECT_GT(detailed.Count("problem 1 ended at these locations, normalised:"), 3);
  EXPECT_GT(detailed.Count("LYNX iteration 200:"), 0);
  EXPECT_GT(detailed.Count("WREN iteration 1000:"), 0);
  EXPECT_EQ(Report("S2=0 0 1").Count("WREN iteration"), 499);
  const Report loose("S3=1e-1 1e-5 1e-5");
  EXPECT_NE(loose.summary.starts[0].evaluations, plain.summary.starts[0].evaluations);
  const Report fewSteps("S4=5");
  EXPECT_GT(fewSteps.Count("5 steps"), 1);
  EXPECT_EQ(fewSteps.Count("6 steps") + fewSteps.Count("7 steps"), 0);
  EXPECT_EQ(Report("S5=0").Count("    step "), 0);
  EXPECT_EQ(Report("S5=20").Count("    step "), plain.summary.starts[0].evaluations / 20);
  const Report cutShort("S6=30");
  EXPECT_EQ(cutShort.summary.evaluations, 30);
  EXPECT_EQ(cutShort.Count("agree") + plain.Count("agree"), 2);
  const Report gradient("S7=2");
  EXPECT_NEAR(gradient.summary.best.Cost() / 2.277862e-06, 1, .001);
  EXPECT_NE(gradient.text, plain.text);
  EXPECT_GT(Report("S8=2.5").Count("RHO"), plain.Count("RHO") - 2);
  EXPECT_LT(Report("S9=.5").Count(" RHO "), plain.Count(" RHO "));
}

TEST(Numbers, AreWrittenForTheFile) {
  std::string plain;
  for (const double number :
       {.4527568981, 4., 0., -12.5, -.05, .99999999999, 1e-9, 123456789.4, 1.23456789012e-5}) {
    plain += PlainNumber(number) + " ";
  }
  EXPECT_EQ(plain, ".452756898 4 0 -12.5 -.05 1 .000000001 123456789 .0000123456789 ");
  EXPECT_EQ(ExactNumber(.005), ".005");
  EXPECT_EQ(ExactNumber(.0051234567891), ".0051234567891");
}

}  // namespace
}  // namespace polefit::testing
