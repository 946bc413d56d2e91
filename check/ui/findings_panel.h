#pragma once

#include <QDockWidget>
#include <map>
#include <vector>

#include "form/history.h"
#include "record/finding.h"

class QAction;
class QTableWidget;

namespace polefit {

class GridWidget;
class MainWindow;

/// The list of what stands out in the problem, below the tabs (F7), and its count in the status
/// bar. It is closed at start. Choosing a finding, F8 and Shift+F8 go to the box or cell that it is
/// about. One with an obvious cure has a button for it, and in a table an entry in the context menu
/// of its cell.
class FindingsPanel final : public QDockWidget {
  Q_OBJECT

 public:
  explicit FindingsPanel(MainWindow& form);

  /// The findings in the order of the questions. That of the place where something is being typed
  /// is left out: it is not judged yet. What is open is only counted until the problem has been
  /// submitted.
  void ShowFindings(const std::vector<Finding>& findings, bool isSubmitted);

 private:
  void AddEntries();
  void AddCureEntry(GridWidget& grid);
  void ShowList();
  /// Goes `step` findings on from the last one visited, round again at the end.
  void Visit(int step);
  void GoTo(int index);
  void Mark() const;
  void OfferCure(GridWidget& grid);
  void Apply(const Finding& finding);

  MainWindow& form_;
  QTableWidget* list_;
  std::map<GridWidget*, QAction*> cureEntries_;
  /// Those that are listed.
  std::vector<Finding> findings_;
  int visited_ = -1;
};

}  // namespace polefit
