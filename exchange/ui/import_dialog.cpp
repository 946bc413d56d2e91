#include "exchange/ui/import_dialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QTableView>
#include <QVBoxLayout>
#include <utility>

#include "exchange/ui/import_columns.h"
#include "exchange/ui/import_dialog_parts.h"
#include "exchange/ui/import_rows.h"
#include "exchange/ui/import_text.h"
#include "exchange/ui/points_diagram.h"
#include "exchange/ui/points_view.h"
#include "record/response_record.h"
#include "widgets/controls.h"

namespace polefit {

namespace {

constexpr QSize kUsualSize(760, 520);
/// The height of the letters that this is for, in pixels.
constexpr double kUsualLetters = 17;
/// What the points can be is read whole.
constexpr int kRoleCharacters = 24;
/// Left and right of the text in a cell of the table.
constexpr int kCellMargins = 8;
/// Of the screen; the rest is for the window's frame.
constexpr double kLargestPart = .92;

QLabel* MakeLine(const char* name) {
  auto* line = new QLabel;
  line->setObjectName(name);
  line->setWordWrap(true);
  return line;
}

}  // namespace

ImportDialog::ImportDialog(ImportPlan plan, const FormCells& form, ImportFiles files,
                           QWidget* parent)
    : QDialog(parent), plan_(std::move(plan)), form_(form), files_(std::move(files)) {
  setObjectName("frmImport");
  const QString title = plan_.isOnlyDelay ? tr("Import Delay of %1") : tr("Import Points of %1");
  setWindowTitle(title.arg(ToQString(plan_.source.name)));
  auto* rows = new QVBoxLayout(this);
  auto* halves = new QHBoxLayout;
  halves->addWidget(BuildChoices(), 4);
  halves->addWidget(BuildPreview(), 5);
  rows->addLayout(halves, 1);
  rows->addWidget(BuildStart());
  answers_ = MakeLine("lblImportAnswers");
  rows->addWidget(answers_);
  rows->addWidget(BuildFoot());
  text_->Unfold(!plan_.source.layout.isSure);
  ShowPlan();
  FitScreen();
  // What waits for a choice gets the keys; else Enter is enough.
  QWidget* const first = plan_.isKindUnsure ? findChild<QWidget*>("cboImportKind") : ok_;
  first->setFocus();
}

QWidget* ImportDialog::BuildChoices() {
  auto* choices = new QWidget;
  auto* rows = new QVBoxLayout(choices);
  rows->setContentsMargins(0, 0, 0, 0);
  role_ = MakeChoice("cboImportRole", tr("What the points are for"));
  role_->setMinimumContentsLength(kRoleCharacters);
  role_->addItem(tr("the response to be modelled"), static_cast<int>(Role::model));
  role_->addItem(tr("what I have, to be equalised"), static_cast<int>(Role::equalise));
  role_->addItem(tr("what I want"), static_cast<int>(Role::want));
  connect(role_, &QComboBox::activated, this, &ImportDialog::TakeRole);
  auto* first = new QFormLayout;
  AddChoice(*first, tr("These points &are:"), role_);
  columns_ = new ImportColumnsGroup;
  connect(columns_, &ImportColumnsGroup::changed, this, [this](const auto& take) {
    plan_.isRecalled = false;
    take(plan_);
    columns_->Show(plan_);
    ShowPreview();
  });
  connect(columns_, &ImportColumnsGroup::delayFileWanted, this, &ImportDialog::TakeDelayFile);
  connect(columns_, &ImportColumnsGroup::youtFileWanted, this, &ImportDialog::TakeYoutFile);
  rows_ = new ImportRowsGroup;
  connect(rows_, &ImportRowsGroup::changed, this, [this] {
    plan_.choices.rows = rows_->Choices();
    rows_->Show(plan_);
    ShowPreview();
  });
  text_ = new ImportTextGroup;
  connect(text_, &ImportTextGroup::changed, this, &ImportDialog::TakeText);
  rows->addLayout(first);
  for (QWidget* const group : {static_cast<QWidget*>(columns_), static_cast<QWidget*>(rows_),
                               static_cast<QWidget*>(text_)}) {
    rows->addWidget(group);
  }
  rows->addStretch();
  // Small screens and large letters: the choices scroll, the line and OK stay.
  choices_ = new QScrollArea;
  choices_->setFrameShape(QFrame::NoFrame);
  choices_->setWidgetResizable(true);
  choices_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  choices_->setWidget(choices);
  choices_->setMinimumWidth(choices->minimumSizeHint().width() +
                            style()->pixelMetric(QStyle::PM_ScrollBarExtent));
  return choices_;
}

QWidget* ImportDialog::BuildPreview() {
  auto* side = new QWidget;
  auto* rows = new QVBoxLayout(side);
  rows->setContentsMargins(0, 0, 0, 0);
  model_ = new PointsModel(this);
  table_ = new QTableView;
  table_->setObjectName("tblImportRows");
  table_->setAccessibleName(tr("Rows as they arrive"));
  table_->setModel(model_);
  table_->setTabKeyNavigation(false);
  table_->setWordWrap(false);
  table_->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
  const int column = fontMetrics().horizontalAdvance("0.00000000") + kCellMargins;
  table_->horizontalHeader()->setMinimumSectionSize(column);
  // The usual three columns, the row numbers and a scroll bar.
  table_->setMinimumWidth(3 * column + fontMetrics().horizontalAdvance("00000") +
                          2 * style()->pixelMetric(QStyle::PM_ScrollBarExtent));
  table_->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
  table_->verticalHeader()->setDefaultAlignment(Qt::AlignRight | Qt::AlignVCenter);
  skipped_ = MakeLine("lblImportSkipped");
  diagram_ = new PointsDiagram("picImport", tr("Diagram of what arrives"));
  rows->addWidget(table_, 3);
  rows->addWidget(skipped_);
  rows->addWidget(diagram_, 2);
  return side;
}

QWidget* ImportDialog::BuildStart() {
  auto* line = new QWidget;
  auto* columns = new QHBoxLayout(line);
  columns->setContentsMargins(0, 0, 0, 0);
  startsProblem_ = new QCheckBox(tr("Start a &new problem"));
  startsProblem_->setObjectName("chkImportNew");
  startsProblem_->setToolTip(tr("Also set the answers that follow from the points"));
  frequencies_ = MakeChoice("cboImportFrequencies", tr("Which frequencies the table has then"));
  frequencies_->addItem(tr("frequencies of the table"), static_cast<int>(Frequencies::table));
  frequencies_->addItem(tr("frequencies of the file"), static_cast<int>(Frequencies::file));
  frequencies_->addItem(tr("add to the table"), static_cast<int>(Frequencies::both));
  frequencies_->setSizeAdjustPolicy(QComboBox::AdjustToContents);
  frequencies_->setAccessibleName(tr("Frequencies"));
  setsFreqNorm_ = new QCheckBox;
  setsFreqNorm_->setObjectName("chkImportFreqNorm");
  setsFreqNorm_->setToolTip(tr("The highest frequency where Yout is within 3 dB of its largest"));
  columns->addWidget(startsProblem_);
  columns->addWidget(frequencies_);
  columns->addWidget(setsFreqNorm_);
  columns->addStretch();
  connect(startsProblem_, &QCheckBox::clicked, this, &ImportDialog::TakeStart);
  connect(setsFreqNorm_, &QCheckBox::clicked, this, &ImportDialog::TakeStart);
  connect(frequencies_, &QComboBox::activated, this, &ImportDialog::TakeStart);
  return line;
}

QWidget* ImportDialog::BuildFoot() {
  auto* foot = new QWidget;
  auto* columns = new QHBoxLayout(foot);
  columns->setContentsMargins(0, 0, 0, 0);
  summary_ = MakeLine("lblImportSummary");
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
  ok_ = buttons->button(QDialogButtonBox::Ok);
  ok_->setObjectName("cmdImport");
  columns->addWidget(summary_, 1);
  columns->addWidget(buttons);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  return foot;
}

/// The choices are seen whole where the screen has the room.
void ImportDialog::FitScreen() {
  const double letters = std::max(1.0, fontMetrics().height() / kUsualLetters);
  const QWidget& choices = *choices_->widget();
  const int whole =
      std::max(choices.sizeHint().height(), choices.heightForWidth(choices_->minimumWidth()));
  const int hidden = std::max(0, whole - choices_->sizeHint().height());
  resize((kUsualSize * letters)
             .expandedTo(sizeHint() + QSize(0, hidden))
             .boundedTo(screen()->availableSize() * kLargestPart));
}

void ImportDialog::TakeRole() {
  plan_.isRecalled = false;
  ChangeRole(plan_, static_cast<Role>(role_->currentData().toInt()));
  ShowPlan();
}

void ImportDialog::TakeStart() {
  plan_.startsProblem = startsProblem_->isChecked();
  plan_.setsFreqNorm = setsFreqNorm_->isChecked();
  plan_.frequencies = static_cast<Frequencies>(frequencies_->currentData().toInt());
  ShowPreview();
}

void ImportDialog::TakeText() {
  const TextChoices choices = text_->Choices();
  SourceFile source = files_.readAgain(choices);
  source.layout.layout = choices.layout;
  plan_.source = std::move(source);
  ChangeRole(plan_, plan_.choices.role);
  ShowPlan();
}

void ImportDialog::TakeDelayFile() {
  auto file = files_.chooseOther();
  if (file) TakeDelayFrom(plan_, std::move(*file));
}

void ImportDialog::TakeYoutFile() {
  auto file = files_.chooseOther();
  if (!file) return;
  plan_.otherFile = std::move(*file);
  ChangeOther(plan_, OtherSource::file);
}

void ImportDialog::ShowPlan() {
  Choose(*role_, static_cast<int>(plan_.choices.role));
  columns_->Fill(plan_);
  rows_->Show(plan_);
  text_->setVisible(plan_.source.table.kind == FileKind::delimited);
  text_->Show(plan_.source.layout);
  ShowPreview();
}

void ImportDialog::ShowPreview() {
  preview_ = PreviewOf(plan_, form_);
  model_->Show(preview_, plan_);
  const bool hasWeights =
      plan_.choices.weight != kNoColumn || IsYes(form_.typed.Slot(slot::kUseWeights));
  table_->setColumnHidden(PointsModel::kWeightColumn, !plan_.isOnlyDelay && !hasWeights);
  table_->clearSpans();
  for (const int row : model_->SkippedRows()) table_->setSpan(row, 0, 1, model_->columnCount());
  ShowPoints(preview_, plan_, *diagram_);
  QStringList notes;
  const QString skipped = ToQString(SkippedText(preview_.points.skippedLines));
  if (!skipped.isEmpty()) notes << skipped;
  for (const std::string& note : preview_.points.notes) notes << ToQString(note);
  skipped_->setText(notes.join("\n"));
  skipped_->setVisible(!notes.isEmpty());
  ShowStart();
  ShowWhatIsSet();
  const bool canImport = preview_.reason.empty();
  summary_->setText(ToQString(canImport ? preview_.summary : preview_.reason));
  ok_->setEnabled(canImport);
}

void ImportDialog::ShowStart() {
  const std::string& norm = preview_.problem.freqNorm;
  const bool isOlder = !plan_.startsProblem && !plan_.isOnlyDelay;
  startsProblem_->setVisible(!plan_.isOnlyDelay);
  startsProblem_->setChecked(plan_.startsProblem);
  frequencies_->setVisible(AreFrequenciesOpen(plan_, preview_, form_));
  Choose(*frequencies_, static_cast<int>(plan_.frequencies));
  setsFreqNorm_->setText(tr("&question 5, Freq Norm, becomes %1").arg(ToQString(norm)));
  setsFreqNorm_->setVisible(isOlder && !norm.empty() && norm != form_.typed.Slot(slot::kFreqNorm));
  setsFreqNorm_->setChecked(plan_.setsFreqNorm);
}

void ImportDialog::ShowWhatIsSet() {
  QStringList answers;
  for (const SetAnswer& answer : preview_.answers) {
    answers << tr("%1: %2").arg(ToQString(answer.question), ToQString(answer.value));
  }
  QString text = answers.isEmpty() ? QString() : tr("Sets question ") + answers.join(", ");
  if (!preview_.delayNote.empty()) text += "\n" + ToQString(preview_.delayNote);
  answers_->setText(text);
  answers_->setVisible(!text.isEmpty());
}

}  // namespace polefit
