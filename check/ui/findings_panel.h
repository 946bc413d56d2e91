#pragma once

#include <QDockWidget>
#include <vector>

#include "record/finding.h"

class QListWidget;

namespace polefit {

class MainWindow;

/// The list of what stands out in the problem, below the tabs (F7), and its count in the status
/// bar. It is closed at start. Choosing a finding, F8 and Shift+F8 go to the box or cell that it is
/// about.
class FindingsPanel final : public QDockWidget {
  Q_OBJECT

 public:
  explicit FindingsPanel(MainWindow& form);

  /// The findings in the order of the questions. That of the box with the focus is left out: what
  /// is being typed is not judged yet.
  void ShowFindings(const std::vector<Finding>& findings);

 private:
  void AddEntries();
  /// Goes `step` findings on from the last one visited, round again at the end.
  void Visit(int step);
  void GoTo(int index);
  void Mark() const;

  MainWindow& form_;
  QListWidget* list_;
  std::vector<Finding> findings_;
  int visited_ = -1;
};

}  // namespace polefit
