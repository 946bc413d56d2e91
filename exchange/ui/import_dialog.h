#pragma once

#include <QDialog>

#include "exchange/import/import_plan.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QPushButton;
class QScrollArea;
class QTableView;

namespace polefit {

class ImportColumnsGroup;
class ImportRowsGroup;
class ImportTextGroup;
class PointsDiagram;
class PointsModel;

/// Asks how the points of a file come into the form: left the choices, right what they make of the
/// rows. It shows a plan and puts choices into it; what they come to is worked out by the core.
class ImportDialog final : public QDialog {
  Q_OBJECT

 public:
  ImportDialog(ImportPlan plan, const FormCells& form, ImportFiles files, QWidget* parent);

  const ImportPlan& Plan() const { return plan_; }
  const ImportPreview& Preview() const { return preview_; }

 private:
  QWidget* BuildChoices();
  QWidget* BuildPreview();
  QWidget* BuildStart();
  QWidget* BuildFoot();
  void FitScreen();

  void TakeRole();
  void TakeStart();
  void TakeText();
  void TakeDelayFile();
  void TakeYoutFile();

  /// Fills the boxes from the plan and shows what comes of it.
  void ShowPlan();
  void ShowPreview();
  void ShowStart();
  void ShowWhatIsSet();

  ImportPlan plan_;
  const FormCells form_;
  ImportFiles files_;
  ImportPreview preview_;

  QScrollArea* choices_;
  QComboBox* role_;
  ImportColumnsGroup* columns_;
  ImportRowsGroup* rows_;
  ImportTextGroup* text_;
  QTableView* table_;
  PointsModel* model_;
  PointsDiagram* diagram_;
  QLabel* skipped_;
  QCheckBox* startsProblem_;
  QComboBox* frequencies_;
  QCheckBox* setsFreqNorm_;
  QLabel* answers_;
  QLabel* summary_;
  QPushButton* ok_;
};

}  // namespace polefit
