#include <gtest/gtest.h>

#include <string>

#include "solver/evaluator.h"
#include "solver/example_problem.h"
#include "solver/second_starts.h"

namespace polefit {
namespace {

struct Case {
  const char* name;
  const char* example;
  std::vector<std::pair<int, const char*>> answers;
};

void PrintTo(const Case& theCase, std::ostream* stream) {
  *stream << theCase.name;
}

class Derivatives : public testing::TestWithParam<Case> {
 protected:
  Derivatives() {
    ResponseRecord record = ExampleRecord(GetParam().example);
    for (const auto& [slot, answer] : GetParam().answers) record.Slot(slot) = answer;
    for (int row = 1; row <= record.nFreqPoints; ++row) {
      record.passband.At(row, 4) = row % 3 == 0 ? "2" : ".5";
    }
    problem_ = GoodProblem(record);
    RandomNumbers random;
    base_ = problem_.typedParameters;
    for (int i = 0; i < problem_.constellation.orcaCount; ++i)
      base_[i] *= 1 + .03 * random.Signed();
  }

  Fit FitAt(const Eigen::VectorXd& step) {
    Listener nobody;
    Evaluator evaluator(problem_, nobody, [] { return false; });
    Point point;
    point.parameters = base_;
    point.parameters.head(step.size()) += step;
    EXPECT_TRUE(evaluator.Evaluate(point));
    return point.fit;
  }

  Problem problem_;
  Eigen::VectorXd base_;
};

TEST_P(Derivatives, AgreeWithCentralDifferences) {
  const int size = problem_.constellation.orcaCount;
  const Fit fit = FitAt(Eigen::VectorXd::Zero(size));
  Eigen::VectorXd gradient(size);
  Eigen::MatrixXd hessian(size, size);
  for (int i = 0; i < size; ++i) {
    const double h = 2e-5 * std::max(.1, base_[i]);
    const Eigen::VectorXd step = h * Eigen::VectorXd::Unit(size, i);
    const Fit above = FitAt(step);
    const Fit below = FitAt(-step);
    gradient[i] = (above.cost - below.cost) / (2 * h);
    hessian.col(i) = (above.gradient - below.gradient) / (2 * h);
  }
  EXPECT_LT((fit.gradient - gradient).norm(), 1e-6 * gradient.norm());
  EXPECT_LT((fit.hessian - hessian).norm(), 1e-5 * hessian.norm());
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, Derivatives,
    testing::Values(
        Case{"EqualisedSidelobes", "Ex-Yzero.102", {}},
        Case{"FirstZeroFreeToo",
             "Ex-Yzero.101",
             {{slot::kYzero, "1.05 1.3 1.8 2.5"}, {slot::kZeroCounts, "4 0 0"}}},
        Case{"ZeroPair", "Ex-Zpair.1", {{slot::kIPower, "-2"}, {slot::kUseWeights, "Y"}}},
        Case{"RightHalfPairAndSigmaZero",
             "Ex-Delay.101",
             {{slot::kZeroCounts, "0 1 0"},
              {slot::kZreal, "-.2"},
              {slot::kZimag, "1.1"},
              {slot::kLossless, "N"},
              {slot::kSigmaZero, "-.7"}}},
        Case{"QuadAndSigmaPoles",
             "Ex-Delay.101",
             {{slot::kNPoles, "2 3"},
              {slot::kSigmaPoles, ".3 .9"},
              {slot::kZeroCounts, "0 0 1"},
              {slot::kZreal, ".4"},
              {slot::kZimag, ".3"},
              {slot::kUseWeights, "Y"}}},
        Case{"LosslessWithFreeConstant", "Ex-Delay.101", {{slot::kYzero, "1.2"}}},
        Case{"DoublyLosslessWithTmin",
             "Ex-Delay.111",
             {{slot::kDoublet, "Y"}, {slot::kDelRipplePower, "-2"}}},
        Case{"PlainDoublet", "Ex-Delay.111", {{slot::kDoublet, "Y"}, {slot::kLossless, "N"}}}),
    [](const testing::TestParamInfo<Case>& theCase) { return std::string(theCase.param.name); });

TEST(Model, TakesAZeroInThePassbandWithoutLosingDerivatives) {
  ResponseRecord record = ExampleRecord("Ex-Delay.101");
  record.Slot(slot::kYzero) = "1.000000001";  // all but on the last point
  Problem problem = GoodProblem(record);
  Listener nobody;
  Evaluator evaluator(problem, nobody, [] { return false; });
  Point point;
  point.parameters = problem.typedParameters;
  const auto zero = problem.constellation.orcaCount - 1;
  ASSERT_TRUE(evaluator.Evaluate(point));
  const Fit near = point.fit;
  point.parameters[zero] = 1;
  ASSERT_TRUE(evaluator.Evaluate(point));
  EXPECT_LT((near.hessian - point.fit.hessian).norm(), 1e-5 * near.hessian.norm());
  EXPECT_LT((near.gradient - point.fit.gradient).norm(), 1e-5 * near.gradient.norm());
}

}  // namespace
}  // namespace polefit
