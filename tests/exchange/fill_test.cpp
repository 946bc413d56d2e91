#include <gmock/gmock.h>

#include <cmath>

#include "exchange/fill_column.h"
#include "exchange/fill_templates.h"
#include "solver/example_problem.h"

namespace polefit::testing {
namespace {

using ::testing::HasSubstr;

FilledColumn Calculated(const ResponseRecord& record, FillColumn column,
                        const std::string& expression, std::optional<FrequencyGrid> grid = {}) {
  return CalculateFill(record, {column, expression, grid});
}

/// Fills a column, which must work.
void Put(ResponseRecord& record, FillColumn column, const std::string& expression,
         std::optional<FrequencyGrid> grid = {}) {
  const Fill fill = {column, expression, grid};
  const FilledColumn filled = CalculateFill(record, fill);
  ASSERT_EQ(filled.fault, "");
  PutFill(record, fill, filled);
}

std::string Expression(std::size_t shape, double first, double second = 0) {
  return kFillTemplates.at(shape).expression(first, second);
}

/// The value of a template at x.
double ShapeAt(double x, std::size_t shape, double first, double second = 0) {
  ResponseRecord record;
  record.Slot(slot::kFreqNorm) = "10";
  record.passband.Resize(2);
  record.passband.At(1, 1) = std::to_string(10 * x);
  const auto filled = Calculated(record, FillColumn::yin, Expression(shape, first, second));
  EXPECT_EQ(filled.fault, "");
  return filled.values.empty() ? -1 : filled.values[0];
}

TEST(FillColumn, TheExamplesComeOutOfTheirFormulas) {
  const std::string receiver =
      "sinc(.075*f)/sqrt(1+(lin(.2)-1)*(16*(f/12.5)^5-20*(f/12.5)^3+5*(f/12.5))^2)";
  const struct {
    const char* name;
    std::string yin;
    double rollOff;
  } examples[] = {
      {"Ex-Yzero.101", Expression(7, 50), 35}, {"Ex-Yzero.102", Expression(7, 50), 35},
      {"Ex-CNTL.1", Expression(7, 50), 35},    {"Ex-Zpair.1", Expression(7, 50), 35},
      {"Ex-Delay.101", receiver, 80},          {"Ex-Delay.111", receiver, 80},
      {"Ex-Delay.112", receiver, 80},
  };
  for (const auto& [name, yin, rollOff] : examples) {
    const ResponseRecord example = ExampleRecord(name);
    ResponseRecord filled = ExampleRecord(name);
    filled.passband.Resize(1);
    Put(filled, FillColumn::yin, yin, FrequencyGrid{0, 10, 20, false});
    Put(filled, FillColumn::yout, Expression(1, rollOff));
    ASSERT_EQ(filled.nFreqPoints, 21);
    for (int row = 1; row <= 21; ++row) {
      EXPECT_EQ(filled.passband.At(row, 1), example.passband.At(row, 1));
      EXPECT_EQ(filled.passband.At(row, 4), "1");
      for (const int column : {2, 3}) {
        EXPECT_NEAR(std::stod(filled.passband.At(row, column)),
                    std::stod(example.passband.At(row, column)), 5.01e-6)
            << name << ", row " << row;
      }
    }
  }
}

TEST(FillColumn, ShapesMeetTheirDefiningValues) {
  const double edge = std::sqrt(.5);
  EXPECT_EQ(ShapeAt(2, 0, .5), .5);
  EXPECT_NEAR(ShapeAt(1 / 1.35, 1, 35), .5, 1e-5);
  EXPECT_EQ(ShapeAt(1, 1, 35), 0);
  EXPECT_EQ(ShapeAt(1, 1, 0), 0);
  EXPECT_NEAR(ShapeAt(1 / 1.35, 2, 35), edge, 1e-5);
  EXPECT_NEAR(20 * std::log10(ShapeAt(2, 3, 3)), -12, 1e-9);
  EXPECT_NEAR(ShapeAt(.5, 7, 50), ShapeAt(0, 7, 0) * .900316, 1e-6);
  EXPECT_NEAR(20 * std::log10(ShapeAt(.25, 8, 6)), -3, 1e-9);
  for (int order = 1; order <= 10; ++order) {
    EXPECT_NEAR(ShapeAt(1, 4, order), edge, 1e-12);
    EXPECT_NEAR(ShapeAt(2, 4, order), 1 / std::sqrt(1 + std::pow(4, order)), 1e-12);
    const double epsilon = std::sqrt(std::pow(10, .05) - 1);
    EXPECT_NEAR(ShapeAt(1.2, 5, order, .5),
                1 / std::hypot(1, epsilon * std::cosh(order * std::acosh(1.2))), 1e-9);
    EXPECT_NEAR(ShapeAt(.3, 5, order, .5),
                1 / std::hypot(1, epsilon * std::cos(order * std::acos(.3))), 1e-9);
    EXPECT_NEAR(ShapeAt(1, 6, order), edge, 1e-8);
  }
  // 15 / (s^3 + 6 s^2 + 15 s + 15), whose 3 dB edge is 1.755672.
  const double w = 2 * 1.755672;
  EXPECT_NEAR(ShapeAt(2, 6, 3), 15 / std::hypot(15 - 6 * w * w, 15 * w - w * w * w), 1e-6);
}

TEST(FillColumn, VariablesComeFromTheRowAndTheOtherTable) {
  ResponseRecord record = ExampleRecord("Ex-Delay.101", "5=20");
  const auto value = [&record](FillColumn column, const std::string& text, std::size_t row) {
    const FilledColumn filled = Calculated(record, column, text);
    EXPECT_EQ(filled.fault, "");
    return filled.values.at(row - 1);
  };
  EXPECT_EQ(value(FillColumn::weight, "x", 3), .05);
  EXPECT_EQ(value(FillColumn::weight, "yin*10 + yout + w + row", 4), 9.7568 + .99528 + 5);
  EXPECT_EQ(value(FillColumn::yin, "tx", 1), 44.597) << "before the first delay point";
  EXPECT_NEAR(value(FillColumn::delay, "tx + yin", 1), 44.597 + .99723, 1e-12);
  record.passband.At(2, 1) = ".4";
  EXPECT_NEAR(value(FillColumn::delay, "yin", 1), .99723 + (.98902 - .99723) / 6, 1e-12);
}

TEST(FillColumn, RowsAndWeightsComeWithTheGrid) {
  ResponseRecord record;
  record.passband.Resize(1);
  record.delay.Resize(1);
  Put(record, FillColumn::yin, "1", FrequencyGrid{1, 100, 2, true});
  EXPECT_EQ(record.passband.At(2, 1), "10");
  EXPECT_EQ(record.passband.At(3, 4), "1");
  EXPECT_EQ(record.nFreqPoints, 0) << "Yout is empty";
  Put(record, FillColumn::yout, "f");
  EXPECT_EQ(record.nFreqPoints, 3);
  Put(record, FillColumn::frequency, "f/10");
  EXPECT_EQ(record.passband.At(3, 1), "10");
  Put(record, FillColumn::delay, "5", FrequencyGrid{0, 1, 10, false});
  EXPECT_EQ(record.delay.At(4, 1), "0.3");
  EXPECT_EQ(record.nDelayPoints, 11);
  Put(record, FillColumn::yout, "2", FrequencyGrid{0, 1, 1, false});
  EXPECT_EQ(record.nFreqPoints, 2);
  EXPECT_EQ(record.passband.At(3, 1), "") << "the spare row";
}

TEST(FillColumn, KeepsWhatItWasNotAskedToFill) {
  ResponseRecord record = ExampleRecord("Ex-Yzero.101", "3=Y");
  record.passband.KeepRows(30);
  record.passband.At(3, 4) = "";
  record.passband.At(25, 2) = "typed";
  record.nFreqPoints = 2;
  Put(record, FillColumn::yout, "row");
  EXPECT_EQ(record.passband.At(25, 2), "typed");
  EXPECT_EQ(record.passband.At(25, 3), "25");
  EXPECT_EQ(record.passband.At(3, 4), "") << "the weights are in use";
  EXPECT_EQ(record.nFreqPoints, 2);
}

TEST(FillColumn, FaultsNameThePlaceOrTheRow) {
  const ResponseRecord example = ExampleRecord("Ex-Yzero.101");
  const ResponseRecord withoutNorm = ExampleRecord("Ex-Yzero.101", "5=");
  const struct {
    const ResponseRecord& record;
    const char* expression;
    FrequencyGrid grid;
    const char* fault;
  } cases[] = {
      {example, "1+*2", {0, 1, 5}, "Character 3: '*' is not expected here."},
      {example, "1/f", {0, 1, 5}, "Row 1: the formula has no finite value there."},
      {example, "yin", {0, 40, 40}, "Row 22: yin is not a number there."},
      {example, "tx", {0, 1, 5}, "Row 1: tx is taken from the other table, which has no such"},
      {withoutNorm, "x", {0, 1, 5}, "x needs Freq Norm (question 5)."},
      {example, "1", {1, 1, 5}, "must rise"},
      {example, "1", {-1, 1, 5}, "must rise"},
      {example, "1", {0, 1, 5, true}, "cannot begin at 0"},
      {example, "1", {0, 1, 32766}, "from 1 to 32765"},
      {example, "1", {0, 1, 0}, "from 1 to 32765"},
      {example, "1", {0, std::nan(""), 5}, "must rise"},
  };
  for (const auto& [record, expression, grid, fault] : cases) {
    EXPECT_THAT(Calculated(record, FillColumn::yin, expression, grid).fault, HasSubstr(fault));
  }
  EXPECT_THAT(Calculated({}, FillColumn::delay, "1").fault, HasSubstr("no rows yet"));
}

}  // namespace
}  // namespace polefit::testing
