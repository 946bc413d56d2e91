#pragma once

#include <QWidget>

class QButtonGroup;
class QGridLayout;
class QLabel;

namespace polefit {

/// The dialog that runs an example problem. It forwards what is chosen and decides nothing.
class DemoDialog final : public QWidget {
  Q_OBJECT

 public:
  DemoDialog();

  /// What the run button would run.
  void ShowWhatRuns(const QString& text);

 Q_SIGNALS:
  /// The option with this index, from 1, was clicked.
  void examChosen(int index);
  void cmdRunDemo();
  /// The dialog comes up, with no example chosen.
  void shown();
  /// By its button or by the close box.
  void cmdCancelDemo();

 protected:
  /// Return runs the demo, unless a focused button takes it.
  void keyPressEvent(QKeyEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  QGridLayout* BuildTable();
  void AddRow(QGridLayout* table, int index);

  QButtonGroup* exams_;
  QLabel* whatRuns_;
};

}  // namespace polefit
