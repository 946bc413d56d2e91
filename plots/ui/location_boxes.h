#pragma once

#include <string>

#include "plots/fit_curves.h"

class QLineEdit;

namespace polefit {

class MainWindow;

/// The boxes of the form that hold poles and zeros, as the curves fill and show them.
class LocationBoxes {
 public:
  explicit LocationBoxes(MainWindow& form) : form_(form) {}

  /// Shows an answer, of question 11 in its three boxes; the boxes that it needs wake up.
  void Put(int slot, const std::string& text);
  /// Shows the answers of `to` from question 6 to 12 that differ from those of `from`.
  void PutChanges(const ResponseRecord& from, const ResponseRecord& to);
  /// The focus goes to the location's number in its list.
  void Select(const FitCurves& typed, std::size_t location);
  /// Boxes 8 and 9 tell of each of their pairs where it is; null: they tell nothing.
  void ShowPairs(const FitCurves* typed);

 private:
  QLineEdit* BoxOf(int slot) const;

  MainWindow& form_;
};

}  // namespace polefit
