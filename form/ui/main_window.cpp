#include "form/ui/main_window.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QFocusEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QTabWidget>

#include "form/field_rules.h"
#include "form/solver_settings.h"
#include "form/ui/pages.h"
#include "grids/cell_editor.h"
#include "grids/grid_routines.h"
#include "grids/ui/cell_editor_box.h"
#include "grids/ui/grid_widget.h"
#include "widgets/answer_edit.h"
#include "widgets/controls.h"
#include "widgets/focus_reason.h"

namespace polefit {

namespace {

constexpr QSize kFirstSize(1024, 700);

QSettings PlaceSettings() {
  return QSettings(QSettings::IniFormat, QSettings::UserScope, "Polefit", "window");
}

}  // namespace

MainWindow::MainWindow(Guard guard)
    : guard_(std::move(guard)),
      tabs_(new QTabWidget),
      passData_(new GridWidget("PassData", 5, 6810)),
      delayData_(new GridWidget("DelayData", 3, 5200)),
      editor_(new CellEditorBox) {
  setObjectName("frmMain");
  setWindowTitle("Polefit");
  passData_->SetFormatString("#|^Frequency|^Yin|^Yout|^Weight;#|1|2|3");
  delayData_->SetFormatString("#|^Frequency|^Delay (tx);#|1|2|3");
  BuildMenus();
  BuildTabs();
  ConnectControls();
  ConnectGrid(*passData_);
  ConnectGrid(*delayData_);
  ConnectEditor();
  RestorePlace();
}

MainWindow::~MainWindow() {
  // Hiding moves the focus, which must not reach routines and values that are gone.
  program_ = nullptr;
  hide();
}

void MainWindow::Attach(Program& program) {
  program_ = &program;
}

void MainWindow::BuildTabs() {
  tabs_->setObjectName("CVX_Tabs");
  tabs_->setDocumentMode(true);
  Page* pages[] = {MakeStartPage(),
                   MakePolesAndZerosPage(),
                   MakeMiscPage(),
                   MakePassbandPage(passData_),
                   MakeDelayPage(delayData_),
                   MakeSolverPage(),
                   MakeRunPage()};
  std::size_t tab = 0;
  for (Page* page : pages) tabs_->addTab(page, ToQString(kTabCaptions.at(tab++)));
  setCentralWidget(tabs_);
  // The editor lies on the passband tab at first.
  editor_->setParent(passData_->viewport());
  for (QWidget* widget : findChildren<QWidget*>()) {
    if (!widget->objectName().isEmpty()) controls_[widget->objectName().toStdString()] = widget;
  }
}

void MainWindow::ConnectControls() {
  const auto markChanged = [this] {
    Run([](Program& program) { program.document.DataChanged = 1; });
  };
  for (AnswerEdit* box : findChildren<AnswerEdit*>()) {
    box->installEventFilter(this);
    connect(box, &QLineEdit::textChanged, this, markChanged);
  }
  for (QCheckBox* box : findChildren<QCheckBox*>()) {
    box->installEventFilter(this);
    connect(box, &QCheckBox::toggled, this, markChanged);
  }
  connect(Find<QCheckBox>("chkUseWeights"), &QCheckBox::toggled, this, [this](bool checked) {
    Run([checked](Program& program) { ShowWeightColumn(program.windows.grids, checked); });
  });
  OnClick("cmdClearPassData",
          [this](Program& program) { ClearGrid(program.windows.grids, *passData_); });
  OnClick("cmdClearDelayData",
          [this](Program& program) { ClearGrid(program.windows.grids, *delayData_); });
  OnClick("cmdEditSolver", [this](Program&) { EditSolverDefaults(*this); });
  OnClick("cmdUseDefSolver", [this](Program&) { UseSolverDefaults(*this); });
  connect(Find<QPushButton>("cmdSubmit"), &QPushButton::clicked, this,
          [this] { Command(&MainWindow::cmdSubmit); });
  connect(tabs_, &QTabWidget::currentChanged, this, &MainWindow::ShowState);
  connect(Find<QLineEdit>("LastFileName"), &QLineEdit::textChanged, this, &MainWindow::ShowState);
}

void MainWindow::ConnectGrid(GridWidget& grid) {
  connect(&grid, &GridWidget::cellsMoved, editor_, &CellEditorBox::FollowCell);
  connect(&grid, &GridWidget::mousePressed, this, [this, &grid] {
    Run([&grid](Program& program) { GridMousePressed(program.windows.grids, grid); });
  });
  connect(&grid, &GridWidget::cellDoubleClicked, this, [this, &grid] {
    Run([&grid](Program& program) { GridDoubleClicked(program.windows.grids, grid); });
  });
  connect(&grid, &GridWidget::characterTyped, this, [this, &grid](const QString& character) {
    Run([&](Program& program) {
      GridCharacterTyped(program.windows.grids, grid, character.toStdString());
    });
  });
}

void MainWindow::ConnectEditor() {
  connect(editor_, &CellEditorBox::keyPressed, this, [this](EditorKey key) {
    Run([key](Program& program) { CellEditorKeyPressed(program.windows.grids, key); });
  });
  connect(editor_, &CellEditorBox::focusReceived, this,
          [this] { Run([](Program& program) { CellEditorGotFocus(program.windows.grids); }); });
  connect(editor_, &CellEditorBox::focusLeft, this,
          [this] { Run([](Program& program) { CellEditorLostFocus(program.windows.grids); }); });
}

void MainWindow::OnClick(const char* button, const std::function<void(Program&)>& action) {
  connect(Find<QPushButton>(button), &QPushButton::clicked, this, [this, action] {
    Run(action);
    ShowState();
  });
}

void MainWindow::Run(const std::function<void(Program&)>& action) {
  if (program_ == nullptr) return;
  if (guard_) {
    guard_([&] { action(*program_); });
  } else {
    action(*program_);
  }
}

void MainWindow::Command(Signal signal) {
  // What stands in the editor belongs to the data that the command saves or asks about.
  Run([](Program& program) { HideCellEditor(program.windows.grids, false); });
  (this->*signal)();
  ShowState();
}

void MainWindow::ShowState() {
  Run([this](Program& program) {
    // The current file, which Save writes; the file's own line 1 may give another name.
    const QString file = ToQString(program.files.currentFileName);
    setWindowTitle(file.isEmpty() ? "Polefit" : file + " - Polefit");
    Find<QLabel>("RunFileName")->setText(file);
    Find<QLabel>("RunFolder")->setText(ToQString(program.files.currentFolder));
    Find<QLabel>("RunChanges")->setText(program.document.DataChanged != 0 ? "Yes" : "No");
    Find<QLabel>("lblNoFreqPoints")->setVisible(program.document.record.nFreqPoints < 1);
    Find<QLabel>("lblNoDelayPoints")->setVisible(program.document.record.nDelayPoints < 1);
  });
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusOut &&
      FocusMovesInProgram(static_cast<QFocusEvent*>(event)->reason())) {
    Run([&](Program&) { ApplyRuleOf(*this, watched->objectName().toStdString()); });
  }
  return QMainWindow::eventFilter(watched, event);
}

void MainWindow::closeEvent(QCloseEvent* event) {
  PlaceSettings().setValue("geometry", saveGeometry());
  QMainWindow::closeEvent(event);
  Q_EMIT unloaded();
}

void MainWindow::RestorePlace() {
  resize(kFirstSize);
  restoreGeometry(PlaceSettings().value("geometry").toByteArray());
}

template <typename Widget>
Widget* MainWindow::Find(std::string_view control) const {
  const auto found = controls_.find(control);
  auto* widget = found == controls_.end() ? nullptr : qobject_cast<Widget*>(found->second);
  Q_ASSERT_X(widget != nullptr, "frmMain", "no control of this name and kind");
  return widget;
}

std::string MainWindow::Text(std::string_view control) const {
  return Find<QLineEdit>(control)->text().toStdString();
}

void MainWindow::SetText(std::string_view control, const std::string& text) {
  auto* box = Find<QLineEdit>(control);
  box->setText(ToQString(text));
  box->setCursorPosition(0);
}

bool MainWindow::IsChecked(std::string_view control) const {
  return Find<QCheckBox>(control)->isChecked();
}

void MainWindow::SetChecked(std::string_view control, bool checked) {
  Find<QCheckBox>(control)->setChecked(checked);
}

bool MainWindow::IsEnabled(std::string_view control) const {
  return Find<QWidget>(control)->isEnabled();
}

void MainWindow::SetEnabled(std::string_view control, bool enabled) {
  Find<QWidget>(control)->setEnabled(enabled);
}

void MainWindow::SetFocus(std::string_view control) {
  auto* widget = Find<QWidget>(control);
  for (int tab = 0; tab < tabs_->count(); ++tab) {
    if (tabs_->widget(tab)->isAncestorOf(widget)) tabs_->setCurrentIndex(tab);
  }
  widget->setFocus();
}

void MainWindow::SelectTab(Tab tab) {
  tabs_->setCurrentIndex(static_cast<int>(tab));
}

GridView& MainWindow::PassData() {
  return *passData_;
}
GridView& MainWindow::DelayData() {
  return *delayData_;
}
CellEditorView& MainWindow::txtCellEditor() {
  return *editor_;
}

}  // namespace polefit
