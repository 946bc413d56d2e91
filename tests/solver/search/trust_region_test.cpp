#include "solver/search/trust_region.h"

#include <gtest/gtest.h>

#include <Eigen/Eigenvalues>

#include "solver/search/second_starts.h"

namespace polefit::testing {
namespace {

using Eigen::MatrixXd;
using Eigen::VectorXd;

/// A minimiser s fulfils (B + shift) s = -g with B + shift positive semidefinite, and lies inside
/// the radius only with shift 0.
void ExpectMinimiser(const VectorXd& gradient, const MatrixXd& hessian, double radius) {
  const TrustStep trust = SolveTrustRegion(gradient, hessian, radius);
  const double length = trust.step.norm();
  const VectorXd pull = -(gradient + hessian * trust.step);
  const double shift = pull.dot(trust.step) / (length * length);
  const double lowest = Eigen::SelfAdjointEigenSolver<MatrixXd>(hessian).eigenvalues()[0];
  EXPECT_LE(length, radius * 1.001);
  EXPECT_LT((pull - shift * trust.step).norm(), 1e-5 * (gradient.norm() + hessian.norm()));
  EXPECT_GE(lowest + shift, -1e-6 * hessian.norm());
  EXPECT_EQ(trust.isAtEdge, length >= .999 * radius);
  EXPECT_NEAR(trust.isAtEdge ? 0 : shift, 0, 1e-6 * hessian.norm());
  EXPECT_EQ(trust.isIndefinite, lowest < 0 && trust.isAtEdge);
  EXPECT_NEAR(trust.predictedDecrease, PredictedDecrease(gradient, hessian, trust.step),
              1e-9 * std::abs(trust.predictedDecrease));
}

TEST(TrustRegion, IsMinimisedExactly) {
  RandomNumbers random;
  for (int i = 0; i < 300; ++i) {
    const int size = 1 + i % 9;
    const auto any = [&random] { return random.Signed(); };
    const VectorXd gradient = VectorXd::NullaryExpr(size, any);
    const MatrixXd half = MatrixXd::NullaryExpr(size, size, any);
    const MatrixXd definite = half * half.transpose() + .01 * MatrixXd::Identity(size, size);
    const double radius = random.Logarithmic(1e-3, 10);
    ExpectMinimiser(gradient, definite, radius);
    ExpectMinimiser(gradient, half + half.transpose(), radius);
  }
}

TEST(TrustRegion, GoesAlongTheLowestEigenvectorInTheHardCase) {
  const MatrixXd saddle = Eigen::Vector3d(-2, 1, 3).asDiagonal();
  ExpectMinimiser(Eigen::Vector3d(0, 1, 1), saddle, 5);
  ExpectMinimiser(Eigen::Vector3d::Zero(), saddle, 5);
  const Eigen::Vector3d zero = Eigen::Vector3d::Zero();
  EXPECT_EQ(SolveTrustRegion(zero, MatrixXd::Zero(3, 3), 1).step, zero);
}

}  // namespace
}  // namespace polefit::testing
