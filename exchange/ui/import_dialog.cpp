#include "exchange/ui/import_dialog.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QTableView>
#include <QVBoxLayout>
#include <cmath>

#include "exchange/read/number_text.h"
#include "exchange/ui/import_dialog_parts.h"
#include "exchange/ui/points_view.h"
#include "widgets/controls.h"

namespace polefit {

namespace {

/// Entries before the columns of a box; FillColumns numbers them from here down.
constexpr int kFirstEntry = -1;
constexpr int kSecondEntry = -2;

constexpr QSize kUsualSize(760, 520);
/// The height of the letters that this is for, in pixels.
constexpr double kUsualLetters = 17;
/// Of the screen; the rest is for the window's frame.
constexpr double kLargestPart = .92;

/// What n is when the kind of thinning has just been chosen.
constexpr int kUsualStep = 2;
constexpr int kUsualPoints = 200;

enum Thinning { kAllRows, kEveryNth, kPointsLinear, kPointsLogarithmic };

/// An empty limit is none.
double Limit(const QLineEdit& box, double none) {
  const double number = CellNumber(box.text().trimmed().toStdString(), '.');
  return std::isnan(number) ? none : number;
}

template <typename Value>
Value DataOf(const QComboBox& box) {
  return static_cast<Value>(box.currentData().toInt());
}

}  // namespace

ImportDialog::ImportDialog(ImportPlan plan, const FormCells& form, Reader reader, QWidget* parent)
    : QDialog(parent), plan_(std::move(plan)), form_(form), reader_(std::move(reader)) {
  setObjectName("frmImport");
  setWindowTitle(tr("Import Points of %1").arg(ToQString(plan_.source.name)));
  auto* const rows = new QVBoxLayout(this);
  auto* const halves = new QHBoxLayout;
  halves->addWidget(BuildChoices(), 5);
  halves->addWidget(BuildPreview(), 6);
  rows->addLayout(halves, 1);
  rows->addWidget(BuildStart());
  summary_ = new QLabel;
  summary_->setObjectName("lblImportSummary");
  summary_->setWordWrap(true);
  auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
  ok_ = buttons->button(QDialogButtonBox::Ok);
  ok_->setObjectName("cmdImport");
  auto* const foot = new QHBoxLayout;
  foot->addWidget(summary_, 1);
  foot->addWidget(buttons);
  rows->addLayout(foot);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  ShowPlan();
  ShowPreview();
  const double letters = std::max(1.0, fontMetrics().height() / kUsualLetters);
  resize((kUsualSize * letters)
             .expandedTo(sizeHint())
             .boundedTo(screen()->availableSize() * kLargestPart));
  ok_->setFocus();
}

QWidget* ImportDialog::BuildChoices() {
  auto* const choices = new QWidget;
  auto* const rows = new QVBoxLayout(choices);
  rows->setContentsMargins(0, 0, 0, 0);
  role_ = MakeChoice("cboImportRole", tr("What the points are for"));
  role_->addItem(tr("the response to be modelled"), static_cast<int>(Role::model));
  role_->addItem(tr("what I have, to be equalised"), static_cast<int>(Role::equalise));
  role_->addItem(tr("what I want"), static_cast<int>(Role::want));
  auto* const first = new QFormLayout;
  AddChoice(*first, tr("These points &are:"), role_);
  rows->addLayout(first);
  rows->addWidget(BuildWhat());
  rows->addWidget(BuildRows());
  rows->addWidget(BuildFile());
  rows->addStretch();
  for (QComboBox* const box : choices->findChildren<QComboBox*>()) {
    connect(box, &QComboBox::activated, this, &ImportDialog::TakeChoices);
  }
  for (QSpinBox* const box : choices->findChildren<QSpinBox*>()) {
    connect(box, &QSpinBox::valueChanged, this, &ImportDialog::TakeChoices);
  }
  for (QCheckBox* const box : choices->findChildren<QCheckBox*>()) {
    connect(box, &QCheckBox::clicked, this, &ImportDialog::TakeChoices);
  }
  for (QLineEdit* const box : {from_, to_}) {
    connect(box, &QLineEdit::textEdited, this, &ImportDialog::TakeChoices);
  }
  // Small screens and large letters: the choices scroll, the line and OK stay.
  auto* const area = new QScrollArea;
  area->setFrameShape(QFrame::NoFrame);
  area->setWidgetResizable(true);
  area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  area->setWidget(choices);
  area->setMinimumWidth(choices->minimumSizeHint().width() +
                        style()->pixelMetric(QStyle::PM_ScrollBarExtent));
  return area;
}

QWidget* ImportDialog::BuildStart() {
  auto* const line = new QWidget;
  auto* const columns = new QHBoxLayout(line);
  columns->setContentsMargins(0, 0, 0, 0);
  startsProblem_ = new QCheckBox(tr("Start a &new problem"));
  startsProblem_->setObjectName("chkImportNew");
  startsProblem_->setToolTip(tr("Also set the answers that follow from the points"));
  frequencies_ = MakeChoice("cboImportFrequencies", tr("Which frequencies the table has then"));
  frequencies_->addItem(tr("frequencies of the file"), static_cast<int>(Frequencies::file));
  frequencies_->addItem(tr("frequencies of the table"), static_cast<int>(Frequencies::table));
  frequencies_->addItem(tr("add to the table"), static_cast<int>(Frequencies::both));
  frequencies_->setAccessibleName(tr("Frequencies"));
  answers_ = new QLabel;
  answers_->setObjectName("lblImportAnswers");
  answers_->setWordWrap(true);
  columns->addWidget(startsProblem_);
  columns->addWidget(frequencies_);
  columns->addWidget(answers_, 1);
  connect(startsProblem_, &QCheckBox::clicked, this, &ImportDialog::TakeChoices);
  connect(frequencies_, &QComboBox::activated, this, &ImportDialog::TakeChoices);
  return line;
}

QGroupBox* ImportDialog::BuildWhat() {
  auto* const group = new QGroupBox(tr("What"));
  what_ = new QFormLayout(group);
  frequency_ = MakeChoice("cboImportFrequency", tr("The column of the frequencies"));
  unit_ = MakeChoice("cboImportUnit", tr("The unit of the frequencies"));
  for (const FrequencyUnit unit : {FrequencyUnit::hertz, FrequencyUnit::kilohertz,
                                   FrequencyUnit::megahertz, FrequencyUnit::gigahertz}) {
    unit_->addItem(ToQString(NameOf(unit)), static_cast<int>(unit));
  }
  value_ = MakeChoice("cboImportValue", tr("The column or the parameter of the values"));
  kind_ = MakeChoice("cboImportKind", tr("What the values are"));
  kind_->addItem(tr("linear"), static_cast<int>(ValueKind::linear));
  kind_->addItem(tr("dB"), static_cast<int>(ValueKind::decibel));
  kind_->addItem(tr("power dB"), static_cast<int>(ValueKind::powerDecibel));
  kind_->addItem(tr("magnitude + angle"), static_cast<int>(ValueKind::magnitudeAngle));
  kind_->addItem(tr("real + imaginary"), static_cast<int>(ValueKind::realImaginary));
  second_ = MakeChoice("cboImportSecond", tr("The column of the imaginary part"));
  other_ = MakeChoice("cboImportOther", tr("Where the other one of Yin and Yout comes from"));
  weight_ = MakeChoice("cboImportWeight", tr("The column of the weights"));
  delay_ = MakeChoice("cboImportDelay", tr("Where a delay comes from"));
  delayUnit_ = MakeChoice("cboImportDelayUnit", tr("The unit of the delay"));
  for (const DelayUnit unit : {DelayUnit::seconds, DelayUnit::milliseconds, DelayUnit::microseconds,
                               DelayUnit::nanoseconds, DelayUnit::picoseconds}) {
    delayUnit_->addItem(ToQString(NameOf(unit)), static_cast<int>(unit));
  }
  AddChoice(*what_, tr("&Frequency:"), frequency_, unit_);
  AddChoice(*what_, tr("&Values:"), value_, kind_);
  AddChoice(*what_, tr("&Imaginary:"), second_);
  otherLabel_ = AddChoice(*what_, tr("&Yin:"), other_);
  AddChoice(*what_, tr("&Weight:"), weight_);
  AddChoice(*what_, tr("&Delay:"), delay_, delayUnit_);
  grounds_ = new QLabel;
  grounds_->setObjectName("lblImportGuess");
  grounds_->setWordWrap(true);
  grounds_->setForegroundRole(QPalette::PlaceholderText);
  what_->addRow(grounds_);
  return group;
}

QGroupBox* ImportDialog::BuildRows() {
  auto* const group = new QGroupBox(tr("Rows"));
  auto* const rows = new QFormLayout(group);
  from_ = new QLineEdit;
  from_->setObjectName("txtImportFrom");
  from_->setPlaceholderText(tr("first"));
  from_->setToolTip(tr("The lowest frequency, in MHz"));
  to_ = new QLineEdit;
  to_->setObjectName("txtImportTo");
  to_->setPlaceholderText(tr("last"));
  to_->setToolTip(tr("The highest frequency, in MHz"));
  to_->setAccessibleName(tr("to MHz"));
  AddChoice(*rows, tr("From ... to &MHz:"), from_);
  rows->setWidget(0, QFormLayout::FieldRole, Beside(from_, to_));
  thinning_ = MakeChoice("cboImportThinning", tr("How many rows are kept"));
  thinning_->addItem(tr("all"), kAllRows);
  thinning_->addItem(tr("every n-th"), kEveryNth);
  thinning_->addItem(tr("n points, linear"), kPointsLinear);
  thinning_->addItem(tr("n points, logarithmic"), kPointsLogarithmic);
  thinningCount_ = new QSpinBox;
  thinningCount_->setObjectName("numImportThinning");
  thinningCount_->setRange(2, kMostPoints);
  thinningCount_->setToolTip(tr("n"));
  AddChoice(*rows, tr("&Keep:"), thinning_, thinningCount_);
  smooth_ = new QSpinBox;
  smooth_->setObjectName("numImportSmooth");
  smooth_->setRange(1, 999);
  smooth_->setSingleStep(2);
  smooth_->setSpecialValueText(tr("none"));
  smooth_->setToolTip(tr("So many rows, an odd number, a quadratic is fitted to"));
  normalise_ = new QCheckBox(tr("&largest Yout is 1"));
  normalise_->setObjectName("chkImportNormalise");
  AddChoice(*rows, tr("&Smooth:"), smooth_);
  rows->addRow(QString(), normalise_);
  return group;
}

QGroupBox* ImportDialog::BuildFile() {
  file_ = new QGroupBox(tr("Fil&e: how its text is read"));
  file_->setObjectName("grpImportFile");
  file_->setCheckable(true);
  file_->setToolTip(tr("How the text of the file is read"));
  auto* const inside = new QWidget;
  auto* const rows = new QFormLayout(inside);
  rows->setContentsMargins(0, 0, 0, 0);
  separator_ = MakeChoice("cboImportSeparator", tr("What parts the columns"));
  for (const auto& [text, mark] : {std::pair(tr("tab"), '\t'),
                                   {tr("comma"), ','},
                                   {tr("semicolon"), ';'},
                                   {tr("bar"), '|'},
                                   {tr("blanks"), ' '}}) {
    separator_->addItem(text, static_cast<int>(mark));
  }
  decimalMark_ = MakeChoice("cboImportDecimalMark", tr("What stands before the decimals"));
  decimalMark_->addItem(tr("point"), static_cast<int>('.'));
  decimalMark_->addItem(tr("comma"), static_cast<int>(','));
  headingLine_ = new QSpinBox;
  headingLine_->setObjectName("numImportHeading");
  headingLine_->setRange(0, 999'999);
  headingLine_->setSpecialValueText(tr("none"));
  AddChoice(*rows, tr("Separator:"), separator_);
  AddChoice(*rows, tr("Decimal mark:"), decimalMark_);
  AddChoice(*rows, tr("Heading line:"), headingLine_);
  auto* const box = new QVBoxLayout(file_);
  box->addWidget(inside);
  const auto fold = [this, inside, box](bool isOpen) {
    inside->setVisible(isOpen);
    box->setContentsMargins(isOpen ? 9 : 0, isOpen ? 9 : 0, isOpen ? 9 : 0, isOpen ? 9 : 0);
    file_->setFlat(!isOpen);
    file_->setMaximumHeight(isOpen ? QWIDGETSIZE_MAX : fontMetrics().height() + 8);
  };
  connect(file_, &QGroupBox::toggled, inside, fold);
  const bool isUnsure = !plan_.source.layout.isSure;
  file_->setChecked(isUnsure);
  fold(isUnsure);
  return file_;
}

QWidget* ImportDialog::BuildPreview() {
  auto* const side = new QWidget;
  auto* const rows = new QVBoxLayout(side);
  rows->setContentsMargins(0, 0, 0, 0);
  model_ = new PointsModel(this);
  auto* const table = new QTableView;
  table->setObjectName("tblImportRows");
  table->setAccessibleName(tr("Rows as they arrive"));
  table->setModel(model_);
  table->setTabKeyNavigation(false);
  table->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
  table->horizontalHeader()->setMinimumSectionSize(fontMetrics().horizontalAdvance("0.0000000000"));
  table->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
  table->verticalHeader()->setDefaultAlignment(Qt::AlignRight | Qt::AlignVCenter);
  skipped_ = new QLabel;
  skipped_->setObjectName("lblImportSkipped");
  skipped_->setWordWrap(true);
  diagram_ = new PointsDiagram;
  diagram_->setObjectName("picImport");
  diagram_->setAccessibleName(tr("Diagram of what arrives"));
  rows->addWidget(table, 3);
  rows->addWidget(skipped_);
  rows->addWidget(diagram_, 2);
  return side;
}

void ImportDialog::ShowPlan() {
  isShowing_ = true;
  Choose(*role_, static_cast<int>(plan_.choices.role));
  ShowColumns();
  ShowRows();
  ShowFile();
  startsProblem_->setChecked(plan_.startsProblem);
  Choose(*frequencies_, static_cast<int>(plan_.frequencies));
  isShowing_ = false;
}

void ImportDialog::ShowColumns() {
  const SourceTable& table = plan_.source.table;
  const ImportChoices& choices = plan_.choices;
  FillColumns(*frequency_, table, {}, choices.frequency);
  Choose(*unit_, static_cast<int>(choices.unit));
  value_->clear();
  if (table.parameters.empty()) {
    FillColumns(*value_, table, {}, choices.value.column);
  } else {
    for (const NetworkParameter& parameter : table.parameters) {
      value_->addItem(ToQString(parameter.name), parameter.column);
    }
    Choose(*value_, choices.value.column);
  }
  Choose(*kind_, static_cast<int>(choices.value.kind));
  if (plan_.isKindUnsure) kind_->setCurrentIndex(-1);
  FillColumns(*second_, table, {}, choices.value.second);
  const bool isEqualise = choices.role == Role::equalise;
  otherLabel_->setText(isEqualise ? tr("&Yout:") : tr("&Yin:"));
  FillColumns(*other_, table, {isEqualise ? tr("flat 1") : tr("1"), tr("the table's")},
              choices.other.column != kNoColumn ? choices.other.column
              : plan_.keepsOther                ? kSecondEntry
                                                : kFirstEntry);
  FillColumns(*weight_, table, {tr("1")}, choices.weight);
  const bool isPhase = choices.delaySource == DelaySource::phase;
  FillColumns(*delay_, table, {tr("none"), tr("from the phase")},
              isPhase                                      ? kSecondEntry
              : choices.delaySource == DelaySource::column ? choices.delay
                                                           : kFirstEntry);
  Choose(*delayUnit_, static_cast<int>(choices.delayUnit));
}

void ImportDialog::ShowRows() {
  const RowChoices& rows = plan_.choices.rows;
  thinningCount_->setValue(rows.points > 0 ? rows.points : kUsualPoints);
  Choose(*thinning_, rows.points == 0   ? (rows.every > 1 ? kEveryNth : kAllRows)
                     : rows.logarithmic ? kPointsLogarithmic
                                        : kPointsLinear);
  smooth_->setValue(std::max(1, rows.smooth));
  normalise_->setChecked(rows.normalise);
}

void ImportDialog::ShowFile() {
  file_->setVisible(plan_.source.table.kind == FileKind::delimited);
  Choose(*separator_, plan_.source.layout.layout.separator);
  Choose(*decimalMark_, plan_.source.layout.layout.decimalMark);
  headingLine_->setValue(plan_.source.layout.headingLine);
}

void ImportDialog::TakeChoices() {
  if (isShowing_) return;
  const QObject* const changed = sender();
  const bool isText = changed == separator_ || changed == decimalMark_ || changed == headingLine_;
  if (isText) {
    ReadAgain();
  } else if (changed == role_) {
    ChangeRole(plan_, DataOf<Role>(*role_));
  } else {
    TakeColumns();
    TakeRows();
  }
  plan_.startsProblem = startsProblem_->isChecked();
  plan_.frequencies = DataOf<Frequencies>(*frequencies_);
  if (isText || changed == role_) ShowPlan();
  ShowPreview();
}

void ImportDialog::TakeColumns() {
  ImportChoices& choices = plan_.choices;
  choices.frequency = DataOf<int>(*frequency_);
  choices.unit = DataOf<FrequencyUnit>(*unit_);
  TakeValues();
  const int other = DataOf<int>(*other_);
  plan_.keepsOther = other == kSecondEntry;
  choices.other = {};
  if (other >= 0) {
    const SourceTable& table = plan_.source.table;
    choices.other = {other, GuessKind(table, other).value_or(choices.value.kind)};
  }
  choices.weight = DataOf<int>(*weight_);
  TakeDelay();
}

void ImportDialog::TakeValues() {
  ValueColumn& value = plan_.choices.value;
  const SourceTable& table = plan_.source.table;
  if (!table.parameters.empty()) {
    plan_.parameter = value_->currentText().toStdString();
    ChooseParameter(table, plan_.parameter, value);
    return;
  }
  const int column = DataOf<int>(*value_);
  const bool isOther = column != std::exchange(value.column, column);
  if (isOther) {
    const auto kind = GuessKind(table, column);
    plan_.isKindUnsure = !kind;
    value.kind = kind.value_or(ValueKind::linear);
  } else if (kind_->currentIndex() >= 0) {
    plan_.isKindUnsure = false;
    value.kind = DataOf<ValueKind>(*kind_);
  }
  if (isOther || value.second == kNoColumn) {
    value.second = SecondColumn(table, column, Quantity::imaginary);
  } else {
    value.second = DataOf<int>(*second_);
  }
  Choose(*kind_, static_cast<int>(value.kind));
  if (plan_.isKindUnsure) kind_->setCurrentIndex(-1);
  if (value.second != kNoColumn) Choose(*second_, value.second);
}

void ImportDialog::TakeDelay() {
  ImportChoices& choices = plan_.choices;
  const int delay = DataOf<int>(*delay_);
  if (delay == kFirstEntry) {
    choices.delaySource = DelaySource::none;
  } else if (delay == kSecondEntry) {
    choices.delaySource = DelaySource::phase;
    // Without a phase the delay stays out, and the box says so.
    if (!ChoosePhase(plan_.source.table, choices)) choices.delaySource = DelaySource::none;
  } else {
    const bool isNew = choices.delaySource != DelaySource::column || choices.delay != delay;
    choices.delaySource = DelaySource::column;
    choices.delay = delay;
    choices.delaySecond = kNoColumn;
    choices.delayUnit =
        isNew ? GuessDelayUnit(plan_.source.table, delay, choices.frequency, choices.unit)
              : DataOf<DelayUnit>(*delayUnit_);
    Choose(*delayUnit_, static_cast<int>(choices.delayUnit));
  }
  if (choices.delaySource == DelaySource::none) Choose(*delay_, kFirstEntry);
}

void ImportDialog::TakeRows() {
  RowChoices& rows = plan_.choices.rows;
  rows.from = Limit(*from_, -HUGE_VAL);
  rows.to = Limit(*to_, HUGE_VAL);
  const auto thinning = DataOf<Thinning>(*thinning_);
  if (sender() == thinning_) {
    const QSignalBlocker quiet(thinningCount_);
    thinningCount_->setValue(thinning == kEveryNth ? kUsualStep : kUsualPoints);
  }
  rows.every = thinning == kEveryNth ? thinningCount_->value() : 1;
  rows.points = thinning >= kPointsLinear ? thinningCount_->value() : 0;
  rows.logarithmic = thinning == kPointsLogarithmic;
  rows.smooth = smooth_->value() | 1;
  rows.normalise = normalise_->isChecked();
}

void ImportDialog::ReadAgain() {
  const TextChoices choices = {
      {static_cast<char>(DataOf<int>(*separator_)), static_cast<char>(DataOf<int>(*decimalMark_))},
      headingLine_->value()};
  SourceFile source = reader_(choices);
  source.layout.layout = choices.layout;
  plan_.source = std::move(source);
  ChangeRole(plan_, plan_.choices.role);
}

void ImportDialog::ShowPreview() {
  preview_ = PreviewOf(plan_, form_);
  model_->Show(preview_);
  diagram_->Show(preview_, plan_.choices.role);
  QStringList notes;
  const QString skipped = ToQString(SkippedText(preview_.points.skippedLines));
  if (!skipped.isEmpty()) notes << skipped;
  for (const std::string& note : preview_.points.notes) notes << ToQString(note);
  skipped_->setText(notes.join("\n"));
  skipped_->setVisible(!notes.isEmpty());
  QStringList answers;
  for (const SetAnswer& answer : preview_.answers) {
    answers << tr("%1: %2").arg(ToQString(answer.question), ToQString(answer.value));
  }
  answers_->setText(answers.isEmpty() ? QString() : tr("Sets question ") + answers.join(", "));
  const bool canImport = preview_.reason.empty();
  summary_->setText(ToQString(canImport ? preview_.summary : preview_.reason));
  ok_->setEnabled(canImport);
  const Guess guess = GuessChoices(plan_.source.table, plan_.choices.role);
  QStringList grounds;
  for (const std::string& text : {guess.unitGrounds, guess.kindGrounds}) {
    if (!text.empty()) grounds << ToQString(text);
  }
  grounds_->setText(grounds.join("; "));
  grounds_->setVisible(!grounds.isEmpty());
  const bool isComplex = plan_.choices.value.kind == ValueKind::realImaginary;
  what_->setRowVisible(second_, isComplex && plan_.source.table.parameters.empty());
  const bool isFixed = plan_.source.table.kind != FileKind::delimited;
  for (ChoiceBox* const box : {frequency_, unit_, kind_}) box->SetFixed(isFixed);
  delayUnit_->setEnabled(plan_.choices.delaySource == DelaySource::column);
  thinningCount_->setEnabled(DataOf<int>(*thinning_) != kAllRows);
  frequencies_->setVisible(!plan_.startsProblem && form_.typed.nFreqPoints > 0);
}

}  // namespace polefit
