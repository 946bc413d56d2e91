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

FrmMain::FrmMain(Guard guard)
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

FrmMain::~FrmMain() {
  // Hiding moves the focus, which must not reach routines and values that are gone.
  program_ = nullptr;
  hide();
}

void FrmMain::Attach(Program& program) {
  program_ = &program;
  program.CurrentGrid = passData_;
}

void FrmMain::BuildTabs() {
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

void FrmMain::ConnectControls() {
  const auto markChanged = [this] { Run([](Program& program) { program.DataChanged = 1; }); };
  for (AnswerEdit* box : findChildren<AnswerEdit*>()) {
    box->installEventFilter(this);
    connect(box, &QLineEdit::textChanged, this, markChanged);
  }
  for (QCheckBox* box : findChildren<QCheckBox*>()) {
    box->installEventFilter(this);
    connect(box, &QCheckBox::toggled, this, markChanged);
  }
  connect(Find<QCheckBox>("chkUseWeights"), &QCheckBox::toggled, this, [this](bool checked) {
    Run([checked](Program& program) { ShowWeightColumn(Grids(program), checked); });
  });
  OnClick("cmdClearPassData", [this](Program& program) { ClearGrid(Grids(program), *passData_); });
  OnClick("cmdClearDelayData",
          [this](Program& program) { ClearGrid(Grids(program), *delayData_); });
  OnClick("cmdEditSolver", [this](Program&) { EditSolverDefaults(*this); });
  OnClick("cmdUseDefSolver", [this](Program&) { UseSolverDefaults(*this); });
  connect(Find<QPushButton>("cmdSubmit"), &QPushButton::clicked, this,
          [this] { Command(&FrmMain::cmdSubmit); });
  connect(tabs_, &QTabWidget::currentChanged, this, &FrmMain::ShowState);
  connect(Find<QLineEdit>("LastFileName"), &QLineEdit::textChanged, this, &FrmMain::ShowState);
}

void FrmMain::ConnectGrid(GridWidget& grid) {
  connect(&grid, &GridWidget::cellsMoved, editor_, &CellEditorBox::FollowCell);
  connect(&grid, &GridWidget::mousePressed, this, [this, &grid] {
    Run([&grid](Program& program) { GridMousePressed(Grids(program), grid); });
  });
  connect(&grid, &GridWidget::cellDoubleClicked, this, [this, &grid] {
    Run([&grid](Program& program) { GridDoubleClicked(Grids(program), grid); });
  });
  connect(&grid, &GridWidget::characterTyped, this, [this, &grid](const QString& character) {
    Run([&](Program& program) {
      GridCharacterTyped(Grids(program), grid, character.toStdString());
    });
  });
}

void FrmMain::ConnectEditor() {
  connect(editor_, &CellEditorBox::keyPressed, this, [this](EditorKey key) {
    Run([key](Program& program) { CellEditorKeyPressed(Grids(program), key); });
  });
  connect(editor_, &CellEditorBox::focusReceived, this,
          [this] { Run([](Program& program) { CellEditorGotFocus(Grids(program)); }); });
  connect(editor_, &CellEditorBox::focusLeft, this,
          [this] { Run([](Program& program) { CellEditorLostFocus(Grids(program)); }); });
}

void FrmMain::OnClick(const char* button, const std::function<void(Program&)>& action) {
  connect(Find<QPushButton>(button), &QPushButton::clicked, this, [this, action] {
    Run(action);
    ShowState();
  });
}

void FrmMain::Run(const std::function<void(Program&)>& action) {
  if (program_ == nullptr) return;
  if (guard_) {
    guard_([&] { action(*program_); });
  } else {
    action(*program_);
  }
}

void FrmMain::Command(Signal signal) {
  // What stands in the editor belongs to the data that the command saves or asks about.
  Run([](Program& program) { HideCellEditor(Grids(program), false); });
  (this->*signal)();
  ShowState();
}

void FrmMain::ShowState() {
  Run([this](Program& program) {
    // The current file, which Save writes; the file's own line 1 may give another name.
    const QString file = ToQString(program.files.currentFileName);
    setWindowTitle(file.isEmpty() ? "Polefit" : file + " - Polefit");
    Find<QLabel>("RunFileName")->setText(file);
    Find<QLabel>("RunFolder")->setText(ToQString(program.files.currentFolder));
    Find<QLabel>("RunChanges")->setText(program.DataChanged != 0 ? "Yes" : "No");
    Find<QLabel>("lblNoFreqPoints")->setVisible(program.record.nFreqPoints < 1);
    Find<QLabel>("lblNoDelayPoints")->setVisible(program.record.nDelayPoints < 1);
  });
}

bool FrmMain::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusOut &&
      FocusMovesInProgram(static_cast<QFocusEvent*>(event)->reason())) {
    Run([&](Program&) { ApplyRuleOf(*this, watched->objectName().toStdString()); });
  }
  return QMainWindow::eventFilter(watched, event);
}

void FrmMain::closeEvent(QCloseEvent* event) {
  PlaceSettings().setValue("geometry", saveGeometry());
  QMainWindow::closeEvent(event);
  Q_EMIT unloaded();
}

void FrmMain::RestorePlace() {
  resize(kFirstSize);
  restoreGeometry(PlaceSettings().value("geometry").toByteArray());
}

template <typename Widget>
Widget* FrmMain::Find(std::string_view control) const {
  const auto found = controls_.find(control);
  auto* widget = found == controls_.end() ? nullptr : qobject_cast<Widget*>(found->second);
  Q_ASSERT_X(widget != nullptr, "frmMain", "no control of this name and kind");
  return widget;
}

std::string FrmMain::Text(std::string_view control) const {
  return Find<QLineEdit>(control)->text().toStdString();
}

void FrmMain::SetText(std::string_view control, const std::string& text) {
  auto* box = Find<QLineEdit>(control);
  box->setText(ToQString(text));
  box->setCursorPosition(0);
}

bool FrmMain::IsChecked(std::string_view control) const {
  return Find<QCheckBox>(control)->isChecked();
}

void FrmMain::SetChecked(std::string_view control, bool checked) {
  Find<QCheckBox>(control)->setChecked(checked);
}

bool FrmMain::IsEnabled(std::string_view control) const {
  return Find<QWidget>(control)->isEnabled();
}

void FrmMain::SetEnabled(std::string_view control, bool enabled) {
  Find<QWidget>(control)->setEnabled(enabled);
}

void FrmMain::SetFocus(std::string_view control) {
  auto* widget = Find<QWidget>(control);
  for (int tab = 0; tab < tabs_->count(); ++tab) {
    if (tabs_->widget(tab)->isAncestorOf(widget)) tabs_->setCurrentIndex(tab);
  }
  widget->setFocus();
}

void FrmMain::SelectTab(Tab tab) {
  tabs_->setCurrentIndex(static_cast<int>(tab));
}

GridView& FrmMain::PassData() {
  return *passData_;
}
GridView& FrmMain::DelayData() {
  return *delayData_;
}
CellEditorView& FrmMain::txtCellEditor() {
  return *editor_;
}

}  // namespace polefit
