#include "plots/ui/orders_dialog.h"

#include <QBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollBar>
#include <QSpinBox>
#include <QTableWidget>
#include <cmath>
#include <utility>

#include "plots/order_diagram.h"
#include "plots/ui/diagram_view.h"
#include "plots/ui/live_curves.h"
#include "plots/units.h"
#include "widgets/controls.h"
#include "widgets/window_size.h"

namespace polefit {

namespace {

constexpr int kFewest = 1;
constexpr int kFirstMost = 12;
constexpr int kFigures = 4;

QStringList Cells(const OrderFit& fit) {
  const auto figure = [](double value) { return ToQString(Figure(value, kFigures)); };
  return {QString::number(fit.poles),
          QString("%1 %2").arg(fit.singles).arg(fit.pairs),
          figure(fit.cost),
          figure(fit.rms),
          std::isnan(fit.decibels) ? QString("-") : figure(fit.decibels),
          fit.criterion ? QString::number(*fit.criterion, 'f', 1) : QString("-")};
}

QTableWidget* MakeTable() {
  auto* table = new QTableWidget(0, 6);
  table->setObjectName("tblOrders");
  table->setAccessibleName(QObject::tr("How well each number of poles fits"));
  table->setHorizontalHeaderLabels({QObject::tr("Poles"), QObject::tr("Question 6"), "F",
                                    QObject::tr("rms"), QObject::tr("Largest dB"), "AICc"});
  table->verticalHeader()->hide();
  table->setSelectionBehavior(QAbstractItemView::SelectRows);
  table->setSelectionMode(QAbstractItemView::SingleSelection);
  table->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table->setTabKeyNavigation(false);
  table->verticalHeader()->setDefaultSectionSize(table->fontMetrics().height() * 3 / 2);
  table->setSizeAdjustPolicy(QAbstractScrollArea::AdjustToContents);
  // Bold headers would fill their columns from edge to edge.
  table->horizontalHeader()->setHighlightSections(false);
  table->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
  return table;
}

}  // namespace

OrdersDialog::OrdersDialog(LiveCurves& live, QWidget* parent)
    : QDialog(parent),
      live_(live),
      record_(live.Record()),
      table_(MakeTable()),
      diagram_(new DiagramView),
      verdict_(MakeText("lblOrders", "")),
      progress_(new QProgressBar),
      most_(new QSpinBox),
      stop_(MakeButton("cmdStopOrders", tr("&Stop"))),
      take_(MakeButton("cmdTakeOrder", tr("&Take"))) {
  setObjectName("frmOrders");
  setWindowTitle(tr("Which Order"));
  Build();
  connect(table_, &QTableWidget::itemSelectionChanged, this, &OrdersDialog::Choose);
  connect(table_, &QTableWidget::cellDoubleClicked, this, &OrdersDialog::Take);
  connect(diagram_, &DiagramView::stopChosen, this,
          [this](std::size_t stop) { table_->selectRow(static_cast<int>(stop)); });
  connect(most_, &QSpinBox::valueChanged, this, &OrdersDialog::Start);
  connect(stop_, &QPushButton::clicked, this, [this] {
    worker_.reset();
    End(std::exchange(fits_, {}));
    verdict_->setText(tr("Stopped."));
  });
  connect(take_, &QPushButton::clicked, this, &OrdersDialog::Take);
  Start();
}

OrdersDialog::~OrdersDialog() {
  worker_.reset();
}

void OrdersDialog::Build() {
  diagram_->setObjectName("DiagramOrders");
  progress_->setAccessibleName(tr("Numbers of poles tried"));
  most_->setObjectName("numMostPoles");
  most_->setRange(kFewest + 1, kMostPolesTried);
  most_->setValue(kFirstMost);
  auto* label = new QLabel(tr("&Up to"));
  label->setBuddy(most_);
  auto* range = new QHBoxLayout;
  range->addWidget(label);
  range->addWidget(most_);
  range->addWidget(new QLabel(tr("poles, each fitted from the points")));
  range->addStretch();
  auto* both = new QHBoxLayout;
  both->addWidget(table_);
  both->addWidget(diagram_, 1);
  auto* close = MakeButton("cmdCloseOrders", tr("&Close"));
  connect(close, &QPushButton::clicked, this, &QDialog::reject);
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(progress_, 1);
  buttons->addStretch();
  for (QPushButton* button : {stop_, take_, close}) buttons->addWidget(button);
  auto* rows = new QVBoxLayout(this);
  rows->addLayout(range);
  rows->addLayout(both, 1);
  rows->addWidget(verdict_);
  rows->addLayout(buttons);
  take_->setDefault(true);
  const int line = fontMetrics().height();
  table_->setMinimumWidth(line * 27);
  diagram_->setMinimumWidth(line * 16);
  ResizeOnScreen(*this, {line * 56, line * 27});
}

void OrdersDialog::Start() {
  worker_.reset();
  fits_ = {};
  table_->setRowCount(0);
  diagram_->Show(OrderDiagram(fits_));
  verdict_->setText(tr("Trying 1 to %1 poles ...").arg(most_->value()));
  progress_->setRange(0, most_->value());
  progress_->setValue(0);
  progress_->show();
  stop_->setEnabled(true);
  take_->setEnabled(false);
  worker_ = std::make_unique<OrdersWorker>(record_, kFewest, most_->value(), [this] {
    // From the worker's thread into this one.
    QMetaObject::invokeMethod(
        this, [this] { ShowNews(); }, Qt::QueuedConnection);
  });
}

/// The word of a worker that was ended finds nothing here, or what its successor has found.
void OrdersDialog::ShowNews() {
  if (!worker_) return;
  // The table first: once it is there, so are all its rows.
  std::optional<OrderTable> table = worker_->TakeTable();
  for (const OrderFit& fit : worker_->TakeFits()) AddFit(fit);
  if (table) End(*std::move(table));
}

void OrdersDialog::AddFit(const OrderFit& fit) {
  fits_.fits.push_back(fit);
  const int row = table_->rowCount();
  table_->insertRow(row);
  int column = 0;
  for (const QString& text : Cells(fit)) {
    auto* cell = new QTableWidgetItem(text);
    cell->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    table_->setItem(row, column++, cell);
  }
  diagram_->Show(OrderDiagram(fits_));
  progress_->setValue(fit.poles);
}

void OrdersDialog::End(OrderTable table) {
  fits_ = std::move(table);
  progress_->hide();
  stop_->setEnabled(false);
  diagram_->Show(OrderDiagram(fits_));
  TellWhatStandsOut();
  Q_EMIT ended();
}

/// The one that stands out is chosen; where none does, none is.
void OrdersDialog::TellWhatStandsOut() {
  if (fits_.best) {
    const auto row = static_cast<int>(*fits_.best);
    QFont bold = table_->font();
    bold.setBold(true);
    for (int column = 0; column < table_->columnCount(); ++column) {
      table_->item(row, column)->setFont(bold);
    }
    const int columns = table_->horizontalHeader()->length() + 2 * table_->frameWidth();
    table_->setMinimumWidth(columns + table_->verticalScrollBar()->sizeHint().width());
    table_->selectRow(row);
    table_->setFocus();
    verdict_->setText(tr("%1 poles stand out: fewer fit worse, and more do not pay (lowest AICc).")
                          .arg(fits_.fits[*fits_.best].poles));
  } else if (!fits_.fits.empty()) {
    verdict_->setText(tr("No number of poles stands out."));
  } else if (!fits_.findings.empty()) {
    verdict_->setText(ToQString(fits_.findings.front().text));
  } else {
    verdict_->setText(tr("No number of poles was tried."));
  }
}

void OrdersDialog::Choose() {
  const int row = table_->currentRow();
  const bool isChosen = row >= 0 && !table_->selectedItems().isEmpty();
  take_->setEnabled(isChosen);
  diagram_->Mark(isChosen ? std::optional<std::size_t>(static_cast<std::size_t>(row))
                          : std::nullopt);
}

void OrdersDialog::Take() {
  const int row = table_->currentRow();
  if (row < 0 || row >= static_cast<int>(fits_.fits.size())) return;
  std::vector<ChangedAnswer> answers;
  int slot = slot::kNPoles;
  for (const std::string& text : fits_.fits[static_cast<std::size_t>(row)].answers) {
    // A list that the fit does not use keeps what is typed.
    if (!text.empty()) answers.push_back({slot, text});
    ++slot;
  }
  live_.TakeAnswers(answers, tr("Which Order"));
  accept();
}

}  // namespace polefit
