#include "exchange/ui/fill_dialog.h"

#include <QAction>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QVBoxLayout>
#include <cmath>
#include <utility>

#include "exchange/fill_templates.h"
#include "exchange/ui/points_diagram.h"
#include "form/cells.h"
#include "form/ui/main_window.h"
#include "grids/cell_editor.h"
#include "grids/ui/grid_widget.h"
#include "solver/problem/answers.h"
#include "widgets/controls.h"

namespace polefit {

namespace {

constexpr int kUsualSteps = 20;
constexpr int kDiagramLines = 12;

double NumberIn(const QLineEdit& box) {
  return ParseNumber(box.text().toStdString()).value_or(NAN);
}

/// What a column begins with: what it holds now.
const char* OwnFormula(FillColumn column) {
  switch (column) {
    case FillColumn::frequency:
    case FillColumn::delayFrequency:
      return "f";
    case FillColumn::weight:
      return "1";
    case FillColumn::delay:
      return "tx";
    case FillColumn::yin:
    case FillColumn::yout:
      break;
  }
  return "1";
}

/// Why new frequencies must not be taken, or "".
std::string WhyTooFew(const ResponseRecord& typed, const Fill& fill) {
  if (!fill.grid) return {};
  const int rows = LastTypedRow(typed, IsOfDelayTable(fill.column));
  if (fill.grid->steps + 1 >= rows) return {};
  return "The new frequencies end at row " + std::to_string(fill.grid->steps + 1) +
         ", and the table has " + std::to_string(rows) +
         " typed rows; take more steps or delete the rows first.";
}

}  // namespace

FillDialog::FillDialog(ResponseRecord typed, FillColumn column, QWidget* parent)
    : QDialog(parent), typed_(std::move(typed)) {
  setObjectName("frmFill");
  setWindowTitle(tr("Fill Column"));
  Build();
  column_->setCurrentIndex(static_cast<int>(column));
  const bool isEmpty = LastTypedRow(typed_, IsOfDelayTable(column)) == 0;
  frequencies_->setChecked(isEmpty);
  expression_->setText(OwnFormula(column));
  to_->setText(ToQString(typed_.Slot(slot::kFreqNorm)));
  ShowTemplate();
  Connect();
  Preview();
  expression_->setFocus();
  expression_->selectAll();
}

void FillDialog::Build() {
  column_ = new QComboBox;
  column_->setObjectName("fillColumn");
  // In the order of FillColumn.
  column_->addItems({tr("Frequency"), tr("Yin"), tr("Yout"), tr("Weight"), tr("Delay: frequency"),
                     tr("Delay: tx")});
  expression_ = new QLineEdit;
  expression_->setObjectName("fillExpression");
  expression_->setToolTip(
      tr("f (MHz), x (f / Freq Norm), yin, yout, w, tx, row; + - * / ^, comparisons, pi; sqrt exp "
         "ln log10 sin cos tan abs min max if(c, a, b) dB(v) lin(d) sinc"));
  diagram_ = new PointsDiagram("picFill", tr("Diagram of the column"));
  diagram_->setMinimumHeight(kDiagramLines * fontMetrics().height());
  message_ = MakeText("lblFill", "");
  message_->setMinimumHeight(2 * fontMetrics().lineSpacing());
  message_->setAlignment(Qt::AlignTop);
  auto* lines = new QFormLayout;
  lines->addRow(tr("&Column:"), column_);
  lines->addRow(tr("&Template:"), MakeTemplateRow());
  lines->addRow(tr("Formu&la:"), expression_);
  auto* rows = new QVBoxLayout(this);
  rows->addLayout(lines);
  rows->addWidget(MakeFrequencies());
  rows->addWidget(diagram_, 1);
  rows->addWidget(message_);
  rows->addWidget(MakeButtons());
}

QWidget* FillDialog::MakeTemplateRow() {
  auto* row = new QWidget;
  auto* parts = new QHBoxLayout(row);
  parts->setContentsMargins(0, 0, 0, 0);
  template_ = new QComboBox;
  template_->setObjectName("fillTemplate");
  template_->addItem(tr("Own formula"));
  for (const FillTemplate& one : kFillTemplates) template_->addItem(ToQString(one.name));
  parts->addWidget(template_);
  for (std::size_t i = 0; i < numbers_.size(); ++i) {
    numbers_[i] = new QDoubleSpinBox;
    numbers_[i]->setObjectName(QString("fillNumber%1").arg(i + 1));
    numberNames_[i] = new QLabel;
    numberNames_[i]->setBuddy(numbers_[i]);
    parts->addWidget(numberNames_[i]);
    parts->addWidget(numbers_[i]);
  }
  parts->addStretch();
  row->setFocusProxy(template_);
  return row;
}

QWidget* FillDialog::MakeFrequencies() {
  frequencies_ = new QGroupBox(tr("&New frequencies, MHz"));
  frequencies_->setObjectName("fillGrid");
  frequencies_->setCheckable(true);
  frequencies_->setToolTip(tr("Otherwise the table keeps the frequencies that it has"));
  from_ = new QLineEdit("0");
  to_ = new QLineEdit;
  steps_ = new QSpinBox;
  spacing_ = new QComboBox;
  steps_->setRange(1, kMostPoints - 1);
  steps_->setValue(kUsualSteps);
  spacing_->addItems({tr("linear steps"), tr("logarithmic steps")});
  auto* row = new QHBoxLayout(frequencies_);
  for (const auto& [caption, box, name] :
       {std::tuple<QString, QWidget*, const char*>(tr("F&rom"), from_, "fillFrom"),
        {tr("t&o"), to_, "fillTo"},
        {tr("&in"), steps_, "fillSteps"}}) {
    auto* label = new QLabel(caption);
    label->setBuddy(box);
    box->setObjectName(name);
    row->addWidget(label);
    row->addWidget(box);
  }
  spacing_->setObjectName("fillSpacing");
  spacing_->setAccessibleName(tr("Spacing"));
  row->addWidget(spacing_);
  return frequencies_;
}

QWidget* FillDialog::MakeButtons() {
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel);
  fill_ = buttons->addButton(tr("&Fill"), QDialogButtonBox::AcceptRole);
  fill_->setObjectName("cmdFill");
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  return buttons;
}

void FillDialog::Connect() {
  connect(column_, &QComboBox::currentIndexChanged, this, &FillDialog::Preview);
  connect(template_, &QComboBox::currentIndexChanged, this, &FillDialog::ShowTemplate);
  for (QDoubleSpinBox* number : numbers_) {
    connect(number, &QDoubleSpinBox::valueChanged, this, &FillDialog::PutTemplate);
  }
  connect(expression_, &QLineEdit::textEdited, template_,
          [this] { template_->setCurrentIndex(0); });
  connect(expression_, &QLineEdit::textChanged, this, &FillDialog::Preview);
  connect(frequencies_, &QGroupBox::toggled, this, &FillDialog::Preview);
  connect(from_, &QLineEdit::textChanged, this, &FillDialog::Preview);
  connect(to_, &QLineEdit::textChanged, this, &FillDialog::Preview);
  connect(steps_, &QSpinBox::valueChanged, this, &FillDialog::Preview);
  connect(spacing_, &QComboBox::currentIndexChanged, this, &FillDialog::Preview);
}

void FillDialog::ShowTemplate() {
  const int index = template_->currentIndex();
  for (std::size_t i = 0; i < numbers_.size(); ++i) {
    TemplateNumber number;
    if (index > 0) number = kFillTemplates.at(static_cast<std::size_t>(index - 1)).numbers.at(i);
    numberNames_[i]->setText(ToQString(number.name));
    numberNames_[i]->setVisible(!number.name.empty());
    numbers_[i]->setVisible(!number.name.empty());
    const QSignalBlocker quiet(numbers_[i]);
    numbers_[i]->setDecimals(number.decimals);
    numbers_[i]->setRange(number.least, number.most);
    numbers_[i]->setValue(number.standard);
  }
  PutTemplate();
}

void FillDialog::PutTemplate() {
  const int index = template_->currentIndex();
  if (index == 0) return;
  const FillTemplate& chosen = kFillTemplates.at(static_cast<std::size_t>(index - 1));
  const std::string text = chosen.expression(numbers_[0]->value(), numbers_[1]->value());
  expression_->setText(ToQString(text));
}

Fill FillDialog::Wanted() const {
  Fill fill = {
      static_cast<FillColumn>(column_->currentIndex()), expression_->text().toStdString(), {}};
  if (frequencies_->isChecked()) {
    fill.grid = {NumberIn(*from_), NumberIn(*to_), steps_->value(), spacing_->currentIndex() == 1};
  }
  return fill;
}

void FillDialog::Preview() {
  const Fill fill = Wanted();
  filled_ = CalculateFill(typed_, fill);
  if (filled_.fault.empty()) filled_.fault = WhyTooFew(typed_, fill);
  const bool isGood = filled_.fault.empty();
  ShowCurve();
  fill_->setEnabled(isGood);
  const auto rows = filled_.values.size();
  const QString text = !isGood    ? ToQString(filled_.fault)
                       : rows > 1 ? tr("%1 rows.").arg(rows)
                                  : tr("1 row.");
  message_->setText(text);
  expression_->setAccessibleDescription(isGood ? QString() : text);
}

/// Nothing for a column that cannot be filled.
void FillDialog::ShowCurve() {
  std::vector<QPointF> points;
  for (std::size_t i = 0; filled_.fault.empty() && i < filled_.values.size(); ++i) {
    points.emplace_back(filled_.frequencies[i], filled_.values[i]);
  }
  const auto column = static_cast<FillColumn>(column_->currentIndex());
  const bool isFrequency = column == FillColumn::frequency || column == FillColumn::delayFrequency;
  diagram_->Show(std::move(points), isFrequency                   ? tr("MHz")
                                    : column == FillColumn::delay ? tr("ns")
                                                                  : QString());
}

ResponseRecord FillDialog::Filled() const {
  ResponseRecord filled = typed_;
  if (filled_.fault.empty()) PutFill(filled, Wanted(), filled_);
  return filled;
}

void AddFillEntry(MainWindow& form, Program& program) {
  auto* menu = form.findChild<QMenu*>("mnuEdit");
  auto* before = form.findChild<QAction*>("mnuEditSort");
  auto* entry = new QAction(QObject::tr("Fill Colu&mn ..."), menu);
  entry->setObjectName("mnuEditFillColumn");
  menu->insertAction(before, entry);
  for (GridWidget* grid : form.findChildren<GridWidget*>()) grid->insertAction(before, entry);
  QObject::connect(entry, &QAction::triggered, &form, [&form, &program] {
    HideCellEditor(program.windows.grids, false);
    form.RecordStep(QObject::tr("Edit Cell"));
    const auto* delayData = form.findChild<GridWidget*>("DelayData");
    const auto* passData = form.findChild<GridWidget*>("PassData");
    const int column = delayData->isVisible()  ? delayData->CurrentColumn() + 3
                       : passData->isVisible() ? passData->CurrentColumn() - 1
                                               : static_cast<int>(FillColumn::yout);
    FillDialog dialog(CellsOf(program).typed, static_cast<FillColumn>(column), &form);
    if (dialog.exec() != QDialog::Accepted) return;
    form.ChangeCells(QObject::tr("Fill Column"),
                     [&dialog](FormCells& cells) { cells.typed = dialog.Filled(); });
  });
}

}  // namespace polefit
