#include <gtest/gtest.h>

#include <string>

#include "solver/example_problem.h"
#include "solver/search/evaluator.h"
#include "solver/search/second_starts.h"

namespace polefit::testing {
namespace {

Fit FitOf(const Problem& problem, const Eigen::VectorXd& parameters) {
  Listener nobody;
  Evaluator evaluator(problem, nobody, [] { return false; });
  Iterate iterate;
  iterate.parameters = parameters;
  EXPECT_TRUE(evaluator.Evaluate(iterate));
  return iterate.fit;
}

TEST(Derivatives, AgreeWithCentralDifferences) {
  struct Case {
    const char* name;
    const char* example;
    const char* answers;
  };
  const Case cases[] = {
      {"EqualisedSidelobes", "Ex-Yzero.102", ""},
      {"FirstZeroFreeToo", "Ex-Yzero.101", "11=4 0 0; 11a=1.05 1.3 1.8 2.5"},
      {"EqualisedWithDoubletAndQuad", "Ex-Yzero.101",
       "6=1 5; 7=.6; 8=.5 .4 .3 .2 .6; 9=.1 .4 .7 1 .2; 10=Y; 10a=-.9; 10b=Y; 10c=N; "
       "11=2 0 1; 11a=1.1 1.6; 11b=.4; 11c=.3"},
      {"ZeroPair", "Ex-Zpair.1", "2=-2; 3=Y"},
      {"RightHalfPairAndSigmaZero", "Ex-Delay.101", "10a=-.7; 10c=N; 11=0 1 0; 11b=-.2; 11c=1.1"},
      {"QuadAndSigmaPoles", "Ex-Delay.101", "3=Y; 6=2 3; 7=.3 .9; 11=0 0 1; 11b=.4; 11c=.3"},
      {"LosslessWithFreeConstant", "Ex-Delay.101", "11a=1.2"},
      {"DoublyLosslessWithTmin", "Ex-Delay.111", "1b=-2; 10b=Y"},
      {"PlainDoublet", "Ex-Delay.111", "10b=Y; 10c=N"},
  };
  for (const Case& one : cases) {
    SCOPED_TRACE(one.name);
    ResponseRecord record = ExampleRecord(one.example, one.answers);
    for (int row = 1; row <= record.nFreqPoints; ++row) {
      record.passband.At(row, 4) = row % 3 == 0 ? "2" : ".5";
    }
    const Problem problem = GoodProblem(record);
    const int size = problem.constellation.orcaCount;
    Eigen::VectorXd base = problem.typedParameters;
    RandomNumbers random;
    for (int i = 0; i < size; ++i) base[i] *= 1 + .03 * random.Signed();
    const Fit fit = FitOf(problem, base);
    Eigen::VectorXd gradient(size);
    Eigen::MatrixXd hessian(size, size);
    for (int i = 0; i < size; ++i) {
      const double h = 2e-5 * std::max(.1, base[i]);
      const Eigen::VectorXd step = h * Eigen::VectorXd::Unit(base.size(), i);
      const Fit above = FitOf(problem, base + step);
      const Fit below = FitOf(problem, base - step);
      gradient[i] = (above.cost - below.cost) / (2 * h);
      hessian.col(i) = (above.gradient - below.gradient) / (2 * h);
    }
    EXPECT_LT((fit.gradient - gradient).norm(), 1e-6 * gradient.norm());
    EXPECT_LT((fit.hessian - hessian).norm(), 1e-5 * hessian.norm());
  }
}

TEST(Model, TakesAZeroInThePassbandWithoutLosingDerivatives) {
  Problem problem = GoodProblem(ExampleRecord("Ex-Delay.101", "11a=1.000000001"));
  const Fit near = FitOf(problem, problem.typedParameters);  // all but on the last point
  problem.typedParameters[problem.constellation.orcaCount - 1] = 1;
  const Fit on = FitOf(problem, problem.typedParameters);
  EXPECT_LT((near.hessian - on.hessian).norm(), 1e-5 * near.hessian.norm());
  EXPECT_LT((near.gradient - on.gradient).norm(), 1e-5 * near.gradient.norm());
}

}  // namespace
}  // namespace polefit::testing
