#pragma once

#include <QDialog>
#include <QString>
#include <functional>

#include "exchange/import/import_plan.h"

class QCheckBox;
class QComboBox;
class QFormLayout;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QSpinBox;

namespace polefit {

class ChoiceBox;
class PointsDiagram;
class PointsModel;

/// Asks how the points of a file come into the form: left the choices, right what they make of the
/// rows. It shows a plan and puts choices into it; what they come to is worked out by the core.
class ImportDialog final : public QDialog {
  Q_OBJECT

 public:
  /// Reads the source again with other choices for its text.
  using Reader = std::function<SourceFile(const TextChoices&)>;

  ImportDialog(ImportPlan plan, const FormCells& form, Reader reader, QWidget* parent);

  const ImportPlan& Plan() const { return plan_; }
  const ImportPreview& Preview() const { return preview_; }

 private:
  QWidget* BuildChoices();
  QWidget* BuildStart();
  QGroupBox* BuildWhat();
  QGroupBox* BuildRows();
  QGroupBox* BuildFile();
  QWidget* BuildPreview();

  /// Fills the boxes from the plan, without taking their changes for choices.
  void ShowPlan();
  void ShowColumns();
  void ShowRows();
  void ShowFile();
  /// Takes what the boxes say into the plan and shows what comes of it.
  void TakeChoices();
  void TakeColumns();
  void TakeValues();
  void TakeDelay();
  void TakeRows();
  void ReadAgain();
  void ShowPreview();

  ImportPlan plan_;
  const FormCells form_;
  Reader reader_;
  ImportPreview preview_;
  bool isShowing_ = false;

  QComboBox* role_;
  ChoiceBox* frequency_;
  ChoiceBox* unit_;
  QComboBox* value_;
  ChoiceBox* kind_;
  QComboBox* second_;
  QFormLayout* what_;
  QLabel* otherLabel_;
  QComboBox* other_;
  QComboBox* weight_;
  QComboBox* delay_;
  QComboBox* delayUnit_;
  QLabel* grounds_;
  QLineEdit* from_;
  QLineEdit* to_;
  QComboBox* thinning_;
  QSpinBox* thinningCount_;
  QSpinBox* smooth_;
  QCheckBox* normalise_;
  QGroupBox* file_;
  QComboBox* separator_;
  QComboBox* decimalMark_;
  QSpinBox* headingLine_;
  QCheckBox* startsProblem_;
  QComboBox* frequencies_;
  QLabel* answers_;
  QLabel* skipped_;
  QLabel* summary_;
  PointsModel* model_;
  PointsDiagram* diagram_;
  QPushButton* ok_;
};

}  // namespace polefit
