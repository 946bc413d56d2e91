#include <gtest/gtest.h>

#include <limits>

#include "solver/search/projected_step.h"
#include "solver/search/second_starts.h"
#include "solver/search/step_control.h"

namespace polefit::testing {
namespace {

using Eigen::MatrixXd;
using Eigen::VectorXd;

/// One variable: the exact model predicts 1 for the step 1, that of Gauss and Newton 2.
StepModels TwoModels() {
  return {VectorXd::Constant(1, -2), {MatrixXd::Constant(1, 1, 2), MatrixXd::Constant(1, 1, 0)}};
}

PlannedStep StepOf(double predicted) {
  PlannedStep step;
  step.scaled = VectorXd::Ones(1);
  step.predictedDecrease = predicted;
  return step;
}

TEST(StepControl, GoesOverToTheModelThatPredictsBetter) {
  StepControl control(Model::exact);
  control.BeginProblem();
  EXPECT_TRUE(control.Judge(TwoModels(), StepOf(1), 1.2));
  EXPECT_EQ(control.CurrentModel(), Model::exact);
  EXPECT_TRUE(control.Judge(TwoModels(), StepOf(1), 1.9));
  EXPECT_EQ(control.CurrentModel(), Model::gaussNewton);
}

TEST(StepControl, LetsTheBetterModelTryOnceBeforeTheRadiusShrinks) {
  StepControl control(Model::gaussNewton);
  control.BeginProblem();
  const double radius = control.Radius();
  EXPECT_FALSE(control.Judge(TwoModels(), StepOf(2), -.5));
  EXPECT_EQ(control.CurrentModel(), Model::exact);
  EXPECT_EQ(control.Radius(), radius);
  EXPECT_FALSE(control.Judge(TwoModels(), StepOf(1), -.5));
  EXPECT_LT(control.Radius(), radius);
  // Where nothing was reached no prediction can be judged.
  const double shrunk = control.Radius();
  EXPECT_FALSE(control.Judge(TwoModels(), StepOf(1), -std::numeric_limits<double>::infinity()));
  EXPECT_EQ(control.CurrentModel(), Model::exact);
  EXPECT_LT(control.Radius(), shrunk);
}

TEST(StepControl, EndsUnderTheExactModel) {
  StepControl exact(Model::exact);
  exact.BeginProblem();
  EXPECT_FALSE(exact.FallsBackToExact());
  StepControl control(Model::gaussNewton);
  control.BeginProblem();
  EXPECT_TRUE(control.FallsBackToExact());
  EXPECT_EQ(control.CurrentModel(), Model::exact);
  EXPECT_FALSE(control.FallsBackToExact());
}

/// The step ends where no variable between its bounds can do better, and none crosses a bound.
TEST(ProjectedStep, IsTheMinimumBetweenTheBounds) {
  RandomNumbers random;
  const auto any = [&random] { return random.Signed(); };
  for (int i = 0; i < 200; ++i) {
    const int size = 2 + i % 6;
    const MatrixXd half = MatrixXd::NullaryExpr(size, size, any);
    // Diagonally dominant: projection then finds the minimum itself.
    const MatrixXd hessian =
        MatrixXd(half.cwiseAbs().rowwise().sum().asDiagonal()) * 4 + (half + half.transpose()) / 4;
    StepModels models;
    models.gradient = 3 * VectorXd::NullaryExpr(size, any);
    models.hessians = {hessian, hessian};
    const VectorXd lower = VectorXd::Constant(size, -.1);
    const VectorXd upper = VectorXd::Constant(size, .2);
    const Box box = {lower, upper, VectorXd::Zero(size), Eigen::ArrayXd::Ones(size)};
    const PlannedStep step = ProjectedStep(models, Model::exact, 100, box);
    EXPECT_TRUE((step.variables.array() >= lower.array()).all());
    EXPECT_TRUE((step.variables.array() <= upper.array()).all());
    EXPECT_GT(step.predictedDecrease, 0);
    const VectorXd slope = models.gradient + hessian * step.scaled;
    for (int k = 0; k < size; ++k) {
      const bool isInside = step.variables[k] > -.1 && step.variables[k] < .2;
      EXPECT_NEAR(isInside ? slope[k] : 0, 0, 1e-9);
    }
  }
}

TEST(ProjectedStep, LeavesHeldVariablesAndTellsWhatCutIt) {
  StepModels models;
  models.gradient = Eigen::Vector2d(1, -8);
  models.hessians = {MatrixXd::Identity(2, 2), MatrixXd::Identity(2, 2)};
  const VectorXd lower = VectorXd::Zero(2);
  const VectorXd upper = VectorXd::Constant(2, 3);
  const Box box = {lower, upper, Eigen::Vector2d(0, 1), Eigen::Array2d(1, 2)};
  const PlannedStep far = ProjectedStep(models, Model::exact, 100, box);
  EXPECT_EQ(far.variables, Eigen::Vector2d(0, 3));
  EXPECT_EQ(far.scaled, Eigen::Vector2d(0, 1));
  EXPECT_TRUE(far.isProjected);
  const PlannedStep near = ProjectedStep(models, Model::exact, .5, box);
  EXPECT_EQ(near.variables[0], 0);
  EXPECT_NEAR(near.variables[1], 2, 1e-2);
  EXPECT_TRUE(near.isAtEdge);
  EXPECT_FALSE(near.isProjected);
}

}  // namespace
}  // namespace polefit::testing
