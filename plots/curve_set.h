#pragma once

#include <optional>
#include <string>
#include <vector>

#include "plots/diagram.h"
#include "plots/pane_state.h"
#include "plots/preview_worker.h"

namespace polefit {

/// Answers to be drawn under a name.
struct NamedAnswers {
  std::string name;
  ResponseRecord record;
};

/// The curves that belong to a form: what is typed, what the last run has found and what a preview
/// has found. What `Shown` gives lives until the set is changed.
class CurveSet {
 public:
  /// The form as it stands. Answers with a fault leave the last good curve; where there is none of
  /// these points, the points alone.
  void Read(ResponseRecord typed);
  /// The form holds more points than a file: as with other faults.
  void ReadFault();

  void SetResult(const ResponseRecord& record, const std::string& time);
  /// Answers of earlier runs that are shown too, under their names: the first two of them.
  void SetOthers(const std::vector<NamedAnswers>& others);
  /// False when the preview is not of what is typed now.
  bool SetPreview(Preview preview);
  void DropPreview() { preview_.reset(); }

  /// A preview takes the place of an older result; the result of another problem is not shown.
  ShownCurves Shown();
  PaneState State() const { return state_; }
  /// The state for the pane: "result 19:40, form changed since".
  std::string StateInWords() const;

  const ResponseRecord& Record() const { return record_; }
  /// The typed curves, or null while the answers have a fault.
  const FitCurves* Typed() const { return isGood_ ? &*typed_ : nullptr; }
  const std::optional<Preview>& Previewed() const { return preview_; }

 private:
  void ReadPointsAlone();
  bool ShowsResult() const;

  ResponseRecord record_;
  std::optional<FitCurves> typed_;
  bool isGood_ = false;
  std::optional<FitCurves> result_;
  ResponseRecord resultRecord_;
  std::string resultTime_;
  std::vector<FitCurves> others_;
  std::size_t leftOut_ = 0;  ///< of the others
  std::optional<Preview> preview_;
  PaneState state_ = PaneState::nothing;
};

}  // namespace polefit
