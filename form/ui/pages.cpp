#include "form/ui/pages.h"

#include <QBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <span>

#include "form/ui/response.h"
#include "form/ui/table_note.h"
#include "grids/ui/grid_widget.h"
#include "record/question_catalogue.h"
#include "widgets/answer_edit.h"
#include "widgets/controls.h"

namespace polefit {

namespace {

constexpr int kSolverLength = 20;
constexpr int kNoteLength = 60;

QLabel* MakeNormalizedNote(std::string_view name) {
  return MakeNote(
      name,
      QObject::tr(
          " === Below here, location values must be normalized by X or Y-axis Norm value! === "));
}

void AddQuestion(Page& page, const Question& question) {
  QWidget* response = MakeResponse(question);
  const std::string name = "Question" + std::to_string(question.slot);
  auto* control = question.kind == AnswerKind::counts
                      ? response->findChild<QWidget*>(question.boxes[0].name.data())
                      : response;
  page.AddRow({response, new ControlLabel(name, ToQString(question.label), control)});
}

/// Questions that begin a group stand off from the one before.
bool BeginsGroup(const Question& question) {
  return question.slot == slot::kIPower || question.slot == slot::kSigmaZeroWanted ||
         question.slot == slot::kZeroCounts;
}

void AddQuestions(Page& page, Tab tab) {
  page.SetLeftEdge(WidestResponse());
  for (const Question& question : kQuestions) {
    if (question.tab != tab) continue;
    if (BeginsGroup(question)) page.AddGap();
    AddQuestion(page, question);
  }
}

/// A solver question with the line break that its run of blanks stands for.
QString WithLineBreak(std::string_view label) {
  std::string text(label);
  const std::size_t blanks = text.find("        ");
  if (blanks != std::string::npos) text.insert(text.find_first_not_of(' ', blanks), "\n");
  return ToQString(text);
}

QHBoxLayout* ButtonRow(std::initializer_list<QPushButton*> buttons) {
  auto* row = new QHBoxLayout;
  row->setSpacing((*buttons.begin())->fontMetrics().height() / 2);
  for (QPushButton* button : buttons) row->addWidget(button);
  row->addStretch();
  return row;
}

QHBoxLayout* LastFileNameRow() {
  auto* name = new QLineEdit;
  name->setObjectName(ToQString(kLastFileNameBox));
  name->setReadOnly(true);
  name->setToolTip(QObject::tr("A file's name; it shows no answer"));
  name->setMaximumWidth(name->fontMetrics().horizontalAdvance(QString(kNoteLength, u'0')));
  auto* row = new QHBoxLayout;
  row->setSpacing(name->fontMetrics().height());
  auto* label =
      new ControlLabel("lblLastFileName", QObject::tr("Last Saved under fileName:"), name);
  label->setWordWrap(false);
  row->addWidget(label, 0, Qt::AlignTop);
  row->addWidget(name, 1);
  row->addStretch();
  return row;
}

/// What every table says of itself.
void Describe(GridWidget& grid, const QString& name, std::span<const std::string_view> units) {
  grid.setAccessibleName(name);
  grid.SetEmptyText(QObject::tr("Drop a .s2p or .csv here, press Ctrl+V, or Fill Column ..."));
  for (int column = 1; const std::string_view unit : units) {
    grid.SetColumnTip(column++, ToQString(unit));
  }
}

QLabel* MakeKeysHint(std::string_view name) {
  return MakeText(name, QObject::tr("Enter keeps what was typed, Esc drops it."));
}

/// The grid at its own width, and what belongs to it beside it, or under it where the page is
/// narrow.
class GridAndHints final : public QWidget {
 public:
  GridAndHints(GridWidget* grid, std::initializer_list<QWidget*> column)
      : both_(new QBoxLayout(QBoxLayout::LeftToRight, this)) {
    const int line = grid->fontMetrics().height();
    both_->setContentsMargins(0, 0, 0, 0);
    both_->setSpacing(line);
    both_->addWidget(grid);
    auto* side = new QVBoxLayout;
    side->setSpacing(line);
    for (QWidget* widget : column) {
      const bool isButton = qobject_cast<QPushButton*>(widget) != nullptr;
      side->addWidget(widget, 0, isButton ? Qt::AlignLeft : Qt::Alignment());
    }
    side->addStretch();
    both_->addLayout(side);
    Place(false);
  }

 protected:
  void resizeEvent(QResizeEvent* event) override {
    QWidget::resizeEvent(event);
    constexpr int kNarrow = 44;  // in heights of the font
    Place(width() < kNarrow * fontMetrics().height());
  }

 private:
  void Place(bool isUnder) {
    both_->setDirection(isUnder ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    // The spare room is the grid's height, or the width of what stands beside it.
    both_->setStretch(0, isUnder ? 1 : 0);
    both_->setStretch(1, isUnder ? 0 : 1);
  }

  QBoxLayout* both_;
};

}  // namespace

Page* MakeStartPage() {
  auto* page = new Page;
  page->AddWhole(
      MakeText("lblInstructions1",
               QObject::tr("Instructions: Answer following questions; Save your responses into a "
                           "file for later retrieval; and, submit responses for execution.")));
  page->AddGap();
  page->AddHeaders({MakeHeader("lblHeader1a", QObject::tr("Responses")),
                    MakeHeader("lblHeader1b", QObject::tr("Questions"))});
  AddQuestions(*page, Tab::start);
  page->AddGap();
  page->AddWhole(LastFileNameRow());
  page->AddStretch();
  return page;
}

Page* MakePolesAndZerosPage() {
  auto* page = new Page;
  page->AddWhole(MakeNormalizedNote("lblNote2"));
  AddQuestions(*page, Tab::polesAndZeros);
  page->AddStretch();
  return page;
}

Page* MakeMiscPage() {
  auto* page = new Page;
  page->AddWhole(MakeNormalizedNote("lblNote3"));
  AddQuestions(*page, Tab::misc);
  page->AddGap();
  for (const NoteBox& note : kNoteBoxes) {
    AnswerEdit* box = MakeBox(note.name, note.defaultText, kNoteLength, true);
    box->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    // On a narrow page they hold the notes all the same.
    box->setMinimumWidth(box->sizeHint().width() / 3);
    box->setAccessibleName(ToQString(note.name));
    box->setToolTip(QObject::tr("Any text; the run does not use it"));
    if (&note == kNoteBoxes.data()) {
      page->AddWhole(
          new ControlLabel("lblKeepNotes", QObject::tr("20. » Keep notes below ..."), box));
    }
    page->AddWhole(box);
  }
  page->AddStretch();
  return page;
}

Page* MakePassbandPage(GridWidget* passData, TableNote* note) {
  auto* page = new Page;
  AddQuestions(*page, Tab::passbandData);
  Describe(*passData, QObject::tr("Passband data"), kPassbandUnits);
  page->AddWhole(
      new GridAndHints(
          passData,
          {MakeText("lblGridHint1",
                    QObject::tr("Use Up && Down Arrow keys to enter/edit X && Y data values.")),
           MakeText(
               "lblGridHint2",
               QObject::tr("After/during edit use the 'Esc'ape key then Left or Right arrow keys "
                           "to move between columns.")),
           MakeKeysHint("lblGridHint3"),
           MakeButton("cmdClearPassData", QObject::tr("&Clear Columns")), note}),
      1);
  return page;
}

Page* MakeDelayPage(GridWidget* delayData, TableNote* note) {
  auto* page = new Page;
  Describe(*delayData, QObject::tr("Delay data"), kDelayUnits);
  page->AddWhole(
      new GridAndHints(delayData,
                       {MakeKeysHint("lblDelayHint"),
                        MakeButton("cmdClearDelayData", QObject::tr("Cle&ar Columns")), note}),
      1);
  return page;
}

Page* MakeSolverPage() {
  auto* page = new Page(3);
  page->SetLeftEdge(WidestResponse());
  page->AddWhole(
      MakeText("lblSolverInstruction",
               QObject::tr("For a definition of the following Solver control variables read the "
                           "'Manual.rtf' file.")));
  page->AddGap();
  page->AddHeaders({MakeHeader("", QObject::tr("Responses")),
                    MakeHeader("lblDefaultValues", QObject::tr("Default Values")),
                    MakeHeader("lblControlQuestions", QObject::tr("Control Questions"))});
  int number = 0;
  for (const SolverQuestion& question : kSolverQuestions) {
    const std::string index = std::to_string(++number);
    AnswerEdit* box =
        MakeBox(question.name, question.designText, kSolverLength, question.selectsAll);
    box->setToolTip(ToQString(question.tip));
    auto* label = new ControlLabel("SolvQuestion" + index, WithLineBreak(question.label), box);
    page->AddRow(
        {box, new ControlLabel("DefAnswer" + index, ToQString(question.defaultLabel), box), label});
  }
  page->AddGap();
  page->AddWhole(ButtonRow({MakeButton("cmdEditSolver", QObject::tr("&Edit Defaults")),
                            MakeButton("cmdUseDefSolver", QObject::tr("&Use Defaults"))}));
  page->AddStretch();
  return page;
}

Page* MakeRunPage() {
  auto* page = new Page;
  page->AddHeaders({MakeHeader("lblRun", QObject::tr("What will be run"))});
  for (const auto& [name, caption] :
       {std::pair("RunFileName", QObject::tr("Response file:")),
        {"RunFolder", QObject::tr("Folder:")},
        {"RunChanges", QObject::tr("Changed since it was opened\n(New, Open and runs ask):")}}) {
    QLabel* label = MakeText("", caption);
    label->setWordWrap(false);
    page->AddRow({label, MakeText(name, "")});
  }
  page->AddGap();
  QHBoxLayout* submit = ButtonRow({MakeButton("cmdSubmit", QObject::tr("&Submit Batch Run"))});
  submit->insertWidget(1, MakeText("RunState", ""), 1);
  page->AddWhole(submit);
  page->AddGap();
  page->AddWhole(MakeText(
      "lblRunHint",
      QObject::tr("The run goes on in a program of its own. When it has ended, View > Last "
                  "Output shows its report.")));
  auto* runs = new QWidget;  // filled by who keeps the runs
  runs->setObjectName("runsPlace");
  new QVBoxLayout(runs);
  runs->layout()->setContentsMargins(0, 0, 0, 0);
  page->AddWhole(runs, 1);
  return page;
}

}  // namespace polefit
