#pragma once

#include <functional>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>

#include "form/form_view.h"
#include "grids/fake_grid.h"

namespace polefit::testing {

/// The main form in memory, with the contents of a fresh one. A name that is no control of the
/// form throws, so that a misspelt one cannot pass.
class FakeForm final : public FormView {
 public:
  struct Control {
    std::string text = {};
    bool checked = false;
    bool enabled = true;
  };

  FakeForm() {
    for (const Question& question : kQuestions) {
      for (const AnswerBox& box : question.Boxes()) Add(box.name, box.defaultText);
    }
    for (const SolverQuestion& question : kSolverQuestions) Add(question.name, question.designText);
    for (const NoteBox& note : kNoteBoxes) Add(note.name, note.defaultText);
    Add("LastFileName", "");
  }

  std::string Text(std::string_view control) const override { return At(control).text; }
  void SetText(std::string_view control, const std::string& text) override {
    At(control).text = text;
    if (onChange) onChange();
  }
  bool IsChecked(std::string_view control) const override { return At(control).checked; }
  void SetChecked(std::string_view control, bool checked) override {
    At(control).checked = checked;
  }
  bool IsEnabled(std::string_view control) const override { return At(control).enabled; }
  void SetEnabled(std::string_view control, bool enabled) override {
    At(control).enabled = enabled;
  }
  void SetFocus(std::string_view control) override { At(control); }
  void SelectTab(Tab tab) override { selectedTab = tab; }

  FakeGrid& PassData() override { return passData; }
  FakeGrid& DelayData() override { return delayData; }
  FakeCellEditor& txtCellEditor() override { return editor; }

  /// Runs at every text that is set, as the form's change notification does.
  std::function<void()> onChange;
  Tab selectedTab = Tab::start;
  FakeGrid passData{5, 6810};
  FakeGrid delayData{3, 5200};
  FakeCellEditor editor;

 private:
  void Add(std::string_view name, std::string_view text) {
    controls_[std::string(name)].text = std::string(text);
  }
  Control& At(std::string_view name) { return controls_.at(std::string(name)); }
  const Control& At(std::string_view name) const { return controls_.at(std::string(name)); }

  std::map<std::string, Control> controls_;
};

}  // namespace polefit::testing
