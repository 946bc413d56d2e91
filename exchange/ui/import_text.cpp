#include "exchange/ui/import_text.h"

#include <QFormLayout>
#include <QSignalBlocker>
#include <QSpinBox>
#include <utility>

#include "exchange/ui/import_dialog_parts.h"

namespace polefit {

ImportTextGroup::ImportTextGroup() : QGroupBox(tr("Fil&e: how its text is read")) {
  setObjectName("grpImportFile");
  setCheckable(true);
  setToolTip(tr("What parts the columns, the decimal mark and the line of the headings"));
  inside_ = new QWidget;
  auto* rows = new QFormLayout(inside_);
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
  headingLine_->setToolTip(tr("The number of the line with the headings"));
  AddChoice(*rows, tr("Se&parator:"), separator_);
  AddChoice(*rows, tr("Decimal &mark:"), decimalMark_);
  AddChoice(*rows, tr("&Heading line:"), headingLine_);
  (new QVBoxLayout(this))->addWidget(inside_);
  connect(this, &QGroupBox::toggled, this, &ImportTextGroup::Unfold);
  for (QComboBox* const box : {separator_, decimalMark_}) {
    connect(box, &QComboBox::activated, this, &ImportTextGroup::changed);
  }
  connect(headingLine_, &QSpinBox::valueChanged, this, &ImportTextGroup::changed);
}

void ImportTextGroup::Show(const TextLayout& layout) {
  const QSignalBlocker quiet(headingLine_);
  Choose(*separator_, layout.layout.separator);
  Choose(*decimalMark_, layout.layout.decimalMark);
  headingLine_->setValue(layout.headingLine);
}

void ImportTextGroup::Unfold(bool isOpen) {
  constexpr int kMargin = 9;
  const int margin = isOpen ? kMargin : 0;
  inside_->setVisible(isOpen);
  layout()->setContentsMargins(margin, margin, margin, margin);
  setFlat(!isOpen);
  // Folded it is its title, without the edge of a frame below.
  setMaximumHeight(isOpen ? QWIDGETSIZE_MAX : fontMetrics().height() + 3);
  setChecked(isOpen);
}

TextChoices ImportTextGroup::Choices() const {
  return {{static_cast<char>(separator_->currentData().toInt()),
           static_cast<char>(decimalMark_->currentData().toInt())},
          headingLine_->value()};
}

}  // namespace polefit
