#include "form/solver_settings.h"

#include "record/question_catalogue.h"

namespace polefit {

void clearSolvdata(FormView& form) {
  for (const SolverQuestion& question : kSolverQuestions) form.SetText(question.name, "");
}

void GetSolvAnswers(Program& program) {
  for (std::size_t i = 0; i < kSolverQuestions.size(); ++i) {
    program.windows.frmMain.SetText(kSolverQuestions[i].name, program.document.record.solver[i]);
  }
}

void PutSolvAnswers(Program& program) {
  for (std::size_t i = 0; i < kSolverQuestions.size(); ++i) {
    program.document.record.solver[i] = program.windows.frmMain.Text(kSolverQuestions[i].name);
  }
}

void EditSolverDefaults(FormView& form) {
  for (const SolverQuestion& question : kSolverQuestions) {
    form.SetText(question.name, std::string(question.editText));
  }
  form.SetFocus("Remax");
}

void UseSolverDefaults(FormView& form) {
  clearSolvdata(form);
  form.SetFocus("Remax");
}

}  // namespace polefit
