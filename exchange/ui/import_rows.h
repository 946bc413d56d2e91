#pragma once

#include <QGroupBox>

#include "exchange/import/import_plan.h"

class QCheckBox;
class QComboBox;
class QLineEdit;
class QSpinBox;

namespace polefit {

/// Which rows of a file become points.
class ImportRowsGroup final : public QGroupBox {
  Q_OBJECT

 public:
  ImportRowsGroup();

  /// The limits stay as they are typed.
  void Show(const ImportPlan& plan);
  RowChoices Choices() const;

 Q_SIGNALS:
  void changed();

 private:
  void StartThinning();

  QLineEdit* from_;
  QLineEdit* to_;
  QComboBox* thinning_;
  QSpinBox* thinningCount_;
  QSpinBox* smooth_;
  QCheckBox* normalise_;
};

}  // namespace polefit
