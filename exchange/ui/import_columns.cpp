#include "exchange/ui/import_columns.h"

#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QStringList>
#include <algorithm>

#include "exchange/fill_templates.h"
#include "exchange/ui/import_dialog_parts.h"
#include "widgets/controls.h"

namespace polefit {

namespace {

/// What the entries of a box stand for that are no columns.
enum Entry {
  kOne = -1,
  kTable = -2,
  kFormula = -3,
  kYoutFile = -4,
  kOtherYoutFile = -5,
  kNoDelay = kNoColumn,
  kPhase = -2,
  kDelayFile = -3,
  kOtherDelayFile = -4
};

constexpr int kUnitCharacters = 3;

template <typename Value>
Value DataOf(const QComboBox& box) {
  return static_cast<Value>(box.currentData().toInt());
}

template <typename Unit>
void AddUnits(QComboBox& box, std::initializer_list<Unit> units) {
  for (const Unit unit : units) box.addItem(ToQString(NameOf(unit)), static_cast<int>(unit));
}

int EntryOf(const ImportPlan& plan) {
  switch (plan.otherSource) {
    case OtherSource::one:
      return kOne;
    case OtherSource::table:
      return kTable;
    case OtherSource::formula:
      return kFormula;
    case OtherSource::file:
      return kYoutFile;
    case OtherSource::column:
      break;
  }
  return plan.choices.other.column;
}

int DelayEntryOf(const ImportPlan& plan) {
  const DelaySource source = plan.choices.delaySource;
  if (source == DelaySource::none) return kNoDelay;
  if (plan.isDelayFromFile) return kDelayFile;
  return source == DelaySource::phase ? kPhase : plan.choices.delay;
}

}  // namespace

ImportColumnsGroup::ImportColumnsGroup() : QGroupBox(tr("What")), rows_(new QFormLayout(this)) {
  using Group = ImportColumnsGroup;
  frequency_ = MakeChoice("cboImportFrequency", tr("The column of the frequencies"));
  unit_ = MakeChoice("cboImportUnit", tr("The unit of the frequencies"));
  AddUnits(*unit_, {FrequencyUnit::hertz, FrequencyUnit::kilohertz, FrequencyUnit::megahertz,
                    FrequencyUnit::gigahertz});
  unit_->setMinimumContentsLength(kUnitCharacters);
  AddChoice(*rows_, tr("&Frequency:"), frequency_, unit_);
  value_ = MakeChoice("cboImportValue", tr("The column or the parameter of the values"));
  kind_ = MakeChoice("cboImportKind", tr("What the values are"));
  kind_->addItem(tr("linear"), static_cast<int>(ValueKind::linear));
  kind_->addItem(tr("dB"), static_cast<int>(ValueKind::decibel));
  kind_->addItem(tr("power dB"), static_cast<int>(ValueKind::powerDecibel));
  kind_->addItem(tr("magnitude + angle"), static_cast<int>(ValueKind::magnitudeAngle));
  kind_->addItem(tr("real + imaginary"), static_cast<int>(ValueKind::realImaginary));
  AddChoice(*rows_, tr("&Values:"), value_, kind_);
  second_ = MakeChoice("cboImportSecond", tr("The column of the imaginary part"));
  AddChoice(*rows_, tr("&Imaginary:"), second_);
  BuildOther();
  weight_ = MakeChoice("cboImportWeight", tr("The column of the weights; it ticks question 3"));
  AddChoice(*rows_, tr("&Weight:"), weight_);
  BuildDelay();
  grounds_ = new QLabel;
  grounds_->setObjectName("lblImportGuess");
  grounds_->setWordWrap(true);
  grounds_->setForegroundRole(QPalette::PlaceholderText);
  rows_->addRow(grounds_);
  Follow(frequency_, &Group::TakeFrequency);
  Follow(unit_, &Group::TakeUnit);
  Follow(value_, &Group::TakeValue);
  Follow(kind_, &Group::TakeKind);
  Follow(second_, &Group::TakeSecond);
  Follow(weight_, &Group::TakeWeight);
}

void ImportColumnsGroup::BuildOther() {
  other_ = MakeChoice("cboImportOther", tr("Where the other one of Yin and Yout comes from"));
  otherLabel_ = AddChoice(*rows_, tr("&Yin:"), other_);
  formula_ = new QLineEdit;
  formula_->setObjectName("txtImportFormula");
  formula_->setToolTip(tr("Yout of f (MHz), x (f / Freq Norm) and yin, as Fill Column takes it"));
  template_ = MakeChoice("cboImportTemplate", tr("Puts a shape there that can be changed"));
  for (const FillTemplate& one : kFillTemplates) template_->addItem(ToQString(one.name));
  AddChoice(*rows_, tr("Fo&rmula:"), formula_, template_);
  Follow(other_, &ImportColumnsGroup::TakeOther);
  Follow(template_, &ImportColumnsGroup::TakeTemplate);
  connect(formula_, &QLineEdit::textEdited, this,
          [this] { Q_EMIT changed([this](ImportPlan& plan) { TakeFormula(plan); }); });
}

void ImportColumnsGroup::BuildDelay() {
  delay_ = MakeChoice("cboImportDelay", tr("Where a delay comes from; it ticks question 1"));
  delayUnit_ = MakeChoice("cboImportDelayUnit", tr("The unit of the delay"));
  AddUnits(*delayUnit_, {DelayUnit::seconds, DelayUnit::milliseconds, DelayUnit::microseconds,
                         DelayUnit::nanoseconds, DelayUnit::picoseconds});
  delayUnit_->setMinimumContentsLength(kUnitCharacters);
  AddChoice(*rows_, tr("&Delay:"), delay_, delayUnit_);
  Follow(delay_, &ImportColumnsGroup::TakeDelay);
  Follow(delayUnit_, &ImportColumnsGroup::TakeDelayUnit);
}

void ImportColumnsGroup::Follow(QComboBox* box, void (ImportColumnsGroup::*take)(ImportPlan&)) {
  connect(box, &QComboBox::activated, this, [this, take] {
    Q_EMIT changed([this, take](ImportPlan& plan) { (this->*take)(plan); });
  });
}

void ImportColumnsGroup::Fill(const ImportPlan& plan) {
  const SourceTable& table = plan.source.table;
  for (QComboBox* const box : {static_cast<QComboBox*>(frequency_), value_, second_}) box->clear();
  FillColumns(*frequency_, table);
  FillColumns(*second_, table);
  for (const NetworkParameter& parameter : table.parameters) {
    value_->addItem(ToQString(parameter.name), parameter.column);
  }
  if (table.parameters.empty()) FillColumns(*value_, table);
  weight_->clear();
  weight_->addItem(tr("1"), kNoColumn);
  FillColumns(*weight_, table);
  FillOther(plan);
  FillDelay(plan);
  Show(plan);
}

void ImportColumnsGroup::FillOther(const ImportPlan& plan) {
  const bool isYout = plan.choices.role == Role::equalise;
  other_->clear();
  other_->addItem(isYout ? tr("flat 1") : tr("1"), kOne);
  other_->addItem(tr("the table's"), kTable);
  if (isYout) other_->addItem(tr("a fill template"), kFormula);
  FillColumns(*other_, plan.source.table);
  if (!isYout) return;
  const std::string& name = plan.otherFile.name;
  if (!name.empty()) other_->addItem(ToQString(name), kYoutFile);
  other_->addItem(tr("another file ..."), kOtherYoutFile);
}

/// Keys that go from entry to entry choose each on the way: what asks for a file stands last, and
/// what cannot be taken is left out.
void ImportColumnsGroup::FillDelay(const ImportPlan& plan) {
  delay_->clear();
  if (plan.isOnlyDelay) return FillColumns(*delay_, plan.source.table);
  delay_->addItem(tr("none"), kNoDelay);
  ImportChoices choices = plan.choices;
  if (ChoosePhase(plan.source.table, choices) || DelayEntryOf(plan) == kPhase) {
    delay_->addItem(tr("from the phase"), kPhase);
  }
  FillColumns(*delay_, plan.source.table);
  const bool hasFile = plan.delayFile.table.Columns() > 0;
  if (hasFile) delay_->addItem(ToQString(plan.delayFile.name), kDelayFile);
  delay_->addItem(tr("another file ..."), kOtherDelayFile);
}

void ImportColumnsGroup::Show(const ImportPlan& plan) {
  const ImportChoices& choices = plan.choices;
  const bool isFixed = plan.source.table.kind != FileKind::delimited;
  const bool isComplex = choices.value.kind == ValueKind::realImaginary;
  const bool hasValues = !plan.isOnlyDelay;
  Choose(*frequency_, choices.frequency);
  Choose(*unit_, static_cast<int>(choices.unit));
  const int parameter = value_->findText(ToQString(plan.parameter));
  if (!plan.parameter.empty() && parameter >= 0) {
    value_->setCurrentIndex(parameter);
  } else {
    Choose(*value_, choices.value.column);
  }
  Choose(*kind_, static_cast<int>(choices.value.kind));
  if (plan.isKindUnsure) kind_->setCurrentIndex(-1);
  Choose(*second_, choices.value.second);
  FillOther(plan);
  otherLabel_->setText(choices.role == Role::equalise ? tr("&Yout:") : tr("&Yin:"));
  Choose(*other_, EntryOf(plan));
  if (formula_->text() != ToQString(plan.formula)) formula_->setText(ToQString(plan.formula));
  Choose(*weight_, choices.weight);
  FillDelay(plan);
  Choose(*delay_, DelayEntryOf(plan));
  Choose(*delayUnit_, static_cast<int>(choices.delayUnit));
  delayUnit_->setEnabled(DelayEntryOf(plan) >= 0);
  for (ChoiceBox* const box : {frequency_, unit_, kind_}) box->SetFixed(isFixed);
  rows_->setRowVisible(value_->parentWidget(), hasValues);
  rows_->setRowVisible(second_, hasValues && isComplex && plan.source.table.parameters.empty());
  rows_->setRowVisible(other_, hasValues);
  rows_->setRowVisible(formula_->parentWidget(),
                       hasValues && plan.otherSource == OtherSource::formula);
  rows_->setRowVisible(weight_, hasValues);
  ShowGrounds(plan);
}

void ImportColumnsGroup::ShowGrounds(const ImportPlan& plan) {
  const Guess guess = GuessChoices(plan.source.table, plan.choices.role);
  QStringList grounds;
  if (!guess.unitGrounds.empty()) grounds << ToQString(guess.unitGrounds);
  if (!plan.isOnlyDelay && !guess.kindGrounds.empty()) grounds << ToQString(guess.kindGrounds);
  grounds_->setText(plan.isRecalled ? tr("as chosen for the last file of this kind")
                                    : tr("guessed: %1").arg(grounds.join("; ")));
  grounds_->setVisible(plan.isRecalled || !grounds.isEmpty());
}

void ImportColumnsGroup::TakeFrequency(ImportPlan& plan) {
  plan.choices.frequency = DataOf<int>(*frequency_);
  const auto column = static_cast<std::size_t>(plan.choices.frequency);
  const auto unit = plan.source.table.columns[column].meaning.frequencyUnit;
  plan.choices.unit = unit.value_or(plan.choices.unit);
}

void ImportColumnsGroup::TakeUnit(ImportPlan& plan) {
  plan.choices.unit = DataOf<FrequencyUnit>(*unit_);
}

void ImportColumnsGroup::TakeValue(ImportPlan& plan) {
  ValueColumn& value = plan.choices.value;
  const SourceTable& table = plan.source.table;
  if (!table.parameters.empty()) {
    plan.parameter = value_->currentText().toStdString();
    ChooseParameter(table, plan.parameter, value);
  } else {
    const int column = DataOf<int>(*value_);
    const auto kind = GuessKind(table, column);
    plan.isKindUnsure = !kind;
    value = {column, kind.value_or(ValueKind::linear),
             SecondColumn(table, column, Quantity::imaginary)};
  }
  const bool isPhase = plan.choices.delaySource == DelaySource::phase;
  if (isPhase && !plan.isDelayFromFile) ChoosePhase(table, plan.choices);
}

void ImportColumnsGroup::TakeKind(ImportPlan& plan) {
  ValueColumn& value = plan.choices.value;
  const SourceTable& table = plan.source.table;
  plan.isKindUnsure = false;
  value.kind = DataOf<ValueKind>(*kind_);
  if (value.kind != ValueKind::realImaginary || value.second != kNoColumn) return;
  value.second = SecondColumn(table, value.column, Quantity::imaginary);
  // Headings that say nothing: the next column is as good a guess as any.
  if (value.second == kNoColumn) value.second = std::min(value.column + 1, table.Columns() - 1);
}

void ImportColumnsGroup::TakeSecond(ImportPlan& plan) {
  plan.choices.value.second = DataOf<int>(*second_);
}

void ImportColumnsGroup::TakeOther(ImportPlan& plan) {
  const int entry = DataOf<int>(*other_);
  if (entry == kOtherYoutFile) {
    Q_EMIT youtFileWanted();
  } else if (entry >= 0) {
    ChangeOther(plan, OtherSource::column);
    const auto kind = GuessKind(plan.source.table, entry);
    plan.choices.other = {entry, kind.value_or(plan.choices.value.kind)};
  } else {
    const OtherSource sources[] = {OtherSource::one, OtherSource::table, OtherSource::formula,
                                   OtherSource::file};
    ChangeOther(plan, sources[-1 - entry]);
    if (entry == kFormula && plan.formula.empty()) TakeTemplate(plan);
  }
}

void ImportColumnsGroup::TakeTemplate(ImportPlan& plan) {
  const FillTemplate& shape =
      kFillTemplates.at(static_cast<std::size_t>(template_->currentIndex()));
  plan.formula = shape.expression(shape.numbers[0].standard, shape.numbers[1].standard);
}

void ImportColumnsGroup::TakeFormula(ImportPlan& plan) {
  plan.formula = formula_->text().toStdString();
}

void ImportColumnsGroup::TakeWeight(ImportPlan& plan) {
  plan.choices.weight = DataOf<int>(*weight_);
}

void ImportColumnsGroup::TakeDelay(ImportPlan& plan) {
  ImportChoices& choices = plan.choices;
  const int entry = DataOf<int>(*delay_);
  if (entry == kOtherDelayFile) {
    Q_EMIT delayFileWanted();
  } else if (entry == kDelayFile) {
    plan.isDelayFromFile = true;
    choices.delaySource = plan.delayChoices.delaySource;
  } else {
    plan.isDelayFromFile = false;
    TakeOwnDelay(entry, plan);
  }
}

void ImportColumnsGroup::TakeOwnDelay(int entry, ImportPlan& plan) {
  ImportChoices& choices = plan.choices;
  choices.delaySource = DelaySource::none;
  if (entry == kPhase) {
    ChoosePhase(plan.source.table, choices);
    choices.delaySource = DelaySource::phase;
  } else if (entry >= 0) {
    choices.delaySource = DelaySource::column;
    choices.delay = entry;
    choices.delaySecond = kNoColumn;
    choices.delayUnit = GuessDelayUnit(plan.source.table, entry, choices.frequency, choices.unit);
  }
}

void ImportColumnsGroup::TakeDelayUnit(ImportPlan& plan) {
  plan.choices.delayUnit = DataOf<DelayUnit>(*delayUnit_);
}

}  // namespace polefit
