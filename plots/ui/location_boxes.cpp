#include "plots/ui/location_boxes.h"

#include <QLineEdit>

#include "form/field_rules.h"
#include "form/ui/main_window.h"
#include "plots/diagram.h"
#include "plots/move_location.h"
#include "record/question_catalogue.h"
#include "solver/problem/answers.h"
#include "widgets/controls.h"

namespace polefit {

namespace {

/// Selects the word of a text, counted from 0.
void SelectWord(QLineEdit& box, std::size_t wanted) {
  const QString text = box.text();
  qsizetype at = 0;
  for (std::size_t word = 0; at < text.size(); ++word) {
    while (at < text.size() && text[at] == ' ') ++at;
    const qsizetype begin = at;
    while (at < text.size() && text[at] != ' ') ++at;
    if (word != wanted) continue;
    box.setSelection(static_cast<int>(begin), static_cast<int>(at - begin));
    return;
  }
}

}  // namespace

void LocationBoxes::Put(int slot, const std::string& text) {
  const Question& question = QuestionOf(slot);
  if (question.kind == AnswerKind::flag) {
    form_.SetChecked(question.boxes[0].name, IsYes(text));
  } else if (question.Boxes().size() > 1) {
    const std::vector<std::string> words = Words(text);
    for (std::size_t i = 0; i < question.Boxes().size() && i < words.size(); ++i) {
      form_.SetText(question.boxes[i].name, words[i]);
    }
  } else {
    form_.SetText(question.boxes[0].name, text);
  }
}

void LocationBoxes::PutChanges(const ResponseRecord& from, const ResponseRecord& to) {
  for (int slot = slot::kNPoles; slot <= slot::kGain; ++slot) {
    if (from.Slot(slot) != to.Slot(slot)) Put(slot, to.Slot(slot));
  }
  ApplyFieldRules(form_);
}

QLineEdit* LocationBoxes::BoxOf(int slot) const {
  return form_.findChild<QLineEdit*>(ToQString(QuestionOf(slot).boxes[0].name));
}

void LocationBoxes::Select(const FitCurves& typed, std::size_t location) {
  const int slot = SlotsOf(typed.locations.at(location).kind).front();
  QLineEdit* box = BoxOf(slot);
  if (box == nullptr) return;
  form_.SetFocus(box->objectName().toStdString());
  SelectWord(*box, typed.words.at(location));
}

void LocationBoxes::ShowPairs(const FitCurves* typed) {
  QString pairs;
  for (std::size_t i = 0; typed != nullptr && i < typed->locations.size(); ++i) {
    if (typed->locations[i].kind != FactorKind::polePair) continue;
    pairs += '\n' + ToQString(LocationText(*typed, i));
  }
  for (const int slot : {slot::kPoleReal, slot::kPoleImag}) {
    BoxOf(slot)->setToolTip(ToQString(QuestionOf(slot).tip) + pairs);
  }
}

}  // namespace polefit
