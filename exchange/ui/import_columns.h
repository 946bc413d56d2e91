#pragma once

#include <QGroupBox>
#include <functional>

#include "exchange/import/import_plan.h"

class QComboBox;
class QFormLayout;
class QLabel;
class QLineEdit;

namespace polefit {

class ChoiceBox;

/// What the columns of a file are and which of them are taken, each with its kind or unit beside
/// it.
class ImportColumnsGroup final : public QGroupBox {
  Q_OBJECT

 public:
  ImportColumnsGroup();

  /// Fills the boxes with the columns of the plan's table, and shows what is chosen.
  void Fill(const ImportPlan& plan);
  void Show(const ImportPlan& plan);

 Q_SIGNALS:
  /// The user has changed a choice; `take` puts it, and what follows from it, into a plan.
  void changed(const std::function<void(ImportPlan&)>& take);
  void delayFileWanted();
  void youtFileWanted();

 private:
  /// Tells of `box` when the user has chosen in it.
  void Follow(QComboBox* box, void (ImportColumnsGroup::*take)(ImportPlan&));
  void BuildOther();
  void BuildDelay();

  void TakeFrequency(ImportPlan& plan);
  void TakeUnit(ImportPlan& plan);
  void TakeValue(ImportPlan& plan);
  void TakeKind(ImportPlan& plan);
  void TakeSecond(ImportPlan& plan);
  void TakeOther(ImportPlan& plan);
  void TakeTemplate(ImportPlan& plan);
  void TakeFormula(ImportPlan& plan);
  void TakeWeight(ImportPlan& plan);
  void TakeDelay(ImportPlan& plan);
  void TakeOwnDelay(int entry, ImportPlan& plan);
  void TakeDelayUnit(ImportPlan& plan);

  void FillOther(const ImportPlan& plan);
  void FillDelay(const ImportPlan& plan);
  void ShowGrounds(const ImportPlan& plan);

  QFormLayout* rows_;
  ChoiceBox* frequency_;
  ChoiceBox* unit_;
  QComboBox* value_;
  ChoiceBox* kind_;
  QComboBox* second_;
  QLabel* otherLabel_;
  QComboBox* other_;
  QLineEdit* formula_;
  QComboBox* template_;
  QComboBox* weight_;
  QComboBox* delay_;
  QComboBox* delayUnit_;
  QLabel* grounds_;
};

}  // namespace polefit
