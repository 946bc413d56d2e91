#pragma once

#include <Eigen/Core>
#include <array>

namespace polefit {

/// The quadratic models of F that a step is made with: with the exact Hessian, and with that of
/// Gauss and Newton, J'J, which leaves out the second derivatives of the errors.
enum class Model { exact, gaussNewton };

/// Both models at one point; they share the gradient. In scaled variables.
struct StepModels {
  Eigen::VectorXd gradient;
  std::array<Eigen::MatrixXd, 2> hessians;

  const Eigen::MatrixXd& Hessian(Model model) const {
    return hessians[static_cast<std::size_t>(model)];
  }
  double PredictedDecrease(Model model, const Eigen::VectorXd& step) const;
};

/// A step that one of the models asks for.
struct PlannedStep {
  Eigen::VectorXd scaled;
  /// Where it leads, in ORCA's variables.
  Eigen::VectorXd variables;
  /// By the model that asked for it.
  double predictedDecrease = 0;
  /// The trust-region radius has cut it.
  bool isAtEdge = false;
  /// A bound has cut it.
  bool isProjected = false;
};

/// The trust-region radius and the choice between the models.
///
/// In a flat valley the exact Hessian is indefinite noise until sqrt(F) is below the small
/// eigenvalues of J'J; far from the answer J'J lacks what bends the way. So after each trial the
/// model whose prediction was clearly better takes the next step (J. Dennis, D. Gay and R. Welsch,
/// ACM Trans. Math. Software 7 (1981) 348: NL2SOL).
class StepControl {
 public:
  explicit StepControl(Model first) : model_(first) {}

  /// A new problem: the radius is the first one again, the model stays.
  void BeginProblem();

  Model CurrentModel() const { return model_; }
  double Radius() const { return radius_; }

  /// Whether a trial that brought the decrease `actual` is taken; not finite: nothing was reached.
  /// Sets radius and model of the next step.
  bool Judge(const StepModels& models, const PlannedStep& step, double actual);

  /// Refuses a step without a trial.
  void Shrink(const PlannedStep& step);

  /// A problem ends under the exact model only: when the other one sees no further decrease, the
  /// exact one takes over. False when it had its turn, so that the end counts.
  bool FallsBackToExact();

 private:
  static Model Other(Model model) {
    return model == Model::exact ? Model::gaussNewton : Model::exact;
  }
  bool IsOtherBetter(const StepModels& models, const PlannedStep& step, double actual) const;

  Model model_;
  double radius_ = 0;
  bool keepsRadius_ = false;  ///< the last refusal did not shrink the radius
  int fallBacks_ = 0;
};

}  // namespace polefit
