#include "bench/families/families.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <numbers>
#include <random>

#include "base/text_format.h"
#include "bench/families/record_builder.h"

namespace polefit::families {

namespace {

/// Where a response is sampled, normalised, ends included.
struct Grid {
  double end;
  int rows;
};
constexpr Grid kLowPass = {2, 41};
constexpr Grid kWithStopband = {3, 61};
constexpr Grid kToFirstNull = {1, 41};

std::vector<Sample> SamplesOf(const Grid& grid, const std::function<double(double)>& magnitude) {
  std::vector<Sample> samples;
  for (int i = 0; i < grid.rows; ++i) {
    const double w = grid.end * i / (grid.rows - 1);
    samples.push_back({w, 1, magnitude(w)});
  }
  return samples;
}

FamilyProblem Sampled(const std::string& family, const std::string& name, const Filter& filter,
                      const Grid& grid, const Units& units = {}) {
  FamilyProblem problem = {family, name, Truth::poles, {}, filter, 0};
  const auto magnitude = [&filter](double w) { return filter.MagnitudeAt(w); };
  problem.record = MakeRecord(CountsOf(filter), SamplesOf(grid, magnitude), units);
  return problem;
}

using Design = std::function<Filter(int)>;

void AddOrders(const std::string& family, int from, int to, const Design& design, const Grid& grid,
               std::vector<FamilyProblem>& problems) {
  for (int order = from; order <= to; ++order) {
    problems.push_back(
        Sampled(family, Format("%s %d", family.c_str(), order), design(order), grid));
  }
}

void AddLowPasses(std::vector<FamilyProblem>& problems) {
  AddOrders("Butterworth", 2, 10, Butterworth, kLowPass, problems);
  AddOrders(
      "Chebyshev", 2, 10, [](int order) { return Chebyshev(order, 0.5); }, kLowPass, problems);
  AddOrders("Bessel", 2, 10, Bessel, kLowPass, problems);
  AddOrders(
      "inverse Chebyshev", 3, 10, [](int order) { return InverseChebyshev(order, 40); },
      kWithStopband, problems);
  AddOrders(
      "elliptic", 3, 10, [](int order) { return Elliptic(order, 0.5, 50); }, kWithStopband,
      problems);
}

/// Freq Norm is the first null, and nothing is known beyond it.
void AddEqualised(std::vector<FamilyProblem>& problems) {
  for (const int order : {5, 7, 9}) {
    for (const bool isElliptic : {true, false}) {
      const Filter filter = isElliptic ? Elliptic(order, 0.5, 50) : InverseChebyshev(order, 40);
      double first = std::numeric_limits<double>::infinity();
      for (const auto& zero : filter.zeros) first = std::min(first, zero.imag());
      FamilyProblem problem = Sampled(
          "equal sidelobes", Format(isElliptic ? "elliptic %d =" : "inverse Chebyshev %d =", order),
          filter.Scaled(1 / first), kToFirstNull);
      problem.truth = Truth::equalised;
      HoldFirstNull(problem.record);
      problems.push_back(problem);
    }
  }
}

void AddFlatDelays(std::vector<FamilyProblem>& problems) {
  for (int order = 3; order <= 8; ++order) {
    for (const bool isBessel : {true, false}) {
      const Filter filter = isBessel ? Bessel(order) : Chebyshev(order, 0.5);
      FamilyProblem problem =
          Sampled("flat delay", Format(isBessel ? "Bessel %d flat" : "Chebyshev %d flat", order),
                  filter, kLowPass);
      AddDelayRows(
          problem.record, [&filter](double w) { return filter.DelayAt(w); }, 1.2, 25);
      problems.push_back(problem);
    }
  }
}

/// Pole pairs with their mirror images as zeros: delay without magnitude.
void AddAllPasses(std::vector<FamilyProblem>& problems) {
  using Root = std::complex<double>;
  const std::vector<std::vector<Root>> sections = {
      {{-.6, .5}}, {{-.3, .8}}, {{-.5, .3}, {-.35, .9}}, {{-.7, .2}, {-.4, 1}}};
  for (const std::vector<Root>& poles : sections) {
    Filter filter = {poles, {}};
    for (const Root& pole : poles) filter.zeros.push_back(-std::conj(pole));
    FamilyProblem problem =
        Sampled("all-pass", Format("all-pass %zu (%.1f)", 2 * poles.size(), -poles[0].real()),
                filter, kLowPass);
    AddDelayRows(
        problem.record, [&filter](double w) { return filter.DelayAt(w); }, 1.5, 31);
    problems.push_back(problem);
  }
}

/// A filter in front of which an amplifier stands: its poles become zeros.
void AddAmplifiers(std::vector<FamilyProblem>& problems) {
  for (const int order : {4, 6}) {
    for (const bool hasPair : {true, false}) {
      const Filter amplifier = hasPair ? Butterworth(2).Scaled(.8) : RealPoles({.6});
      Filter filter = Bessel(order);
      filter.zeros = amplifier.poles;
      FamilyProblem problem = {
          "amplifier",  Format(hasPair ? "pair to Bessel %d" : "pole to Bessel %d", order),
          Truth::poles, {},
          filter,       0};
      const Filter whole = Bessel(order);
      std::vector<Sample> samples;
      for (int i = 0; i < kLowPass.rows; ++i) {
        const double w = kLowPass.end * i / (kLowPass.rows - 1);
        samples.push_back({w, amplifier.MagnitudeAt(w), whole.MagnitudeAt(w)});
      }
      problem.record = MakeRecord(CountsOf(filter), samples, {});
      problems.push_back(problem);
    }
  }
}

void AddRealPoles(std::vector<FamilyProblem>& problems) {
  const std::vector<std::vector<double>> networks = {
      {.4, 1.1}, {.2, .7, 1.5}, {.1, .3, .9, 2.5}, {.08, .2, .5, 1.2, 3}};
  for (const std::vector<double>& poles : networks) {
    problems.push_back(
        Sampled("real poles", Format("%zu real poles", poles.size()), RealPoles(poles), {3, 61}));
  }
}

void AddUnits(std::vector<FamilyProblem>& problems) {
  const std::vector<std::pair<const char*, Units>> scales = {{"3.4 kHz", {.0034, 1}},
                                                             {"2.4 GHz", {2400, 1}},
                                                             {"Yout 4e-5", {10, 4e-5}},
                                                             {"Yout 1e6", {10, 1e6}}};
  for (const auto& [name, units] : scales) {
    problems.push_back(
        Sampled("units", Format("Chebyshev 5, %s", name), Chebyshev(5, 0.5), kLowPass, units));
    problems.push_back(Sampled("units", Format("elliptic 5, %s", name), Elliptic(5, 0.5, 50),
                               kWithStopband, units));
  }
}

void AddHighQ(std::vector<FamilyProblem>& problems) {
  problems.push_back(Sampled("high Q", "Q 20 and 50", {{{-.01, .4}, {-.009, .9}}, {}}, {2, 201}));
  problems.push_back(
      Sampled("high Q", "Q 30 and a zero", {{{-.015, .9}, {-.4, .5}}, {{0, 1.2}}}, {2, 201}));
  problems.push_back(Sampled("high Q", "Chebyshev 6, 3 dB", Chebyshev(6, 3), {2, 81}));
}

/// A response by formula, to be approximated by a filter of these counts.
struct Wanted {
  const char* name;
  std::function<double(double)> magnitude;
  Counts counts;
  Grid grid;
  double cost;  ///< the least of long runs with other starts
};

double RaisedCosine(double w) {
  constexpr double kRollOff = 0.35;
  const double edge = 1 / (1 + kRollOff);
  const double low = edge * (1 - kRollOff);
  if (w <= low) return 1;
  return w >= 1 ? 0 : (1 + std::cos(std::numbers::pi * (w - low) / (1 - low))) / 2;
}

double Gaussian(double w) {
  return std::exp2(-w * w / 2);
}

double Cable(double w) {
  return std::exp(-1.2 * std::sqrt(w));
}

double Pulse(double w) {
  const double x = std::numbers::pi * w;
  return w == 0 ? 1 : std::abs(std::sin(x) / x);
}

}  // namespace

std::vector<FamilyProblem> TextbookProblems() {
  std::vector<FamilyProblem> problems;
  AddLowPasses(problems);
  AddEqualised(problems);
  AddFlatDelays(problems);
  AddAllPasses(problems);
  AddAmplifiers(problems);
  AddRealPoles(problems);
  AddUnits(problems);
  AddHighQ(problems);
  return problems;
}

std::vector<FamilyProblem> Approximations() {
  const std::vector<Wanted> wanted = {
      {"raised cosine 6", RaisedCosine, {0, 3, 1, 0, 0}, {1.2, 49}, 2.8402640e-05},
      {"raised cosine 8", RaisedCosine, {0, 4, 2, 0, 0}, {1.4, 57}, 2.4435243e-06},
      {"raised cosine 4 and pair", RaisedCosine, {0, 4, 0, 1, 0}, {1, 41}, 2.7118403e-06},
      {"Gaussian 3", Gaussian, {1, 1, 0, 0, 0}, {2.5, 51}, 4.9516253e-05},
      {"Gaussian 5", Gaussian, {1, 2, 0, 0, 0}, {2.5, 51}, 1.0851817e-07},
      {"Gaussian 6", Gaussian, {0, 3, 0, 0, 0}, {2.5, 51}, 3.0164754e-09},
      {"cable 3", Cable, {3, 0, 0, 0, 0}, {2, 41}, 3.2337739e-03},
      {"cable 4", Cable, {4, 0, 0, 0, 0}, {2, 41}, 3.2494310e-03},
      {"cable 4 and pair", Cable, {4, 0, 0, 1, 0}, {2, 41}, 1.7666508e-04},
      {"cable of pairs", Cable, {1, 2, 0, 1, 0}, {2, 41}, 4.3969641e-05},
      {"pulse 4", Pulse, {0, 2, 1, 0, 0}, {1.5, 61}, 2.3069210e-06},
      {"pulse 6", Pulse, {0, 3, 2, 0, 0}, {2.5, 76}, 1.1854702e-06},
  };
  std::vector<FamilyProblem> problems;
  for (const Wanted& one : wanted) {
    problems.push_back({"approximations",
                        one.name,
                        Truth::approximation,
                        MakeRecord(one.counts, SamplesOf(one.grid, one.magnitude), {}),
                        {},
                        one.cost});
  }
  return problems;
}

std::vector<FamilyProblem> LargeProblems() {
  std::vector<FamilyProblem> problems;
  for (const int pairs : {15, 20}) {
    problems.push_back(Sampled("large", Format("Chebyshev %d pairs", pairs),
                               Chebyshev(2 * pairs, 0.5), {1.5, 8 * pairs + 1}));
  }
  return problems;
}

std::vector<FamilyProblem> NoisyProblems() {
  const std::vector<std::pair<const char*, Filter>> filters = {
      {"Chebyshev 5", Chebyshev(5, 0.5)},
      {"Butterworth 4", Butterworth(4)},
      {"elliptic 5", Elliptic(5, 0.5, 50)},
      {"inverse Chebyshev 6", InverseChebyshev(6, 40)},
      {"Bessel 6", Bessel(6)}};
  std::vector<FamilyProblem> problems;
  std::mt19937 random(7);
  for (const double level : {.001, .01}) {
    for (const auto& [name, filter] : filters) {
      FamilyProblem problem = {
          "noise", Format("%s, %g %%", name, 100 * level), Truth::noisy, {}, filter, 0};
      std::vector<Sample> samples =
          SamplesOf(kWithStopband, [&filter = filter](double w) { return filter.MagnitudeAt(w); });
      std::normal_distribution<double> noise(0, level);
      double squares = 0;
      double largest = 0;
      for (Sample& sample : samples) {
        const double error = std::max(noise(random), -sample.yout);
        sample.yout += error;
        squares += error * error;
        largest = std::max(largest, sample.yout);
      }
      problem.cost = squares / static_cast<double>(samples.size()) / (largest * largest);
      problem.record = MakeRecord(CountsOf(filter), samples, {});
      problems.push_back(problem);
    }
  }
  return problems;
}

std::vector<FamilyProblem> RandomProblems(int count, unsigned seed) {
  std::mt19937 generator(seed);
  const auto between = [&generator](double low, double high) {
    return std::uniform_real_distribution<double>(low, high)(generator);
  };
  std::vector<FamilyProblem> problems;
  for (int i = 0; i < count; ++i) {
    const int order = 3 + static_cast<int>(between(0, 9.999));
    Filter filter;
    for (int left = order; left > 0;) {
      const bool isSingle = left == 1 || between(0, 1) < .15;
      const double size = .05 * std::pow(16, between(0, 1));
      filter.poles.emplace_back(isSingle ? -between(.2, 1.5) : -size,
                                isSingle ? 0 : between(.05, 1.2));
      left -= isSingle ? 1 : 2;
    }
    for (int left = order; left >= 2 && between(0, 1) < .5;) {
      const double kind = between(0, 1);
      if (kind < .6) {
        filter.zeros.emplace_back(0, between(1.05, 2.5));
      } else {
        filter.zeros.emplace_back(-between(.1, .8), between(.2, 1.5));
      }
      left -= 2;
    }
    FamilyProblem problem = {"random", Format("random %d", i), Truth::magnitude, {}, filter, 0};
    std::vector<Sample> samples =
        SamplesOf(kWithStopband, [&filter](double w) { return filter.MagnitudeAt(w); });
    for (Sample& sample : samples) sample.yout = std::round(sample.yout * 1e5) / 1e5;
    problem.record = MakeRecord(CountsOf(filter), samples, {});
    problems.push_back(problem);
  }
  return problems;
}

double WorstPoleError(const Filter& filter, const std::vector<std::complex<double>>& found) {
  double worst = found.size() == filter.poles.size() ? 0 : 1;
  for (const std::complex<double>& pole : filter.poles) {
    double nearest = std::abs(pole);
    for (const std::complex<double>& other : found) {
      nearest = std::min(nearest, std::abs(other - pole));
    }
    worst = std::max(worst, nearest / std::abs(pole));
  }
  return worst;
}

}  // namespace polefit::families
