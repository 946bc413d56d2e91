#pragma once

#include <QWidget>
#include <map>
#include <string>
#include <vector>

#include "exchange/export.h"
#include "runs/kept_run.h"

class QAction;
class QMenu;
class QTreeWidget;
class QTreeWidgetItem;

namespace polefit {

/// What can be done with the runs that are selected.
enum class RunAction { report, compare, takeValues, openInput, pin, note, remove, copyTable };

/// The table of all runs that are kept, with the buttons for what is selected. It decides nothing.
class RunsPane final : public QWidget {
  Q_OBJECT

 public:
  RunsPane();

  /// Shows these runs, the newest first; ticks and selection stay with their runs.
  void ShowRuns(const std::vector<KeptRun>& runs);
  /// The table as text, a tab between the cells.
  QString TableText() const;
  /// The table, then its buttons.
  QList<QWidget*> TabOrder() const;

 Q_SIGNALS:
  void wanted(RunAction action, const std::vector<KeptRun>& runs);
  void copyAsWanted(const ExportFormatName& format, const KeptRun& run);
  /// The runs whose curves are to be drawn.
  void ticked(const std::vector<KeptRun>& runs);
  /// The table comes into sight.
  void seen();

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  void BuildTable();
  void BuildButtons();
  QAction* AddAction(RunAction action, const char* name, const QString& caption,
                     const QString& tip);
  void AddRun(const KeptRun& run, bool isTicked);
  void FollowSelection();
  std::vector<KeptRun> Selected() const;
  std::vector<KeptRun> Ticked() const;
  const KeptRun& RunOf(const QTreeWidgetItem& item) const;

  std::map<QString, KeptRun> runs_;
  std::map<RunAction, QAction*> actions_;
  QTreeWidget* table_;
  QMenu* menu_;
  QMenu* copyAs_ = nullptr;
};

}  // namespace polefit
