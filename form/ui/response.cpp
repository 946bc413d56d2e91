#include "form/ui/response.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>
#include <array>

#include "form/transfer.h"
#include "widgets/answer_edit.h"
#include "widgets/controls.h"

namespace polefit {

namespace {

constexpr int kCountLength = 4;
constexpr int kNumberLength = 12;
constexpr int kListLength = 48;

QWidget* MakeCheckBox(const Question& question) {
  auto* box = new QCheckBox(QObject::tr("Yes"));
  box->setObjectName(ToQString(question.boxes[0].name));
  box->setToolTip(ToQString(question.tip));
  // As high as a text box, so that the rows stand evenly.
  box->setMinimumHeight(QLineEdit().sizeHint().height());
  return box;
}

/// Says below the count boxes what becomes of an empty one.
void AddCountNote(const std::array<QLineEdit*, 3>& boxes, QVBoxLayout* rows) {
  QLabel* note = MakeText("lblEmptyCount", "");
  note->hide();
  rows->addWidget(note);
  const auto show = [note, boxes] {
    const std::string text =
        EmptyCountNote({boxes[0]->text().toStdString(), boxes[1]->text().toStdString(),
                        boxes[2]->text().toStdString()});
    note->setText(ToQString(text));
    note->setVisible(!text.empty());
  };
  for (QLineEdit* box : boxes) QObject::connect(box, &QLineEdit::textChanged, note, show);
}

QWidget* MakeCountBoxes(const Question& question) {
  auto* group = new QWidget;
  auto* rows = new QVBoxLayout(group);
  rows->setContentsMargins(0, 0, 0, 0);
  auto* row = new QHBoxLayout;
  rows->addLayout(row);
  std::array<QLineEdit*, 3> boxes{};
  std::size_t number = 0;
  for (const AnswerBox& answer : question.Boxes()) {
    AnswerEdit* box = MakeBox(answer.name, answer.defaultText, kCountLength, question.selectsAll);
    box->setToolTip(ToQString(question.tip));
    box->setAccessibleName(PlainCaption(ToQString(question.label)).simplified() + ' ' +
                           ToQString(answer.caption));
    row->addWidget(new ControlLabel(answer.captionName, ToQString(answer.caption), box), 0,
                   Qt::AlignTop);
    row->addWidget(box, 0, Qt::AlignTop);
    row->addSpacing(group->fontMetrics().height() / 2);
    boxes.at(number++) = box;
  }
  row->addStretch();
  AddCountNote(boxes, rows);
  return group;
}

}  // namespace

int WidestResponse() {
  return AnswerEdit(kListLength, false).sizeHint().width();
}

QWidget* MakeResponse(const Question& question) {
  const AnswerBox& box = question.boxes[0];
  switch (question.kind) {
    case AnswerKind::flag:
      return MakeCheckBox(question);
    case AnswerKind::counts:
      return MakeCountBoxes(question);
    case AnswerKind::number:
    case AnswerKind::list:
      break;
  }
  const int length = question.kind == AnswerKind::number ? kNumberLength : kListLength;
  AnswerEdit* edit = MakeBox(box.name, box.defaultText, length, question.selectsAll);
  edit->setToolTip(ToQString(question.tip));
  return edit;
}

}  // namespace polefit
