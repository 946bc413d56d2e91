#include "form/ui/controls.h"

#include <QCheckBox>
#include <QEvent>
#include <QHBoxLayout>
#include <QPushButton>
#include <algorithm>

#include "form/question_catalogue.h"
#include "form/ui/answer_edit.h"

namespace polefit {

namespace {

constexpr int kCountLength = 4;
constexpr int kNumberLength = 12;
constexpr int kListLength = 48;

QWidget* MakeCheckBox(std::string_view name) {
  auto* box = new QCheckBox("Yes");
  box->setObjectName(ToQString(name));
  // As high as a text box, so that the rows stand evenly.
  box->setMinimumHeight(QLineEdit().sizeHint().height());
  return box;
}

QWidget* MakeCountBoxes(const Question& question) {
  auto* group = new QWidget;
  auto* row = new QHBoxLayout(group);
  row->setContentsMargins(0, 0, 0, 0);
  for (const AnswerBox& answer : question.Boxes()) {
    AnswerEdit* box = MakeBox(answer.name, answer.defaultText, kCountLength, question.selectsAll);
    box->setAccessibleName(PlainCaption(question.label).simplified() + ' ' +
                           ToQString(answer.caption));
    row->addWidget(new ControlLabel(answer.captionName, answer.caption, box), 0, Qt::AlignTop);
    row->addWidget(box, 0, Qt::AlignTop);
    row->addSpacing(group->fontMetrics().height() / 2);
  }
  row->addStretch();
  return group;
}

}  // namespace

QString ToQString(std::string_view utf8) {
  return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

QString PlainCaption(std::string_view caption) {
  return ToQString(caption).replace("&&", "&");
}

ControlLabel::ControlLabel(std::string_view name, std::string_view caption, QWidget* control)
    : QLabel(ToQString(caption)) {
  setObjectName(ToQString(name));
  setTextFormat(Qt::PlainText);
  setWordWrap(true);
  setBuddy(control);
  if (control->accessibleName().isEmpty()) {
    control->setAccessibleName(PlainCaption(caption).simplified());
  }
  AlignWithBuddy();
}

void ControlLabel::changeEvent(QEvent* event) {
  QLabel::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) AlignWithBuddy();
}

void ControlLabel::AlignWithBuddy() {
  if (buddy() == nullptr) return;
  const int height = std::max(buddy()->sizeHint().height(), buddy()->minimumHeight());
  setContentsMargins(0, std::max(0, (height - fontMetrics().height()) / 2), 0, 0);
}

QLabel* MakeText(std::string_view name, std::string_view caption) {
  auto* label = new QLabel(PlainCaption(caption));
  label->setObjectName(ToQString(name));
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  return label;
}

QLabel* MakeHeader(std::string_view name, std::string_view caption) {
  QLabel* label = MakeText(name, caption);
  label->setWordWrap(false);
  QFont font = label->font();
  font.setBold(true);
  label->setFont(font);
  return label;
}

QLabel* MakeNote(std::string_view name, std::string_view caption) {
  QLabel* label = MakeText(name, caption);
  label->setAlignment(Qt::AlignCenter);
  label->setBackgroundRole(QPalette::AlternateBase);
  label->setAutoFillBackground(true);
  label->setMargin(label->fontMetrics().height() / 3);
  return label;
}

AnswerEdit* MakeBox(std::string_view name, std::string_view text, int length, bool selectsAll) {
  auto* box = new AnswerEdit(length, selectsAll);
  box->setObjectName(ToQString(name));
  box->setText(ToQString(text));
  box->setCursorPosition(0);
  box->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  return box;
}

QWidget* MakeResponse(const Question& question) {
  const AnswerBox& box = question.boxes[0];
  switch (question.kind) {
    case AnswerKind::flag:
      return MakeCheckBox(box.name);
    case AnswerKind::counts:
      return MakeCountBoxes(question);
    case AnswerKind::number:
    case AnswerKind::list:
      break;
  }
  const int length = question.kind == AnswerKind::number ? kNumberLength : kListLength;
  return MakeBox(box.name, box.defaultText, length, question.selectsAll);
}

QPushButton* MakeButton(std::string_view name, std::string_view caption) {
  auto* button = new QPushButton(ToQString(caption));
  button->setObjectName(ToQString(name));
  button->setAutoDefault(true);  // Return presses it, as the space bar does
  button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  return button;
}

}  // namespace polefit
