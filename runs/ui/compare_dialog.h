#pragma once

#include <QDialog>
#include <vector>

#include "runs/compare_runs.h"

namespace polefit {

/// Shows two runs side by side, to be read or copied.
class CompareDialog final : public QDialog {
  Q_OBJECT

 public:
  /// `titles` name the runs A and B.
  CompareDialog(const std::vector<ComparedTable>& tables, const QStringList& titles,
                QWidget* parent);
};

}  // namespace polefit
