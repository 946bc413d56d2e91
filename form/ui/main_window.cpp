#include "form/ui/main_window.h"

#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "form/changes.h"
#include "form/field_rules.h"
#include "form/solver_settings.h"
#include "form/ui/edit_menu.h"
#include "form/ui/form_focus.h"
#include "form/ui/menus.h"
#include "form/ui/pages.h"
#include "grids/cell_editor.h"
#include "grids/grid_routines.h"
#include "grids/ui/cell_editor_box.h"
#include "grids/ui/grid_widget.h"
#include "widgets/answer_edit.h"
#include "widgets/controls.h"
#include "widgets/notice_bar.h"
#include "widgets/one_line.h"
#include "widgets/status_line.h"
#include "widgets/window_size.h"
#include "widgets/wrapped_tabs.h"

namespace polefit {

namespace {

constexpr QSize kFirstSize(1400, 800);
/// Longer than between two keys.
constexpr int kNotesMilliseconds = 300;

constexpr const char* kPlaceSetting = "MainWindow";

/// A caption as a name: without its mnemonic and the dots behind it.
QString PlainName(QString caption) {
  return caption.remove('&').remove("...").trimmed();
}

/// What the answer of a box is called: its label's number, or the box's own name.
QString StepNameOf(const QWidget* box) {
  const QString number = box->accessibleName().section(' ', 0, 0).section('.', 0, 0);
  const bool isNumbered = !number.isEmpty() && number.at(0).isDigit();
  return isNumbered ? QObject::tr("Answer %1").arg(number) : box->objectName();
}

}  // namespace

MainWindow::MainWindow(Guard guard)
    : guard_(std::move(guard)),
      tabs_(new WrappedTabs),
      tables_([this](const std::function<void(Program&)>& action) { Run(action); }),
      focus_(new FormFocus(*this)),
      notices_(new NoticeBar([this](const auto& action) { Decide(action); },
                             [this] { return tables_.Editor().IsVisible(); })),
      status_(new StatusLine) {
  setObjectName("frmMain");
  setWindowTitle(tr("Polefit"));
  setStatusBar(status_);
  BuildTabs();
  BuildMenus();
  ConnectControls();
  ConnectFocus();
  connect(&tables_, &FormTables::stepMade, this, [this](const QString& name) { RecordStep(name); });
  connect(&tables_, &FormTables::keepWanted, this, [this](Table table) {
    ChangeCells(tr("Keep Typed Rows"), [table](FormCells& cells) { KeepTypedRows(cells, table); });
  });
  notesDue_.setSingleShot(true);
  notesDue_.setInterval(kNotesMilliseconds);
  connect(&notesDue_, &QTimer::timeout, &tables_, &FormTables::ShowNotes);
  connect(&notesDue_, &QTimer::timeout, this, &MainWindow::ShowTitle);
  connect(&notesDue_, &QTimer::timeout, this, &MainWindow::settled);
}

MainWindow::~MainWindow() {
  // Hiding moves the focus, which must not reach routines and values that are gone.
  program_ = nullptr;
  hide();
}

void MainWindow::Attach(Program& program) {
  program_ = &program;
  edit_->Attach(program);
  notices_->Watch(program.notices);
  RestorePlace();
}

void MainWindow::BuildMenus() {
  QMenu* edit = nullptr;
  for (const MenuContents& contents : MainMenus()) {
    QMenu* menu = menuBar()->addMenu(tr(contents.caption));
    menu->setObjectName(contents.name);
    for (const MenuEntry& entry : contents.entries) {
      if (entry.isSeparated) menu->addSeparator();
      QAction* action = menu->addAction(QIcon::fromTheme(entry.icon), tr(entry.caption));
      action->setObjectName(entry.name);
      action->setShortcut(QKeySequence(entry.shortcut));
      connect(action, &QAction::triggered, this, [this, &entry] { Choose(entry); });
    }
    if (edit == nullptr) edit = menuBar()->addMenu(tr("Edi&t"));
  }
  edit->setObjectName("mnuEdit");
  edit_ = new EditMenu(edit, tables_,
                       [this](const std::function<void(Program&)>& action) { Run(action); });
  connect(edit_, &EditMenu::recorded, &notesDue_, qOverload<>(&QTimer::start));
  connect(edit_, &EditMenu::stepShown, this, [this](const FormPlace& place) {
    ShowPlace(place);
    ShowState();
  });
}

void MainWindow::BuildTabs() {
  tabs_->setObjectName("CVX_Tabs");
  tabs_->setDocumentMode(true);
  Page* pages[] = {MakeStartPage(),
                   MakePolesAndZerosPage(),
                   MakeMiscPage(),
                   MakePassbandPage(&tables_.PassData(), tables_.PassNote()),
                   MakeDelayPage(&tables_.DelayData(), tables_.DelayNote()),
                   MakeSolverPage(),
                   MakeRunPage()};
  std::size_t tab = 0;
  for (Page* page : pages) tabs_->addTab(page, ToQString(kTabCaptions.at(tab++)));
  auto* content = new QWidget;
  auto* rows = new QVBoxLayout(content);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->setSpacing(0);
  rows->addWidget(notices_);
  rows->addWidget(tabs_, 1);
  setCentralWidget(content);
  controls_.Collect(*content);
}

void MainWindow::ConnectControls() {
  const auto markChanged = [this] {
    Run([](Program& program) { program.document.DataChanged = 1; });
    notesDue_.start();
  };
  for (AnswerEdit* box : findChildren<AnswerEdit*>()) {
    focus_->FollowPress(*box);
    connect(box, &QLineEdit::textChanged, this, markChanged);
  }
  for (QCheckBox* box : findChildren<QCheckBox*>()) {
    focus_->FollowPress(*box);
    connect(box, &QCheckBox::toggled, this, markChanged);
    connect(box, &QCheckBox::clicked, this, [this, box] { RecordStep(StepNameOf(box)); });
  }
  connect(controls_.Find<QCheckBox>(BoxName(slot::kUseWeights)), &QCheckBox::toggled, this,
          [this](bool checked) {
            Run([checked](Program& program) { ShowWeightColumn(program.windows.grids, checked); });
          });
  OnClick("cmdClearPassData",
          [this](Program& program) { ClearGrid(program.windows.grids, tables_.PassData()); });
  OnClick("cmdClearDelayData",
          [this](Program& program) { ClearGrid(program.windows.grids, tables_.DelayData()); });
  OnClick("cmdEditSolver", [this](Program&) { EditSolverDefaults(*this); });
  OnClick("cmdUseDefSolver", [this](Program&) { UseSolverDefaults(*this); });
  connect(controls_.Find<QPushButton>("cmdSubmit"), &QPushButton::clicked, this,
          [this] { Command(&MainWindow::cmdSubmit, tr("Submit"), StepKind::takesForm); });
  connect(tabs_, &QTabWidget::currentChanged, this, &MainWindow::ShowState);
  connect(controls_.Find<QLineEdit>(kLastFileNameBox), &QLineEdit::textChanged, this,
          &MainWindow::ShowState);
}

void MainWindow::ConnectFocus() {
  connect(focus_, &FormFocus::left, this, &MainWindow::Leave);
  connect(focus_, &FormFocus::leaving, this, &MainWindow::ApplyRule);
  connect(focus_, &FormFocus::entered, this, [this](const QWidget* control) {
    if (control == &tables_.Editor()) tables_.EditorGotFocus();
  });
}

void MainWindow::OnClick(const char* button, const std::function<void(Program&)>& action) {
  auto* widget = controls_.Find<QPushButton>(button);
  connect(widget, &QPushButton::clicked, this, [this, widget, action] {
    RecordStep(tr("Typing"));
    Run(action);
    RecordStep(PlainName(widget->text()));
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

void MainWindow::Choose(const MenuEntry& entry) {
  Command(entry.chosen, PlainName(tr(entry.caption)), entry.kind);
}

void MainWindow::Command(Signal signal, const QString& name, StepKind kind) {
  // What stands in the editor belongs to the data that the command saves or asks about.
  Run([](Program& program) { HideCellEditor(program.windows.grids, false); });
  RecordStep(tr("Typing"));
  (this->*signal)();
  RecordStep(name, kind);
  ShowState();
}

void MainWindow::Decide(const std::function<void()>& action) {
  RecordStep(tr("Typing"));
  Run([&action](Program&) { action(); });
  RecordStep(tr("What the Notice Offered"), StepKind::replacesDocument);
  ShowState();
}

FormPlace MainWindow::TypingPlace() const {
  const QWidget* focus = QApplication::focusWidget();
  if (focus == nullptr || focus->window() != this) return {};
  if (program_ != nullptr && tables_.Editor().IsVisible()) {
    const GridState& grids = program_->windows.grids;
    return {grids.CurrentGrid == &tables_.PassData() ? "PassData" : "DelayData", grids.editedRow,
            grids.editedColumn};
  }
  const auto* box = qobject_cast<const AnswerEdit*>(focus);
  const bool isTyped = box != nullptr && box->isUndoAvailable();
  return {isTyped ? box->objectName().toStdString() : ""};
}

void MainWindow::ShowMarks(const std::vector<FormMark>& marks) {
  std::map<std::string, const FormMark*> boxes;
  for (const FormMark& mark : marks) {
    if (mark.place.row == 0) boxes.try_emplace(mark.place.control, &mark);
  }
  for (AnswerEdit* box : findChildren<AnswerEdit*>()) {
    const auto mark = boxes.find(box->objectName().toStdString());
    const bool isMarked = mark != boxes.end();
    box->SetMark(isMarked && mark->second->isFault, isMarked ? mark->second->text : QString());
  }
  tables_.ShowMarks(marks);
}

void MainWindow::RecordStep(const QString& name, StepKind kind) {
  Run([&](Program&) { edit_->Record(name, kind); });
}

void MainWindow::ChangeCells(const QString& name, const std::function<void(FormCells&)>& change) {
  Run([](Program& program) { HideCellEditor(program.windows.grids, false); });
  RecordStep(tr("Typing"));
  Run([&change](Program& program) {
    FormCells cells = CellsOf(program);
    change(cells);
    ShowCells(program, cells);
  });
  RecordStep(name);
  tables_.ShowNotes();
}

void MainWindow::ForgetSteps() {
  Run([this](Program&) { edit_->ForgetSteps(); });
}

void MainWindow::ShowPlace(const FormPlace& place) {
  if (place.control.empty()) return;
  SetFocus(place.control);
  auto* grid = qobject_cast<GridWidget*>(controls_.Find<QWidget>(place.control));
  if (grid != nullptr && place.row > 0) grid->SetCurrentCell(place.row, place.column);
}

void MainWindow::ShowState() {
  ShowTitle();
  Run([this](Program& program) {
    const QString file = ToQString(program.files.currentFileName);
    controls_.Find<QLabel>("RunFileName")->setText(file);
    controls_.Find<QLabel>("RunFolder")->setText(ToQString(program.files.currentFolder));
    controls_.Find<QLabel>("RunChanges")
        ->setText(program.document.DataChanged != 0 ? tr("Yes") : tr("No"));
    notesDue_.start();
  });
}

/// The current file, which Save writes; the file's own line 1 may give another name. The star is
/// there while a save would write something else than stands in the file.
void MainWindow::ShowTitle() {
  Run([this](Program& program) {
    const QString file = ToQString(program.files.currentFileName);
    const QString star = Differs(program) ? "*" : "";
    setWindowTitle(file.isEmpty() ? tr("Polefit") : tr("%1%2 - Polefit").arg(file, star));
  });
}

void MainWindow::Leave(QWidget* control) {
  if (control == &tables_.Editor()) return tables_.EditorLostFocus();
  ApplyRule(control);
  if (auto* box = qobject_cast<AnswerEdit*>(control)) {
    RecordStep(StepNameOf(box));
    box->ForgetTyping();
  }
}

/// Kept: what depends on a control changes when the focus leaves it, not at the click.
void MainWindow::ApplyRule(QWidget* control) {
  Run([&](Program&) { ApplyRuleOf(*this, control->objectName().toStdString()); });
}

bool MainWindow::focusNextPrevChild(bool next) {
  // The boxes that the rule wakes are among those that the focus can go to.
  if (QWidget* control = focus_->Control()) ApplyRule(control);
  return QMainWindow::focusNextPrevChild(next);
}

void MainWindow::closeEvent(QCloseEvent* event) {
  Run([this](Program& program) {
    program.host.KeepUserSetting(kPlaceSetting, saveGeometry().toStdString());
  });
  QMainWindow::closeEvent(event);
  Q_EMIT unloaded();
}

void MainWindow::RestorePlace() {
  ResizeOnScreen(*this, kFirstSize);
  restoreGeometry(QByteArray::fromStdString(program_->host.UserSetting(kPlaceSetting)));
}

std::string MainWindow::Text(std::string_view control) const {
  return controls_.Find<QLineEdit>(control)->text().toStdString();
}

void MainWindow::SetText(std::string_view control, const std::string& text) {
  auto* box = controls_.Find<QLineEdit>(control);
  ShowAsItStands(*box, ToQString(text));
  box->setCursorPosition(0);
}

bool MainWindow::IsChecked(std::string_view control) const {
  return controls_.Find<QCheckBox>(control)->isChecked();
}

void MainWindow::SetChecked(std::string_view control, bool checked) {
  controls_.Find<QCheckBox>(control)->setChecked(checked);
}

bool MainWindow::IsEnabled(std::string_view control) const {
  return controls_.Find<QWidget>(control)->isEnabled();
}

void MainWindow::SetEnabled(std::string_view control, bool enabled) {
  controls_.Find<QWidget>(control)->setEnabled(enabled);
}

void MainWindow::SetFocus(std::string_view control) {
  auto* widget = controls_.Find<QWidget>(control);
  for (int tab = 0; tab < tabs_->count(); ++tab) {
    if (tabs_->widget(tab)->isAncestorOf(widget)) tabs_->setCurrentIndex(tab);
  }
  widget->setFocus();
  // Where the program leads to an answer, typing replaces it.
  if (auto* box = qobject_cast<QLineEdit*>(widget)) box->selectAll();
}

void MainWindow::SelectTab(Tab tab) {
  tabs_->setCurrentIndex(static_cast<int>(tab));
}

GridView& MainWindow::PassData() {
  return tables_.PassData();
}
GridView& MainWindow::DelayData() {
  return tables_.DelayData();
}
CellEditorView& MainWindow::txtCellEditor() {
  return tables_.Editor();
}

}  // namespace polefit
