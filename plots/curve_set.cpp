#include "plots/curve_set.h"

#include <algorithm>
#include <utility>

#include "record/same_problem.h"
#include "solver/problem/problem.h"

namespace polefit {

namespace {

/// Beside what is typed and its preview or result: more could not be told apart.
constexpr std::size_t kMostOthers = 2;

/// Values that are not typed stand for those of empty lists.
bool HasEmptyLists(const FitCurves& curves) {
  const std::vector<bool>& isEmpty = curves.problem->isFromPoints;
  return std::find(isEmpty.begin(), isEmpty.end(), true) != isEmpty.end();
}

}  // namespace

void CurveSet::Read(ResponseRecord typed) {
  if (preview_ && !(typed == record_)) preview_.reset();
  record_ = std::move(typed);
  std::vector<Finding> findings;
  std::optional<FitCurves> curves = CurvesOf(record_, CurveRole::typed, "typed", findings);
  isGood_ = curves.has_value();
  if (curves) {
    typed_ = std::move(curves);
  } else {
    ReadPointsAlone();
  }
}

void CurveSet::ReadFault() {
  isGood_ = false;
  preview_.reset();
}

/// The last good curve stays over its own points, as they stand now.
void CurveSet::ReadPointsAlone() {
  std::optional<FitCurves> points = PointsAlone(record_);
  // With all points gone the curve is that of a former problem.
  if (record_.nFreqPoints == 0 && typed_ && typed_->h->HasPoints()) typed_.reset();
  if (!points) return;
  PassbandFit& now = points->passband;
  if (typed_ && typed_->passband.frequency == now.frequency && !typed_->isPointsAlone) {
    typed_->passband.yin = std::move(now.yin);
    typed_->passband.yout = std::move(now.yout);
    typed_->passband.weight = std::move(now.weight);
  } else {
    typed_ = std::move(points);
  }
}

void CurveSet::SetResult(const ResponseRecord& record, const std::string& time) {
  std::vector<Finding> findings;
  resultRecord_ = record;
  resultTime_ = time;
  result_ = CurvesOf(record, CurveRole::result, "result " + time, findings);
  preview_.reset();
}

void CurveSet::SetOthers(const std::vector<NamedAnswers>& others) {
  others_.clear();
  leftOut_ = 0;
  for (const NamedAnswers& other : others) {
    if (others_.size() == kMostOthers) {
      ++leftOut_;
      continue;
    }
    std::vector<Finding> findings;
    const CurveRole role = others_.empty() ? CurveRole::other : CurveRole::another;
    auto curves = CurvesOf(other.record, role, other.name, findings);
    if (curves) others_.push_back(std::move(*curves));
  }
}

std::string CurveSet::StateInWords() const {
  std::string text = StateText(state_, resultTime_);
  const bool isOfTyped = state_ == PaneState::typed || state_ == PaneState::noPoints;
  if (isOfTyped && HasEmptyLists(*typed_)) text += ", rough where empty";
  if (leftOut_ == 0) return text;
  return text + ", " + std::to_string(kMostOthers) + " of " +
         std::to_string(kMostOthers + leftOut_) + " ticked runs";
}

bool CurveSet::SetPreview(Preview preview) {
  if (!isGood_ || !preview.curves || !StateSameProblem(preview.record, record_)) return false;
  preview_ = std::move(preview);
  return true;
}

/// Whether the result belongs to what is typed, or to what that was a moment ago.
bool CurveSet::ShowsResult() const {
  if (!isGood_ || !result_ || !typed_->h->HasPoints()) return false;
  const bool isSameFile =
      !record_.LastFileName.empty() && record_.LastFileName == resultRecord_.LastFileName;
  return isSameFile || HaveSamePoints(resultRecord_, record_);
}

ShownCurves CurveSet::Shown() {
  state_ = PaneState::nothing;
  if (!typed_) return {};
  ShownCurves shown = {&*typed_};
  typed_->isPale = !isGood_;
  if (typed_->isPointsAlone) return shown;
  state_ = !isGood_                 ? PaneState::lastGood
           : typed_->h->HasPoints() ? PaneState::typed
                                    : PaneState::noPoints;
  if (preview_ && isGood_) {
    shown.push_back(&*preview_->curves);
    state_ = PaneState::preview;
  } else if (ShowsResult()) {
    result_->isPale = !StateSameProblem(resultRecord_, record_);
    shown.push_back(&*result_);
    state_ = result_->isPale ? PaneState::resultChanged : PaneState::result;
  }
  for (const FitCurves& other : others_) shown.push_back(&other);
  return shown;
}

}  // namespace polefit
