#include "base/expression.h"

#include <gmock/gmock.h>

#include <array>
#include <cmath>
#include <limits>
#include <string>

namespace polefit {
namespace {

constexpr std::array<std::string_view, 2> kVariables = {"f", "yin"};

double ValueOf(const std::string& text) {
  return Expression(text, kVariables).At(std::array{3.0, .25});
}

TEST(Expression, Values) {
  const double infinity = std::numeric_limits<double>::infinity();
  const struct {
    const char* text;
    double value;
  } cases[] = {
      {"1+2*3-4/8", 6.5},
      {" ( 1 + 2 ) * 3 ", 9},
      {"10-2-3", 5},
      {"16/4/2", 2},
      {"-2^2", -4},
      {"2^-1", .5},
      {"2^3^2", 512},
      {"--3", 3},
      {"2*-3", -6},
      {"1e3+.5+2.", 1002.5},
      {"f*yin", .75},
      {"Yin + F", 3.25},
      {"f<3", 0},
      {"f<=3", 1},
      {"1+1==2", 1},
      {"f!=3", 0},
      {"(f>2)+(f>=3)", 2},
      {"if(f>2, yin, 1/0)", .25},
      {"if(0, 1, if(1, 2, 3))", 2},
      {"min(3,1,2)+max(3,5)", 6},
      {"max(2)", 2},
      {"sqrt(16)+abs(-1)", 5},
      {"ln(exp(2))", 2},
      {"log10(1000)", 3},
      {"sin(pi/6)", .5},
      {"cos(pi)+tan(0)", -1},
      {"dB(-10)", 20},
      {"lin(-20)", .1},
      {"db(lin(3))", 3},
      {"sinc(0)+sinc(1)+sinc(.5)", 1 + 2 / std::acos(-1)},
      {"1/0", infinity},
      {"db(0)", -infinity},
  };
  for (const auto& [text, value] : cases) {
    if (std::isinf(value)) {
      EXPECT_EQ(ValueOf(text), value) << text;
    } else {
      EXPECT_NEAR(ValueOf(text), value, 1e-12) << text;
    }
  }
  EXPECT_TRUE(std::isnan(ValueOf("sqrt(-1)")));
}

TEST(Expression, AnErrorSaysItsPlace) {
  const std::string deep(101, '(');
  const struct {
    std::string text;
    std::size_t place;
    const char* says;
  } cases[] = {
      {"", 1, "missing at the end"},
      {"1+", 3, "missing at the end"},
      {"(1", 3, "missing at the end; ')' is"},
      {"0,5*f", 2, "a comma is not expected here; numbers take a point"},
      {"2f", 2, "'f' is not expected here"},
      {"1 \xC3\xA4", 3, "'\xC3\xA4' is not expected here"},
      {"f + gain", 5, "'gain' is not known; the variables are f yin"},
      {"\xC3\xA4", 1, "not expected"},
      {"f*log(2)", 3, "there is no function 'log'"},
      {"sin f", 1, "'sin' is not known"},
      {"if(1,2)", 7, "')' is not expected here; ',' is"},
      {"sqrt(1,2)", 7, "comma"},
      {"1<2<3", 4, "only one comparison"},
      {"1e999", 1, "not a number that can be used"},
      {".", 1, "not a number that can be used"},
      {deep, 101, "nested too deeply"},
      {std::string(200, '-') + "1", 101, "nested too deeply"},
      {std::string(1001, '1'), 1001, "too long"},
      {"1" + std::string(998, ' ') + "\u00b5", 1000, "is not expected here"},
  };
  for (const auto& [text, place, says] : cases) {
    try {
      ValueOf(text);
      ADD_FAILURE() << text;
    } catch (const ExpressionError& error) {
      EXPECT_EQ(error.place, place) << text;
      EXPECT_THAT(error.what(), ::testing::HasSubstr(says)) << text;
    }
  }
}

TEST(Expression, KnowsWhatItDependsOn) {
  const Expression expression("if(f > 1, 2, 3)", kVariables);
  EXPECT_TRUE(expression.Uses(0));
  EXPECT_FALSE(expression.Uses(1));
}

}  // namespace
}  // namespace polefit
