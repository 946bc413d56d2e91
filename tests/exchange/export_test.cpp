#include "exchange/export.h"

#include <gmock/gmock.h>

#include <Eigen/Dense>
#include <cmath>
#include <complex>
#include <functional>
#include <map>
#include <nlohmann/json.hpp>
#include <numbers>
#include <regex>
#include <sstream>

#include "solver/example_problem.h"
#include "solver/model/model.h"

namespace polefit::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;
using Complex = std::complex<double>;
/// H at a frequency in Hz.
using Response = std::function<Complex(double)>;

struct Filter {
  const char* name;
  const char* answers;
};

const Filter kFilters[] = {
    {"as the example", ""},
    {"10 pairs, 1 GHz",
     "5=1000;6=0 10;8=.5 .5 .5 .45 .4 .35 .3 .2 .1 .05;"
     "9=.1 .2 .3 .4 .5 .6 .7 .8 .9 1;11=0 0 0;12=2.5"},
    {"high Q, 1 kHz", "5=.001;6=1 2;7=.3;8=1e-6 .00001;9=1 .5;11=1 0 0;11a=1.0000001;13=1e-7"},
    {"zeros at the poles", "6=0 2;8=.2 .3;9=.7 .9;11=0 2 0;11b=.2 .3;11c=.7 .9"},
    {"lossless doublet", "6=1 1;7=.4;8=.3;9=.8;10=Y;10a=.6;10b=Y;10c=Y;11=0 0 0"},
    {"lossless zero", "6=0 1;8=.3;9=.8;10=Y;10a=-.6;10c=Y;11=1 0 0;11a=1.5"},
    {"doublet over a pair", "6=0 1;8=.3;9=.8;10=Y;10a=.6;10b=Y;11=0 0 0"},
    {"quads on sigma poles", "6=4 0;7=.2 .9 1.4 .5;11=0 0 1;11b=.3;11c=1.1"},
    {"right half plane", "6=1 1;7=1;8=.1;9=1;10=Y;10a=-.7;11=0 1 0;11b=-.2;11c=1.3;12=-3"},
    {"all kinds",
     "6=3 4;7=.3 .7 1.1;8=.5 .4 .3 .2;9=.2 .5 .8 1.1;10=Y;10a=.9;11=1 1 1;"
     "11a=2;11b=.2 -.4;11c=1.4 1.7"},
};

/// H(s) of the answers, factor by factor as the model's table has them.
Complex Formula(const ResponseRecord& record, double hertz) {
  const auto list = [&record](int slot) {
    std::istringstream words(record.Slot(slot));
    return std::vector<double>(std::istream_iterator<double>(words), {});
  };
  const Complex s(0, hertz / (list(slot::kFreqNorm)[0] * 1e6));
  const auto pair = [s](double a, double b) {
    return (s + a - Complex(0, b)) * (s + a + Complex(0, b)) / (a * a + b * b);
  };
  const std::vector<double> poles = list(slot::kNPoles);
  const std::vector<double> zeros = list(slot::kZeroCounts);
  Complex h = std::abs(list(slot::kGain)[0]);
  for (int i = 0; i < poles[0]; ++i) h /= 1.0 + s / list(slot::kSigmaPoles)[i];
  for (int i = 0; i < poles[1]; ++i) h /= pair(list(slot::kPoleReal)[i], list(slot::kPoleImag)[i]);
  if (record.Slot(slot::kSigmaZeroWanted) == "Y") {
    const bool isDoublet = record.Slot(slot::kDoublet) == "Y";
    const bool isLossless = record.Slot(slot::kLossless) == "Y";
    const double typed = list(slot::kSigmaZero)[0];
    const double v = isLossless ? std::abs(typed) : typed;
    const Complex allPass = (v - s) / (v + s);
    h *= isLossless ? (isDoublet ? allPass * allPass : allPass)
                    : (isDoublet ? 1.0 - s * s / (v * v) : 1.0 + s / v);
  }
  for (int i = 0; i < zeros[0]; ++i) h *= pair(0, list(slot::kYzero)[i]);
  for (int i = 0; i < zeros[1] + zeros[2]; ++i) {
    const double a = list(slot::kZreal)[i];
    h *= pair(a, list(slot::kZimag)[i]);
    if (i >= zeros[1]) h *= pair(-a, list(slot::kZimag)[i]);
  }
  return h;
}

/// All numbers in a text.
std::vector<double> Numbers(const std::string& text) {
  static const std::regex number(R"([-+]?(\d+\.?\d*|\.\d+)(e[-+]?\d+)?)");
  std::vector<double> numbers;
  for (std::sregex_iterator i(text.begin(), text.end(), number), end; i != end; ++i) {
    numbers.push_back(std::stod(i->str()));
  }
  return numbers;
}

/// The text from behind `begin` to the next `end`.
std::string Between(const std::string& text, const std::string& begin, const std::string& end) {
  const std::size_t at = text.find(begin);
  EXPECT_NE(at, std::string::npos) << begin;
  const std::size_t from = at + begin.size();
  return text.substr(from, text.find(end, from) - from);
}

Complex S(double hertz) {
  return {0, 2 * std::numbers::pi * hertz};
}

/// The product of (b2 s^2 + b1 s + b0) / (a2 s^2 + a1 s + a0), six numbers each.
Response Sections(const std::vector<double>& numbers) {
  return [numbers](double hertz) {
    const Complex s = S(hertz);
    Complex h = 1;
    for (std::size_t i = 0; i + 5 < numbers.size(); i += 6) {
      const double* const c = &numbers[i];
      h *= ((c[0] * s + c[1]) * s + c[2]) / ((c[3] * s + c[4]) * s + c[5]);
    }
    return h;
  };
}

/// gain * product of (s - zero) / product of (s - pole); two numbers a root.
Response Roots(const std::vector<double>& zeros, const std::vector<double>& poles, double gain) {
  return [=](double hertz) {
    Complex h = gain;
    for (std::size_t i = 0; i + 1 < std::max(zeros.size(), poles.size()); i += 2) {
      if (i < zeros.size()) h *= S(hertz) - Complex(zeros[i], zeros[i + 1]);
      if (i < poles.size()) h /= S(hertz) - Complex(poles[i], poles[i + 1]);
    }
    return h;
  };
}

Response SpiceResponse(const std::string& text) {
  std::vector<double> normalised;
  const std::regex model(
      R"(num_coeff=\[(.*)\]\n\+ den_coeff=\[(.*)\]\n.*denormalized_freq=(\S+)\))");
  double unit = 0;
  for (std::sregex_iterator i(text.begin(), text.end(), model), end; i != end; ++i) {
    for (const int polynomial : {1, 2}) {
      const std::vector<double> numbers = Numbers((*i)[polynomial].str());
      if (numbers.size() == 2) normalised.push_back(0);
      normalised.insert(normalised.end(), numbers.begin(), numbers.end());
    }
    unit = std::stod((*i)[3].str());
  }
  const Response sections = Sections(normalised);
  return [=](double hertz) { return sections(hertz / unit); };
}

Response LaplaceResponse(const std::string& text) {
  std::vector<double> numbers;
  const std::regex element(R"(LAPLACE \{V\(\w+,ref\)\} = \{(.*)\})");
  for (std::sregex_iterator i(text.begin(), text.end(), element), end; i != end; ++i) {
    const std::vector<double> section = Numbers((*i)[1].str());
    numbers.insert(numbers.end(), section.begin(), section.end());
  }
  return Sections(numbers);
}

/// Modified nodal analysis of a netlist of R, L, C and E elements, 1 V at the node "in".
Complex Solve(const std::string& netlist, double hertz) {
  std::map<std::string, int> nodes = {{"ref", -1}};
  std::vector<std::vector<std::string>> elements;
  std::istringstream lines(netlist);
  for (std::string line; std::getline(lines, line);) {
    std::istringstream stream(line);
    std::vector<std::string> words(std::istream_iterator<std::string>(stream), {});
    for (std::size_t i = 1; i < (words[0][0] == 'E' ? 5U : 3U); ++i) {
      nodes.try_emplace(words[i], static_cast<int>(nodes.size()) - 1);
    }
    elements.push_back(words);
  }
  const auto count = static_cast<int>(nodes.size()) - 1;
  const auto size = count + 1 + static_cast<int>(elements.size());
  Eigen::MatrixXcd matrix = Eigen::MatrixXcd::Zero(size, size);
  Eigen::VectorXcd sources = Eigen::VectorXcd::Zero(size);
  const auto add = [&](int row, int column, Complex value) {
    if (row >= 0 && column >= 0) matrix(row, column) += value;
  };
  int branch = count;
  add(branch, nodes.at("in"), 1);
  add(nodes.at("in"), branch, 1);
  sources(branch) = 1;
  for (const std::vector<std::string>& words : elements) {
    const int plus = nodes.at(words[1]);
    const int minus = nodes.at(words[2]);
    ++branch;
    add(plus, branch, 1);
    add(minus, branch, -1);
    add(branch, plus, 1);
    add(branch, minus, -1);
    if (words[0][0] == 'E') {
      add(branch, nodes.at(words[3]), -std::stod(words[5]));
      add(branch, nodes.at(words[4]), std::stod(words[5]));
      continue;
    }
    const double value = Numbers(words[3])[0];
    add(branch, branch,
        words[0][0] == 'R'   ? -1e3 * value
        : words[0][0] == 'L' ? -1e3 * value * S(hertz)
                             : -1.0 / (value / 1e3 * S(hertz) + 1e-300));
  }
  return matrix.partialPivLu().solve(sources)(nodes.at("out"));
}

Response NetworkResponse(const std::string& text) {
  std::istringstream lines(Between(text, ".param z0=1k\n", ".ends"));
  std::string netlist;
  for (std::string line; std::getline(lines, line);) {
    if (line[0] != '*') netlist += line + "\n";
  }
  return [netlist](double hertz) { return Solve(netlist, hertz); };
}

Response TableResponse(const std::string& text, double gain) {
  std::vector<double> zeros;
  std::vector<double> poles;
  std::istringstream rows(Between(text, "imag_MHz,Q\n", "end"));
  Complex constant = gain;
  for (std::string row; std::getline(rows, row);) {
    const bool isPole = row.find("pole") != std::string::npos;
    const std::vector<double> cells = Numbers(row);
    const Complex root(cells[2], cells[3]);
    constant = isPole ? constant * -root : constant / -root;
    (isPole ? poles : zeros).insert((isPole ? poles : zeros).end(), {cells[2], cells[3]});
  }
  return Roots(zeros, poles, constant.real());
}

Response JsonResponse(const std::string& text) {
  const auto object = nlohmann::json::parse(text);
  std::vector<double> zeros;
  std::vector<double> poles;
  for (const auto& root : object["zeros"]) zeros.insert(zeros.end(), {root[0], root[1]});
  for (const auto& root : object["poles"]) poles.insert(poles.end(), {root[0], root[1]});
  EXPECT_EQ(object["unit"], "rad/s");
  return Roots(zeros, poles, object["gain"]);
}

Export Exported(const ResponseRecord& record, const char* word, bool atDataPoints = false) {
  return ExportResult(record, {*ExportFormatOf(word), atDataPoints, "my\nfile.1", "today"});
}

/// The largest difference to the formula at `count` frequencies, in parts of the peak.
double LargestError(const ResponseRecord& record, const Response& response, int count = 200) {
  double largest = 0;
  double peak = 0;
  const double norm = std::stod(record.Slot(slot::kFreqNorm)) * 1e6;
  for (int i = 0; i < count; ++i) {
    const double hertz = norm * (i % 10 == 0 ? .7 + i * .6 / count : 3.0 * i / count);
    const Complex wanted = Formula(record, hertz);
    const double error = std::abs(response(hertz) - wanted);
    if (!std::isfinite(error)) return error;
    largest = std::max(largest, error);
    peak = std::max(peak, std::abs(wanted));
  }
  return largest / peak;
}

TEST(Export, EveryFormatGivesTheSameResponse) {
  for (const Filter& filter : kFilters) {
    SCOPED_TRACE(filter.name);
    const ResponseRecord record = ExampleRecord("Ex-Yzero.101", filter.answers);
    const auto text = [&record](const char* word) { return Exported(record, word).text; };
    const double gain = std::abs(std::stod(record.Slot(slot::kGain)));
    const std::string python = text("scipy");
    const std::string matlab = text("matlab");
    const std::pair<const char*, Response> responses[] = {
        {"scipy sections", Sections(Numbers(Between(python, "sections = np.array(", "])")))},
        {"scipy roots", Roots(Numbers(Between(python, "zeros = np.array([", "]")),
                              Numbers(Between(python, "poles = np.array([", "]")),
                              std::stod(Between(python, "\ngain = ", "\n")))},
        {"matlab sections", Sections(Numbers(Between(matlab, "sections = [", "]")))},
        {"matlab roots", Roots(Numbers(Between(matlab, "zeros = [", "]")),
                               Numbers(Between(matlab, "poles = [", "]")),
                               std::stod(Between(matlab, "\ngain = ", ";")))},
        {"spice", SpiceResponse(text("spice"))},
        {"spice-laplace", LaplaceResponse(text("spice-laplace"))},
        {"csv", TableResponse(text("csv"), gain)},
        {"json", JsonResponse(text("json"))},
    };
    for (const auto& [format, response] : responses) {
      EXPECT_LT(LargestError(record, response), 1e-8) << format;
    }
    const std::string network = text("spice-rlc");
    EXPECT_LT(LargestError(record, NetworkResponse(network), 20), 1e-8);
    double former = 0;
    const std::regex quality("Q = ([^,]*),");
    for (std::sregex_iterator i(network.begin(), network.end(), quality), end; i != end; ++i) {
      const double q = std::stod((*i)[1].str());
      EXPECT_GE(q, former) << "the sections come with rising Q";
      former = q;
    }
  }
}

/// The rows of a text that are no comments, as numbers.
std::vector<std::vector<double>> Rows(const std::string& text) {
  std::vector<std::vector<double>> rows;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    if (std::isdigit(static_cast<unsigned char>(line[0])) != 0) rows.push_back(Numbers(line));
  }
  return rows;
}

TEST(Export, ATouchstoneFileHasTheResponseBothWays) {
  const ResponseRecord record = ExampleRecord("Ex-Delay.101");
  for (const bool atDataPoints : {false, true}) {
    const auto rows = Rows(Exported(record, "touchstone", atDataPoints).text);
    ASSERT_EQ(rows.size(), atDataPoints ? 21U : 401U);
    EXPECT_EQ(rows.back()[0], atDataPoints ? 10 : 30);
    for (const std::vector<double>& row : rows) {
      const Complex h = Formula(record, row[0] * 1e6);
      EXPECT_LT(std::abs(Complex(row[3], row[4]) - h), 1e-12);
      EXPECT_THAT(row, ElementsAre(row[0], 0, 0, row[3], row[4], row[3], row[4], 0, 0));
    }
  }
}

TEST(Export, TheCurvesAgreeWithTheFormula) {
  const ResponseRecord record = ExampleRecord("Ex-Delay.101");
  const std::string text = Exported(record, "csv-curves").text;
  const auto rows = Rows(text);
  ASSERT_EQ(rows.size(), 21U);
  double squares = 0;
  for (const std::vector<double>& row : rows) {
    const double hertz = row[0] * 1e6;
    const double obtained = row[1] * std::abs(Formula(record, hertz));
    EXPECT_NEAR(row[3], obtained, 1e-12);
    EXPECT_NEAR(row[4], obtained - row[2], 1e-12);
    squares += row[4] * row[4];
    const Complex turn = Formula(record, hertz + 10) / Formula(record, hertz - 10);
    const double delay = -std::arg(turn) / (2 * std::numbers::pi * 20) * 1e9;
    if (row[2] == 0) continue;  // the null: no dB, no phase
    EXPECT_NEAR(row[5], 20 * std::log10(obtained / row[2]), 1e-9);
    EXPECT_NEAR(row[6], delay, 1e-3);
  }
  EXPECT_EQ(rows.back().size(), 6U) << "no dB at the null";
  const double rms = std::stod(Between(text, "Rms error: ", " of"));
  EXPECT_NEAR(rms, std::sqrt(squares / 21), 1e-9);
}

TEST(Export, TheTableNamesEachLocation) {
  const ResponseRecord record = ExampleRecord("Ex-Yzero.101", kFilters[9].answers);
  const std::string table = Exported(record, "csv").text;
  for (const char* const row :
       {"\nsigma pole,-0.3,0,", "\npole pair,-0.5,0.2,", "\npole pair,-0.5,-0.2,",
        "\nsigma zero,-0.9,0,", "\nomega zero,0,2,", "\nzero pair,-0.2,1.4,",
        "\nzero quad,0.4,1.7,", "\nzero quad,-0.4,-1.7,"}) {
    EXPECT_THAT(table, HasSubstr(row));
  }
  EXPECT_THAT(Exported(ExampleRecord("Ex-Delay.101"), "csv").text,
              HasSubstr("\nlossless pole,-0.5,0,-31415926.5358979"));
}

TEST(Export, TheHeadCannotBeLeftByAFileName) {
  const ResponseRecord record = ExampleRecord("Ex-Yzero.101");
  for (const ExportFormatName& format : kExportFormats) {
    EXPECT_THAT(Exported(record, format.word.data()).text, HasSubstr("my?file.1")) << format.word;
  }
  EXPECT_THAT(Exported(record, "spice").text,
              AllOf(StartsWith("* H(s) found by Polefit: 8 poles, 6 zeros, gain 1 at 0 Hz\n"),
                    HasSubstr("* Date: today\n"), HasSubstr("* Freq Norm: 10 MHz = 62831853.07")));
}

TEST(Export, FaultyAnswersAreNamed) {
  const struct {
    const char* format;
    const char* answers;
    const char* fault;
  } faults[] = {
      {"scipy", "8=.5 .5 .4", "Question 8"},
      {"json", "12=", "Question 12"},
      {"csv", "5=x", "Question 5"},
      {"csv", "8=;9=", "Question 8"},
      {"csv", "11a=", "Question 11a"},
      {"spice", "8=0 .5 .4 .3", "Question 8: a pole pair with real part 0"},
      {"spice", "6=1 0;7=0;11=0 0 0", "Question 7: a pole at 0"},
      {"csv-curves", "2=x", "Question 2"},
      {"matlab",
       "6=40 0;11=0 0 0;5=100000;7=1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 "
       "1 1 1 1 1 1 1 1 1 1 1 1 1 1",
       "too large for a number"},
  };
  for (const auto& [format, answers, fault] : faults) {
    const Export exported = Exported(ExampleRecord("Ex-Yzero.101", answers), format);
    EXPECT_EQ(exported.text, "");
    ASSERT_FALSE(exported.faults.empty()) << answers;
    EXPECT_THAT(exported.faults[0], HasSubstr(fault));
  }
  const ResponseRecord withoutPoints = ExampleRecord("Ex-Yzero.101", "2=x");
  EXPECT_THAT(Exported(withoutPoints, "touchstone").text, HasSubstr("Rms error: unknown"));
}

}  // namespace
}  // namespace polefit::testing
