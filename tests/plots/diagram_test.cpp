#include "plots/diagram.h"

#include <gmock/gmock.h>

#include <cmath>

#include "plots/curve_table.h"
#include "plots/units.h"
#include "solver/example_problem.h"

namespace polefit::testing {
namespace {

using ::testing::Contains;
using ::testing::ContainsRegex;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

FitCurves Curves(const ResponseRecord& record) {
  std::vector<Finding> findings;
  std::optional<FitCurves> curves = CurvesOf(record, CurveRole::typed, "typed", findings);
  EXPECT_TRUE(curves) << "no curves";
  return std::move(*curves);
}

const Series& SeriesOf(const Diagram& diagram, SeriesRole role) {
  static const Series none;
  for (const Series& series : diagram.series) {
    if (series.role == role) return series;
  }
  return none;
}

TEST(Units, FollowTheLargestValue) {
  const std::pair<double, const char*> frequencies[] = {
      {0, "0 MHz"}, {.0125, "12.5 kHz"}, {5.5, "5.5 MHz"}, {999, "999 MHz"}, {2400, "2.4 GHz"}};
  for (const auto& [megahertz, text] : frequencies) EXPECT_EQ(FrequencyText(megahertz), text);
  const std::pair<double, const char*> times[] = {
      {0, "0 ns"}, {.0752, "75.2 ps"}, {181.64, "181.64 ns"}, {2.5e4, "25 \u00b5s"}, {3e9, "3 s"}};
  for (const auto& [nanoseconds, text] : times) EXPECT_EQ(TimeText(nanoseconds), text);
}

TEST(MagnitudeDiagram, ShowsWantedAndObtainedInDecibels) {
  const FitCurves curves = Curves(ExampleRecord("Ex-Delay.101"));
  const ShownCurves shown = {&curves};
  const DiagramChoices plain;
  const Diagram diagram = MakeDiagram(DiagramKind::magnitude, shown, plain);
  EXPECT_EQ(diagram.x.label, "frequency, MHz");
  // The last point wants 0, which has no place in dB but at the lower edge.
  EXPECT_EQ(SeriesOf(diagram, SeriesRole::wanted).x.size(), 20U);
  const Series& below = SeriesOf(diagram, SeriesRole::belowAxis);
  ASSERT_THAT(below.x, ElementsAre(10));
  EXPECT_GT(below.y[0], diagram.y.from);
  EXPECT_LT(below.y[0], diagram.y.from + .1 * (diagram.y.to - diagram.y.from));
  // 10 dB below the smallest wanted value.
  EXPECT_NEAR(diagram.y.from, 20 * std::log10(.00779) - 10, 1e-9);
  EXPECT_GE(SeriesOf(diagram, SeriesRole::typed).x.size(), 400U);
  EXPECT_FALSE(SeriesOf(diagram, SeriesRole::input).x.empty());
  EXPECT_EQ(diagram.stops.size(), 21U);
  EXPECT_EQ(diagram.sentence,
            "wanted and typed, 0 to 10 MHz, worst error 6.66 dB at 9.5 MHz, 7 poles, 3 zeros");
  EXPECT_EQ(diagram.brief, "typed, worst error 6.66 dB at 9.5 MHz, 7 poles, 3 zeros");
  EXPECT_THAT(StopText(diagram, 11, shown, plain), StartsWith("row 12: 5.5 MHz, wanted -5.85 dB"));

  DiagramChoices choices;
  choices.isLinear = true;
  const Diagram linear = MakeDiagram(DiagramKind::magnitude, shown, choices);
  EXPECT_EQ(SeriesOf(linear, SeriesRole::wanted).x.size(), 21U);
  choices.isLinear = false;
  choices.isLogFrequency = true;
  choices.hidden = {"typed"};
  const Diagram logarithmic = MakeDiagram(DiagramKind::magnitude, shown, choices);
  EXPECT_GT(logarithmic.x.from, 0);
  EXPECT_EQ(logarithmic.stops.front().index, 1U) << "no key leads to f = 0";
  EXPECT_THAT(logarithmic.sentence, HasSubstr("f = 0 has no place"));
  EXPECT_THAT(MakeDiagram(DiagramKind::error, shown, choices).sentence,
              HasSubstr("f = 0 has no place"));
  EXPECT_THAT(SeriesOf(logarithmic, SeriesRole::typed).x, IsEmpty());
}

TEST(MagnitudeDiagram, HasItsStepsWhereThePointsAre) {
  ResponseRecord record = ExampleRecord("Ex-Zpair.1", "5=100");
  for (int row = 1; row <= 21; ++row) record.passband.At(row, 1) = std::to_string(95 + .5 * row);
  const FitCurves curves = Curves(record);
  EXPECT_GE(std::ranges::count_if(curves.obtained, [](double y) { return !std::isnan(y); }), 400)
      << "not over all frequencies up to the sidelobes";
}

TEST(MagnitudeDiagram, MarksSidelobesOnTheCurveThatIsDrawn) {
  ResponseRecord record = ExampleRecord("Ex-Yzero.102");
  const FitCurves inside = Curves(record);
  DiagramChoices choices;
  EXPECT_THAT(
      SeriesOf(MakeDiagram(DiagramKind::magnitude, {&inside}, choices), SeriesRole::sidelobe).x,
      IsEmpty())
      << "the points end below them";
  record.passband.At(21, 1) = "12";
  record.passband.At(21, 2) = ".5";
  const FitCurves curves = Curves(record);
  ASSERT_FALSE(curves.sidelobes.empty());
  const SidelobePeak& peak = curves.sidelobes[0];
  for (const bool isPlain : {false, true}) {
    choices.showsPlainMagnitude = isPlain;
    const Diagram diagram = MakeDiagram(DiagramKind::magnitude, {&curves}, choices);
    const Series& marks = SeriesOf(diagram, SeriesRole::sidelobe);
    ASSERT_FALSE(marks.x.empty());
    EXPECT_EQ(marks.x[0], peak.megahertz);
    const double input = isPlain ? 1 : curves.h->Inputs({peak.megahertz})[0];
    EXPECT_NEAR(marks.y[0], 20 * std::log10(input * peak.magnitude), 1e-9);
  }
}

TEST(Diagrams, AreReadOutAtEachStop) {
  FitCurves typed = Curves(ExampleRecord("Ex-Zpair.1"));
  FitCurves result = Curves(ExampleRecord("Ex-Zpair.1", "8=.5 .5 .4 .35"));
  result.name = "result";
  ResponseRecord none = ExampleRecord("Ex-Zpair.1");
  none.nFreqPoints = 0;
  const FitCurves alone = Curves(none);
  const auto figure = [](double value, int digits) { return Figure(value, digits); };
  struct Case {
    DiagramKind kind;
    ShownCurves shown;
    std::size_t stop;
    std::string text;
  };
  const double at = alone.megahertz[40];
  const std::vector<double> twelfth = {5.5};
  const StepResponse& step = typed.step;
  const Case cases[] = {
      {DiagramKind::phase,
       {&typed, &result},
       11,
       "row 12: 5.5 MHz, typed " + figure(typed.h->Phases(twelfth)[0], 5) + " degrees, result " +
           figure(result.h->Phases(twelfth)[0], 5) + " degrees"},
      {DiagramKind::delay,
       {&typed},
       11,
       "row 12: 5.5 MHz, typed " + TimeText(typed.h->GroupDelays(twelfth)[0])},
      {DiagramKind::step,
       {&typed},
       50,
       TimeText(step.nanoseconds[50]) + ", typed " + figure(step.values[50], 4)},
      {DiagramKind::magnitude,
       {&alone},
       40,
       FrequencyText(at) + ", typed " + DecibelFigure(20 * std::log10(alone.magnitude[40])) +
           " dB"}};
  for (const Case& each : cases) {
    const Diagram diagram = MakeDiagram(each.kind, each.shown, {});
    ASSERT_LT(each.stop, diagram.stops.size()) << each.text;
    EXPECT_EQ(StopText(diagram, each.stop, each.shown, {}), each.text);
    const auto line = std::ranges::find(diagram.series, each.shown.back()->name, &Series::name);
    if (line == diagram.series.end()) continue;
    EXPECT_LE(diagram.stops[each.stop].y, std::ranges::max(line->y)) << "the ring is on the curve";
    EXPECT_GE(diagram.stops[each.stop].y, std::ranges::min(line->y));
  }
}

TEST(Diagrams, TellOfTheCurvesThatAreSeen) {
  const FitCurves typed = Curves(ExampleRecord("Ex-Delay.101"));
  FitCurves result = Curves(ExampleRecord("Ex-Delay.101", "8=.23 .3 .34; 9=.95 .67 .3"));
  result.role = CurveRole::result;
  result.name = "result 19:40";
  FitCurves other = Curves(ExampleRecord("Ex-Delay.101", "8=.9 .9 .9"));
  other.role = CurveRole::other;
  other.name = "a run";
  const ShownCurves shown = {&typed, &result, &other};
  const auto note = [](const ShownCurves& curves) {
    return MakeDiagram(DiagramKind::error, curves, {}).note;
  };
  EXPECT_EQ(note(shown), note({&result})) << "an earlier run is there to compare with";
  const Diagram errors = MakeDiagram(DiagramKind::error, shown, {});
  EXPECT_EQ(errors.series[2].role, SeriesRole::result) << "the last line has the marks";
  other.passband.yout[3] = .5;
  EXPECT_THAT(StopText(errors, 3, shown, {}), Not(ContainsRegex("a run [^,]*, error")))
      << "against other wanted values";
  EXPECT_THAT(StopText(errors, 4, shown, {}), ContainsRegex("a run [^,]*, error"));
  const Diagram step = MakeDiagram(DiagramKind::step, shown, {});
  const auto steps = StopTexts(step, 9, shown, {});
  EXPECT_THAT(steps[0], HasSubstr("typed"));
  EXPECT_THAT(steps.back(), ContainsRegex("ns, result 19:40 [^,]*$"));
  DiagramChoices choices;
  choices.hidden = {result.name};
  const Diagram upper = MakeDiagram(DiagramKind::magnitude, shown, choices);
  EXPECT_THAT(upper.sentence, StartsWith("wanted, typed and a run, 0 to 10 MHz, worst error 6.66"));
  EXPECT_THAT(StopText(upper, 3, shown, choices), Not(HasSubstr("result")));
  choices.showsPlainMagnitude = true;
  std::vector<std::string> names;
  for (const Series& line : MakeDiagram(DiagramKind::magnitude, shown, choices).series) {
    if (line.role == SeriesRole::plainMagnitude) names.push_back(line.name);
  }
  EXPECT_THAT(names, ElementsAre("typed, |H| alone")) << "one grey line";
  choices.showsPlainMagnitude = false;
  const Diagram poles = MakeDiagram(DiagramKind::poles, shown, choices);
  EXPECT_EQ(SeriesOf(poles, SeriesRole::poles).x,
            SeriesOf(MakeDiagram(DiagramKind::poles, {&typed}, {}), SeriesRole::poles).x);
  for (const Stop& stop : poles.stops) EXPECT_NE(stop.curve, 1U);
  const Diagram delay = MakeDiagram(DiagramKind::delay, shown, {});
  EXPECT_THAT(StopText(delay, 0, shown, {}), HasSubstr("result 19:40, H "));
}

TEST(MagnitudeDiagram, NamesFrequenciesOfAllSizes) {
  for (const auto& [lowest, words] : {std::pair("0.001", ", 1 kHz to 3 GHz, "),
                                      {"0", ", 0 to 3 GHz, "},
                                      {"500", ", 0.5 to 3 GHz, "}}) {
    ResponseRecord record = ExampleRecord("Ex-Yzero.101");
    record.passband.At(1, 1) = lowest;
    record.passband.At(2, 1) = "700";
    for (int row = 3; row <= 21; ++row) record.passband.At(row, 1) = "3000";
    const FitCurves curves = Curves(record);
    const ShownCurves shown = {&curves};
    EXPECT_THAT(MakeDiagram(DiagramKind::magnitude, shown, {}).sentence, HasSubstr(words));
  }
}

TEST(StopTexts, TellLessAndLessAndAtLastOfTheLastCurveAlone) {
  const FitCurves typed = Curves(ExampleRecord("Ex-Delay.101"));
  FitCurves result = Curves(ExampleRecord("Ex-Delay.101", "8=.23 .3 .34"));
  result.name = "result 13:00";
  const ShownCurves shown = {&typed, &result};
  for (const auto& [kind, count] : {std::pair(DiagramKind::magnitude, 3U),
                                    {DiagramKind::error, 3U},
                                    {DiagramKind::delay, 2U},
                                    {DiagramKind::poles, 1U}}) {
    const Diagram diagram = MakeDiagram(kind, shown, {});
    const std::vector<std::string> texts = StopTexts(diagram, 3, shown, {});
    ASSERT_EQ(texts.size(), count);
    EXPECT_EQ(texts[0], StopText(diagram, 3, shown, {}));
    for (std::size_t i = 1; i < count; ++i) {
      EXPECT_LT(texts[i].size(), texts[i - 1].size());
      EXPECT_EQ(texts[i].find("typed"), std::string::npos);
      const std::string end = ", error ";
      EXPECT_EQ(texts[i].substr(texts[i].rfind(end)), texts[0].substr(texts[0].rfind(end)));
    }
  }
}

TEST(ErrorDiagram, NamesTheWorstRow) {
  const FitCurves curves = Curves(ExampleRecord("Ex-Delay.101"));
  const Diagram diagram = MakeDiagram(DiagramKind::error, {&curves}, {});
  EXPECT_EQ(diagram.note, "6.66 dB, 9.5 MHz, row 20");
  EXPECT_THAT(SeriesOf(diagram, SeriesRole::worst).x, ElementsAre(9.5));
  EXPECT_EQ(diagram.y.from, -diagram.y.to);
}

TEST(ErrorDiagram, HasTheScaleOfTheLastCurve) {
  const FitCurves typed = Curves(ExampleRecord("Ex-Delay.101"));
  FitCurves result = Curves(ExampleRecord("Ex-Yzero.102"));
  result.name = "result";
  const Diagram diagram = MakeDiagram(DiagramKind::error, {&typed, &result}, {});
  EXPECT_NEAR(diagram.y.to, 1.15 * std::abs(SeriesOf(diagram, SeriesRole::worst).y[0]), .3);
}

TEST(ErrorDiagram, LeadsOnlyToRowsThatTheTableStillHas) {
  const FitCurves result = Curves(ExampleRecord("Ex-Delay.101"));
  ResponseRecord fewer = ExampleRecord("Ex-Delay.101");
  fewer.nFreqPoints = 5;
  fewer.passband.At(2, 1) = ".6";
  const FitCurves typed = Curves(fewer);
  const ShownCurves shown = {&typed, &result};
  const Diagram diagram = MakeDiagram(DiagramKind::error, shown, {});
  ASSERT_EQ(diagram.stops.size(), 4U) << "but the one that was moved";
  EXPECT_EQ(diagram.stops[1].index, 2U);
  for (std::size_t i = 0; i < 4; ++i)
    EXPECT_THAT(StopText(diagram, i, shown, {}), HasSubstr("row"));
}

TEST(DelayDiagram, ShowsTotalAndConstant) {
  const FitCurves curves = Curves(ExampleRecord("Ex-Delay.101"));
  const Diagram diagram = MakeDiagram(DiagramKind::delay, {&curves}, {});
  EXPECT_EQ(SeriesOf(diagram, SeriesRole::wanted).x.size(), 17U);
  EXPECT_NEAR(SeriesOf(diagram, SeriesRole::constant).y[0], curves.h->DelayConstant(), 1e-9);
  EXPECT_THAT(diagram.sentence, StartsWith("group delay, T0 172.61 ns, ripple 22.8"));
}

TEST(PoleDiagram, NamesEachLocationAndItsBounds) {
  const FitCurves curves = Curves(ExampleRecord("Ex-Delay.101"));
  const ShownCurves shown = {&curves};
  const Diagram diagram = MakeDiagram(DiagramKind::poles, shown, {});
  EXPECT_TRUE(diagram.hasEqualScales);
  ASSERT_EQ(diagram.frames.size(), 2U);
  EXPECT_EQ(diagram.frames[0].top, 3);
  EXPECT_EQ(diagram.frames[1].right, .05);
  // Three pairs and the lossless zero's own pole; the held zero and the sigma zero.
  EXPECT_EQ(SeriesOf(diagram, SeriesRole::poles).x.size(), 4U);
  EXPECT_EQ(SeriesOf(diagram, SeriesRole::zeros).x.size(), 2U);
  EXPECT_EQ(StopText(diagram, 1, shown, {}), "pair 2: -0.4 + j0.7, 8.062 MHz, Q 1.01");
}

TEST(PoleDiagram, LeadsToImagesAndOwnPolesToo) {
  const auto texts = [](const ResponseRecord& record) {
    const FitCurves curves = Curves(record);
    const ShownCurves shown = {&curves};
    const Diagram diagram = MakeDiagram(DiagramKind::poles, shown, {});
    std::vector<std::string> all;
    for (std::size_t i = 0; i < diagram.stops.size(); ++i) {
      all.push_back(Figure(diagram.stops[i].x, 3) + " " + StopText(diagram, i, shown, {}));
    }
    return all;
  };
  const auto lossless = texts(ExampleRecord("Ex-Delay.101"));
  EXPECT_THAT(lossless, Contains("0.5 sigma zero: 0.5, 5 MHz"));
  EXPECT_THAT(lossless, Contains("-0.5 own pole of the sigma zero: -0.5, 5 MHz"));
  const auto quad = texts(ExampleRecord("Ex-Zpair.1", "11=0 0 1; 11b=.3; 11c=1.4"));
  for (const char* const side : {"-0.3", "0.3"}) {
    EXPECT_THAT(quad, Contains(StartsWith(std::string(side) + " zero quad 1: \u00b10.3 + j1.4")));
  }
}

TEST(PoleDiagram, IsAsLargeAsWhatItShows) {
  const FitCurves near = Curves(
      ExampleRecord("Ex-Delay.101", "8=.02 .03 .01; 9=.01 .02 .03; 10=N; 11=0 0 0; 13=.001"));
  const FitCurves usual = Curves(ExampleRecord("Ex-Delay.101"));
  const Diagram small = MakeDiagram(DiagramKind::poles, {&near}, {});
  EXPECT_LT(small.y.to, .1) << "low-pass far below the frequency norm";
  EXPECT_LT(small.x.to - small.x.from, .2);
  EXPECT_GT(MakeDiagram(DiagramKind::poles, {&usual}, {}).y.to, 1.1);
}

TEST(StepDiagram, HasItsCurvesOverTheSameTime) {
  const FitCurves slow = Curves(ExampleRecord("Ex-Zpair.1", "8=.05 .4 .3 .2"));
  const FitCurves quick = Curves(ExampleRecord("Ex-Zpair.1"));
  const Diagram diagram = MakeDiagram(DiagramKind::step, {&quick, &slow}, {});
  ASSERT_EQ(diagram.series.size(), 2U);
  EXPECT_NEAR(diagram.series[0].x.back() / diagram.series[1].x.back(), 1, 1e-9);
}

TEST(CurveTable, HasACellForEachFigureAndNoneWhereNothingIsDrawn) {
  FitCurves curves = Curves(ExampleRecord("Ex-Zpair.1"));
  const std::string text = CurvesAsCsv({&curves});
  EXPECT_THAT(text, StartsWith("MHz,typed |H|,typed Yin*|H|,typed delay ns,typed phase deg\n0,"));
  const std::string last = text.substr(text.rfind('\n', text.size() - 2) + 1);
  EXPECT_THAT(last, StartsWith("30,"));
  EXPECT_THAT(last, HasSubstr(",,")) << "beyond the points there is no Yin |H|";
  curves.name = "1,5 \"MHz\"";
  EXPECT_THAT(CurvesAsCsv({&curves}), StartsWith("MHz,\"1,5 \"\"MHz\"\" |H|\",\"1,5"));
}

}  // namespace
}  // namespace polefit::testing
