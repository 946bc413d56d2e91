#include "form/solver_settings.h"

#include "record/question_catalogue.h"

namespace polefit {

void clearSolvdata(FormView& form) {
  for (const SolverQuestion& question : kSolverQuestions) form.SetText(question.name, "");
}

void GetSolvAnswers(FormView& form, const ResponseRecord& record) {
  for (std::size_t i = 0; i < kSolverQuestions.size(); ++i) {
    form.SetText(kSolverQuestions[i].name, record.solver[i]);
  }
}

void PutSolvAnswers(const FormView& form, ResponseRecord& record) {
  for (std::size_t i = 0; i < kSolverQuestions.size(); ++i) {
    record.solver[i] = form.Text(kSolverQuestions[i].name);
  }
}

void EditSolverDefaults(FormView& form) {
  for (const SolverQuestion& question : kSolverQuestions) {
    form.SetText(question.name, std::string(question.editText));
  }
  form.SetFocus(kSolverQuestions[0].name);
}

void UseSolverDefaults(FormView& form) {
  clearSolvdata(form);
  form.SetFocus(kSolverQuestions[0].name);
}

}  // namespace polefit
