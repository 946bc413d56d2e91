#pragma once

#include <array>
#include <cstddef>
#include <deque>
#include <string>
#include <vector>

#include "form/cells.h"

namespace polefit {

/// Where on the form something stands: a control, and in a grid the cell (row 0: the grid).
struct FormPlace {
  std::string control;
  int row = 0;
  int column = 0;

  bool operator==(const FormPlace&) const = default;
};

enum class StepKind {
  edit,              ///< the file stays the current one
  replacesDocument,  ///< the names of the files belong to the step
  takesForm          ///< the form is taken for a save; new point counts alone are no step
};

/// What the user did to the form, step by step, and the way back. It reads the form as a whole, so
/// that no command can forget to tell it anything; of what it read it keeps the differences.
class History {
 public:
  struct Limits {
    std::size_t steps = 100;
    std::size_t bytes = std::size_t{64} << 20;
  };

  /// The form as it stands is the first state.
  explicit History(Program& program);
  History(Program& program, Limits limits);
  void Forget();

  /// Makes one step of all that has changed since the last one, under the name that a menu shows.
  /// Text in an open cell editor is no change yet. False when nothing has changed. The oldest steps
  /// are dropped beyond the limits; the last one always stays.
  bool Record(const std::string& name, StepKind kind = StepKind::edit);

  bool CanUndo() const { return done_ > 0; }
  bool CanRedo() const { return done_ < steps_.size(); }
  /// The name of the step that is next; "" when there is none.
  std::string UndoName() const { return CanUndo() ? steps_[done_ - 1].name : std::string(); }
  std::string RedoName() const { return CanRedo() ? steps_[done_].name : std::string(); }
  /// Show the form before the last step, or after the next one; where they differ. The data count
  /// as changed.
  FormPlace Undo();
  FormPlace Redo();

  /// What the steps take, roughly.
  std::size_t Bytes() const;

 private:
  /// Rows that stand in the place of others.
  template <std::size_t Columns>
  struct RowsChange {
    using Row = std::array<std::string, Columns>;
    int firstRow = 1;
    std::vector<Row> before;
    std::vector<Row> after;

    static RowsChange Between(const PointLists<Columns>& before, const PointLists<Columns>& after);
    PointLists<Columns> Applied(const PointLists<Columns>& points, bool isUndo) const;
    std::size_t Bytes() const;
  };

  struct Step {
    std::string name;
    StepKind kind;
    /// Everything but the rows of the tables.
    FormCells before;
    FormCells after;
    RowsChange<PassbandLists::kColumns> passband;
    RowsChange<DelayLists::kColumns> delay;

    FormPlace Place(bool isUndo) const;
    std::size_t Bytes() const;
  };

  void Show(const Step& step, bool isUndo);
  void DropOldSteps();

  Program& program_;
  Limits limits_;
  /// The form as the last step left it.
  FormCells state_;
  std::deque<Step> steps_;
  /// How many of the steps stand on the form.
  std::size_t done_ = 0;
};

}  // namespace polefit
