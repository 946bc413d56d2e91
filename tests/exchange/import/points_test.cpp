#include "exchange/import/points.h"

#include <gmock/gmock.h>

#include "exchange/filter_sweep.h"
#include "exchange/import/guess.h"
#include "exchange/import/thinning.h"
#include "exchange/read/source_file.h"

namespace polefit::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

SourceTable TableOf(const std::string& text, const std::string& name = "x.csv") {
  return ReadSourceBytes(name, text).table;
}

/// "f/yin/yout/weight" for each passband row, "f/tx" for each delay row, or the fault.
std::vector<std::string> Rows(const Points& points) {
  std::vector<std::string> rows;
  for (const PassbandRow& row : points.passband) {
    rows.push_back(TextOf(row.frequency) + "/" + TextOf(row.yin) + "/" + TextOf(row.yout) + "/" +
                   TextOf(row.weight));
  }
  for (const DelayRow& row : points.delays) {
    rows.push_back(TextOf(row.frequency) + "/" + TextOf(row.tx));
  }
  if (!points.fault.empty()) rows.push_back(points.fault);
  return rows;
}

Points PointsOf(const std::string& text, Role role = Role::model) {
  const SourceTable table = TableOf(text);
  return MakePoints(table, GuessChoices(table, role).choices);
}

TEST(PointsTest, MovedValuesKeepTheirDigitsAndCalculatedOnesHaveNine) {
  EXPECT_THAT(Rows(PointsOf("Hz,mag\n1500000,0.920\n3.0E+06,+.5\n")),
              ElementsAre("1.5/1/0.920/1", "3/1/+.5/1"));
  EXPECT_THAT(Rows(PointsOf("GHz;dB\n0,0015;-3\n0,003;0\n")),
              ElementsAre("1.5/1/.707945784/1", "3/1/1/1"));
  EXPECT_THAT(Rows(PointsOf("f (kHz),re,im\n10,3,4\n20,0,-1e-9\n")),
              ElementsAre("0.01/1/5/1", "0.02/1/.000000001/1"));
}

TEST(PointsTest, ARoleSaysWhichOfYinAndYoutThePointsAre) {
  const std::string text = "MHz,mag\n1,.5\n2,.25\n";
  EXPECT_THAT(Rows(PointsOf(text, Role::model)), ElementsAre("1/1/.5/1", "2/1/.25/1"));
  EXPECT_THAT(Rows(PointsOf(text, Role::equalise)), ElementsAre("1/.5/1/1", "2/.25/1/1"));
  EXPECT_THAT(Rows(PointsOf(text, Role::want)), ElementsAre("1/1/.5/1", "2/1/.25/1"));
  const SourceTable table = TableOf("MHz,a,b,w,delay (us)\n1,.5,.6,2,.1\n2,.25,.3,3,.04\n");
  ImportChoices choices = GuessChoices(table, Role::equalise).choices;
  choices.value = {1};
  choices.other = {2};
  choices.weight = 3;
  choices.delaySource = DelaySource::column;
  choices.rows.normalise = true;
  EXPECT_THAT(Rows(MakePoints(table, choices)),
              ElementsAre("1/.5/1/2", "2/.25/.5/3", "1/100", "2/40"));
  choices.role = Role::model;
  EXPECT_THAT(Rows(MakePoints(table, choices)),
              ElementsAre("1/.6/1/2", "2/.3/.5/3", "1/0", "2/60"));
}

TEST(PointsTest, RowsAreSortedAndWhatCannotBeTakenIsTold) {
  const Points points = PointsOf("MHz,dB\n3,-1\n1,-2\n2,---\n1,-9\n5,1e6\n-4,-1\n");
  EXPECT_THAT(Rows(points), ElementsAre("1/1/.794328235/1", "3/1/.891250938/1"));
  EXPECT_EQ(SkippedText(points.skippedLines), "3 lines skipped: 4, 6, 7");
  EXPECT_THAT(points.notes, ElementsAre("rows sorted by frequency", HasSubstr("1 rows repeat")));
  EXPECT_EQ(SummaryOf(points, Role::model), "2 rows, 1 to 3 MHz, -1 to -2 dB");
  EXPECT_THAT(Rows(PointsOf("MHz,dB\n3,-1\n3,-1\n")), ElementsAre(HasSubstr("only 1 row")));
}

TEST(PointsTest, GuessesNameTheirGroundsOrWait) {
  struct Case {
    const char* text;
    int column;
    std::optional<ValueKind> kind;
    FrequencyUnit unit;
  };
  const Case cases[] = {
      {"1,0.5\n2,0.4\n", 1, ValueKind::linear, FrequencyUnit::hertz},
      {"1,0.5\n2,-0.4\n", 1, ValueKind::decibel, FrequencyUnit::hertz},
      {"1,5\n2,4\n", 1, std::nullopt, FrequencyUnit::hertz},
      {"f,mag\n1,5\n2,-4\n", 1, ValueKind::decibel, FrequencyUnit::hertz},
      {"f,mag\n1,5\n2,4\n", 1, ValueKind::linear, FrequencyUnit::hertz},
      {"f_MHz,gain\n1,5\n2,4\n", 1, std::nullopt, FrequencyUnit::megahertz},
      {"f_MHz,gain_dB\n1,5\n2,4\n", 1, ValueKind::decibel, FrequencyUnit::megahertz},
      {"phase,S11 dB,S21 dB,f GHz\n-90,1,2,3\n-90,1,2,4\n", 2, ValueKind::decibel,
       FrequencyUnit::gigahertz},
      {"no,f,ang,re S11,im S11\n1,5,0,2,3\n2,6,0,2,3\n", 3, ValueKind::realImaginary,
       FrequencyUnit::hertz}};
  for (const Case& one : cases) {
    const Guess guess = GuessChoices(TableOf(one.text), Role::model);
    EXPECT_EQ(guess.choices.value.column, one.column) << one.text;
    EXPECT_EQ(guess.isKindUnsure, !one.kind) << one.text;
    EXPECT_EQ(guess.choices.value.kind, one.kind.value_or(ValueKind::linear)) << one.text;
    EXPECT_EQ(guess.choices.unit, one.unit) << one.text;
  }
  const SourceTable delays = TableOf("MHz,dB,gd\n10,-1,2e-8\n20,-2,3e-8\n");
  EXPECT_EQ(GuessDelayUnit(delays, 2, 0, FrequencyUnit::megahertz), DelayUnit::seconds);
  const SourceTable table = TableOf("f,Gain (dB),Gain (dB),Phase\n1,2,3,4\n2,3,4,5\n");
  EXPECT_EQ(FindColumn(table, "gain"), 1);
  EXPECT_EQ(FindColumn(table, " phase "), 3);
  EXPECT_EQ(FindColumn(table, "2"), 1);
  EXPECT_EQ(FindColumn(table, "5"), kNoColumn);
}

/// A row of this frequency and value.
Sample At(double frequency, double value) {
  Sample sample;
  sample.frequency = {frequency};
  sample.value = {value};
  return sample;
}

TEST(PointsTest, ThinningTakesMeansAndKeepsTheNull) {
  std::vector<Sample> rows;
  for (int i = 0; i < 100; ++i) rows.push_back(At(1 + i, i == 37 ? .001 : .5 + .001 * i));
  std::vector<Sample> thinned = rows;
  ThinToPoints(thinned, 10, false);
  ASSERT_EQ(thinned.size(), 10U);
  EXPECT_NEAR(thinned[0].frequency.value, 5.5, .5);
  EXPECT_NEAR(thinned[9].value.value, .5945, .001);
  EXPECT_EQ(thinned[3].value.value, .001);
  EXPECT_EQ(thinned[3].frequency.value, 38);
  thinned = rows;
  ThinToPoints(thinned, 5, true);
  ASSERT_EQ(thinned.size(), 5U);
  EXPECT_LT(thinned[0].frequency.value, 2);
  EXPECT_GT(thinned[4].frequency.value, 60);
  thinned = rows;
  ThinToPoints(thinned, 200, false);
  EXPECT_EQ(thinned.size(), 100U);
  KeepEvery(thinned, 30);
  EXPECT_EQ(thinned.size(), 4U);
  rows.front().frequency = {0};
  ThinToPoints(rows, 8, true);
  EXPECT_EQ(rows.front().frequency.value, 0);
  EXPECT_LE(rows.size(), 8U);
}

TEST(PointsTest, SmoothingLeavesAQuadraticInDecibelsAsItIs) {
  std::vector<Sample> rows;
  for (int i = 0; i < 30; ++i) {
    const double f = 1 + .1 * i * i;
    rows.push_back(At(f, std::pow(10, (-1 - .2 * f + .003 * f * f) / 20)));
  }
  std::vector<Sample> smooth = rows;
  Smooth(smooth, 7, {});
  for (std::size_t i = 0; i < rows.size(); ++i) {
    EXPECT_NEAR(smooth[i].value.value / rows[i].value.value, 1, 1e-9);
  }
  rows[10].value = {0};
  Smooth(rows, 5, {});
  EXPECT_EQ(rows[10].value.value, 0);
  std::vector<Sample> far = {At(.3, .99), At(.9, .98), At(6e19, .9)};
  Smooth(far, 5, {});
  EXPECT_NEAR(far[0].value.value, std::sqrt(.99 * .98), 1e-9) << "the first two count as one";
}

TEST(PointsTest, ADelayComesFromThePhase) {
  std::string polar = "MHz,mag,phase (deg)\n";
  std::string complex = "MHz,re,im\n";
  std::vector<double> delays;
  const auto phase = [](double f) { return std::arg(FilterSweep::At(f)); };
  for (double f = .1; f <= 30; f += .1) {
    const std::complex<double> h = FilterSweep::At(f);
    polar += Format("%.10g,%.12g,%.12g\n", f, std::abs(h), phase(f) * 180 / std::acos(-1.0));
    complex += Format("%.10g,%.12g,%.12g\n", f, h.real(), h.imag());
    const double step = std::remainder(phase(f + 1e-4) - phase(f - 1e-4), 2 * std::acos(-1.0));
    delays.push_back(-step / 2e-4 / 2 / std::acos(-1.0) * 1000);
  }
  const double largest = *std::max_element(delays.begin(), delays.end());
  for (const std::string& text : {polar, complex}) {
    const SourceTable table = TableOf(text);
    ImportChoices choices = GuessChoices(table, Role::model).choices;
    choices.delaySource = DelaySource::phase;
    const Points points = MakePoints(table, choices);
    ASSERT_EQ(points.delays.size(), delays.size()) << points.fault;
    for (std::size_t i = 2; i + 2 < delays.size(); ++i) {
      EXPECT_NEAR(points.delays[i].tx.value, largest - delays[i], .02 * largest);
    }
  }
  const SourceTable coarse = TableOf("MHz,mag,phase\n1,1,0\n2,1,-155\n3,1,50\n");
  ImportChoices choices = GuessChoices(coarse, Role::model).choices;
  choices.delaySource = DelaySource::phase;
  EXPECT_THAT(MakePoints(coarse, choices).fault, HasSubstr("sweep too coarse for a delay"));
  choices.rows.from = 1.5;
  choices.rows.to = 3;
  EXPECT_THAT(Rows(MakePoints(TableOf("MHz,mag,phase\n1,1,0\n2,1,155\n3,1,119\n"), choices)),
              ElementsAre("2/1/1/1", "3/1/1/1", "2/0", "3/0"));
}

TEST(PointsTest, NetworkFilesOfEveryFormatGiveTheSamePoints) {
  for (const std::string format : {"DB", "MA", "RI"}) {
    for (const auto& [unit, scale] : {std::pair("Hz", 1e6), {"kHz", 1e3}, {"GHz", 1e-3}}) {
      std::string text = std::string("# ") + unit + " S " + format + " R 50\n";
      for (const double f : FilterSweep::Frequencies()) {
        const std::string pair = FilterSweep::Pair(FilterSweep::At(f), format);
        text += Format("%.10g 0 0 %s 1 0 1 0\n", f * scale, pair.c_str());
      }
      const SourceTable table = TableOf(text, "dut.s2p");
      const Points points = MakePoints(table, GuessChoices(table, Role::model).choices);
      ASSERT_EQ(points.passband.size(), 40U) << points.fault;
      for (const PassbandRow& row : points.passband) {
        EXPECT_NEAR(row.yout.value, std::abs(FilterSweep::At(row.frequency.value)), 1e-10);
      }
      EXPECT_EQ(TextOf(points.passband[0].frequency), "1.5") << unit;
    }
  }
}

TEST(PointsTest, MoreRowsThanATableHoldsAskForFewer) {
  std::string text = "Hz,mag\n";
  for (int i = 1; i <= 32767; ++i) text += std::to_string(i) + ",1\n";
  const SourceTable table = TableOf(text);
  ImportChoices choices = GuessChoices(table, Role::model).choices;
  EXPECT_THAT(MakePoints(table, choices).fault, HasSubstr("32767 rows are more than"));
  choices.rows.points = 100;
  EXPECT_THAT(MakePoints(table, choices).fault, IsEmpty());
}

}  // namespace
}  // namespace polefit::testing
