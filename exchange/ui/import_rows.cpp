#include "exchange/ui/import_rows.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QSpinBox>
#include <cmath>

#include "exchange/read/number_text.h"
#include "exchange/ui/import_dialog_parts.h"
#include "record/response_record.h"

namespace polefit {

namespace {

/// What n is when the kind of thinning has just been chosen.
constexpr int kUsualStep = 2;
constexpr int kUsualPoints = 200;

enum Thinning { kAllRows, kEveryNth, kPointsLinear, kPointsLogarithmic };

/// An empty limit is none.
double Limit(const QLineEdit& box, double none) {
  const double number = CellNumber(box.text().trimmed().toStdString(), '.');
  return std::isnan(number) ? none : number;
}

QLineEdit* MakeLimit(const char* name, const QString& standard, const QString& tip) {
  auto* box = new QLineEdit;
  box->setObjectName(name);
  box->setPlaceholderText(standard);
  box->setToolTip(tip);
  return box;
}

}  // namespace

ImportRowsGroup::ImportRowsGroup() : QGroupBox(tr("Rows")) {
  auto* rows = new QFormLayout(this);
  from_ = MakeLimit("txtImportFrom", tr("first"), tr("The lowest frequency, in MHz"));
  to_ = MakeLimit("txtImportTo", tr("last"), tr("The highest frequency, in MHz"));
  AddChoice(*rows, tr("From ... &to MHz:"), from_, to_);
  from_->setAccessibleName(tr("From MHz"));
  to_->setAccessibleName(tr("to MHz"));
  thinning_ = MakeChoice("cboImportThinning", tr("How many rows are kept"));
  thinning_->addItem(tr("all"), kAllRows);
  thinning_->addItem(tr("every n-th"), kEveryNth);
  thinning_->addItem(tr("n points, linear"), kPointsLinear);
  thinning_->addItem(tr("n points, logarithmic"), kPointsLogarithmic);
  thinningCount_ = new QSpinBox;
  thinningCount_->setObjectName("numImportThinning");
  thinningCount_->setRange(2, kMostPoints);
  thinningCount_->setToolTip(tr("n, from 2 to 32766"));
  AddChoice(*rows, tr("&Keep:"), thinning_, thinningCount_);
  smooth_ = new QSpinBox;
  smooth_->setObjectName("numImportSmooth");
  smooth_->setRange(1, 999);
  smooth_->setSingleStep(2);
  smooth_->setSpecialValueText(tr("none"));
  smooth_->setToolTip(tr("So many rows, an odd number, a quadratic is fitted to"));
  normalise_ = new QCheckBox(tr("&largest Yout is 1"));
  normalise_->setObjectName("chkImportNormalise");
  normalise_->setToolTip(tr("Divide Yout by its largest value"));
  AddChoice(*rows, tr("&Smooth:"), smooth_, normalise_);
  normalise_->setAccessibleName({});
  connect(thinning_, &QComboBox::activated, this, &ImportRowsGroup::StartThinning);
  for (QSpinBox* const box : {thinningCount_, smooth_}) {
    connect(box, &QSpinBox::valueChanged, this, &ImportRowsGroup::changed);
  }
  for (QLineEdit* const box : {from_, to_}) {
    connect(box, &QLineEdit::textEdited, this, &ImportRowsGroup::changed);
  }
  connect(normalise_, &QCheckBox::clicked, this, &ImportRowsGroup::changed);
}

void ImportRowsGroup::StartThinning() {
  {
    const QSignalBlocker quiet(thinningCount_);
    const bool isStep = thinning_->currentData().toInt() == kEveryNth;
    thinningCount_->setValue(isStep ? kUsualStep : kUsualPoints);
  }
  Q_EMIT changed();
}

void ImportRowsGroup::Show(const ImportPlan& plan) {
  const RowChoices& rows = plan.choices.rows;
  const QSignalBlocker quietCount(thinningCount_);
  const QSignalBlocker quietSmooth(smooth_);
  Choose(*thinning_, rows.points == 0   ? (rows.every > 1 ? kEveryNth : kAllRows)
                     : rows.logarithmic ? kPointsLogarithmic
                                        : kPointsLinear);
  const bool isAll = rows.points == 0 && rows.every <= 1;
  if (!isAll) thinningCount_->setValue(rows.points > 0 ? rows.points : rows.every);
  thinningCount_->setEnabled(!isAll);
  smooth_->setValue(std::max(1, rows.smooth));
  normalise_->setChecked(rows.normalise);
  normalise_->setVisible(!plan.isOnlyDelay);
}

RowChoices ImportRowsGroup::Choices() const {
  RowChoices rows;
  rows.from = Limit(*from_, rows.from);
  rows.to = Limit(*to_, rows.to);
  const int thinning = thinning_->currentData().toInt();
  if (thinning == kEveryNth) rows.every = thinningCount_->value();
  if (thinning >= kPointsLinear) rows.points = thinningCount_->value();
  rows.logarithmic = thinning == kPointsLogarithmic;
  rows.smooth = smooth_->value() > 1 ? smooth_->value() | 1 : 0;
  rows.normalise = normalise_->isChecked();
  return rows;
}

}  // namespace polefit
