#pragma once

#include <string>
#include <string_view>

#include "grids/grid_view.h"
#include "record/question_catalogue.h"

namespace polefit {

/// The main form as the routines see it: a bag of controls, each known by its given name.
class FormView {
 public:
  virtual ~FormView() = default;

  virtual std::string Text(std::string_view control) const = 0;
  /// Raises the control's change notification before it returns when the text is another.
  virtual void SetText(std::string_view control, const std::string& text) = 0;
  virtual bool IsChecked(std::string_view control) const = 0;
  virtual void SetChecked(std::string_view control, bool checked) = 0;
  virtual bool IsEnabled(std::string_view control) const = 0;
  virtual void SetEnabled(std::string_view control, bool enabled) = 0;
  virtual void SetFocus(std::string_view control) = 0;
  virtual void SelectTab(Tab tab) = 0;

  virtual GridView& PassData() = 0;
  virtual GridView& DelayData() = 0;
  virtual CellEditorView& txtCellEditor() = 0;
};

}  // namespace polefit
