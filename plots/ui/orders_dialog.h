#pragma once

#include <QDialog>
#include <memory>

#include "plots/orders_worker.h"

class QLabel;
class QProgressBar;
class QPushButton;
class QSpinBox;
class QTableWidget;

namespace polefit {

class DiagramView;
class LiveCurves;

/// Tries numbers of poles for the problem on the form, in a thread of its own, and shows how well
/// each fits, as a table and as a diagram. Take puts the chosen one into questions 6 to 9.
class OrdersDialog final : public QDialog {
  Q_OBJECT

 public:
  OrdersDialog(LiveCurves& live, QWidget* parent);
  ~OrdersDialog() override;

 Q_SIGNALS:
  /// All numbers are tried.
  void ended();

 private:
  void Build();
  void Start();
  void ShowNews();
  void AddFit(const OrderFit& fit);
  void End(OrderTable table);
  void TellWhatStandsOut();
  void Choose();
  void Take();

  LiveCurves& live_;
  ResponseRecord record_;
  OrderTable fits_;
  QTableWidget* table_;
  DiagramView* diagram_;
  QLabel* verdict_;
  QProgressBar* progress_;
  QSpinBox* most_;
  QPushButton* stop_;
  QPushButton* take_;
  std::unique_ptr<OrdersWorker> worker_;
};

}  // namespace polefit
