#include "form/ui/named_controls.h"

#include <QCheckBox>
#include <QLineEdit>

#include "record/question_catalogue.h"
#include "widgets/answer_edit.h"

namespace polefit {

void NamedControls::Collect(const QWidget& root) {
  for (QWidget* widget : root.findChildren<QWidget*>()) {
    if (!widget->objectName().isEmpty()) controls_[widget->objectName().toStdString()] = widget;
  }
  for (const Question& question : kQuestions) {
    for (const AnswerBox& box : question.Boxes()) {
      if (question.kind == AnswerKind::flag) {
        Find<QCheckBox>(box.name);
      } else {
        Find<AnswerEdit>(box.name);
      }
    }
  }
  for (const SolverQuestion& question : kSolverQuestions) Find<AnswerEdit>(question.name);
  for (const NoteBox& note : kNoteBoxes) Find<AnswerEdit>(note.name);
  Find<QLineEdit>(kLastFileNameBox);
}

}  // namespace polefit
