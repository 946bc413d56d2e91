#pragma once

#include <QMainWindow>
#include <QTimer>
#include <functional>
#include <string>
#include <string_view>

#include "form/form_view.h"
#include "form/history.h"
#include "form/state.h"
#include "form/ui/form_tables.h"
#include "form/ui/named_controls.h"

class QTabWidget;

namespace polefit {

class EditMenu;
class FormFocus;
class NoticeBar;
class StatusLine;
struct MenuEntry;

/// The main form: a bag of widgets, each under its given name. It shows state and forwards events.
/// The commands of menus and buttons go out as signals of the same name, with the cell editor's
/// text committed; what belongs to the form itself goes to the routines of form and grids.
class MainWindow final : public QMainWindow, public FormView {
  Q_OBJECT

 public:
  /// Calls what it is given and deals with the run-time errors that come out.
  using Guard = std::function<void(const std::function<void()>&)>;

  explicit MainWindow(Guard guard = {});
  ~MainWindow() override;

  /// Until it has the program's values the form takes no notice of changes.
  void Attach(Program& program);
  /// Shows what stands in no control: the current file, changes, tables without points.
  void ShowState();
  /// Makes a step that Undo takes back of all that has changed since the last one.
  void RecordStep(const QString& name, StepKind kind = StepKind::edit);
  StatusLine& Status() const { return *status_; }
  /// Undo does not reach behind the form as it stands.
  void ForgetSteps();
  /// Does something to what is typed, as one step of this name.
  void ChangeCells(const QString& name, const std::function<void(FormCells&)>& change);
  /// Where something is being typed: the answer box with the focus once it has been changed, or the
  /// cell with the open editor; no control elsewhere.
  FormPlace TypingPlace() const;
  /// Underlines these places and no others.
  void ShowMarks(const std::vector<FormMark>& marks);
  /// Brings a control, or a cell of a table, to the front and gives it the focus.
  void ShowPlace(const FormPlace& place);

  std::string Text(std::string_view control) const override;
  void SetText(std::string_view control, const std::string& text) override;
  bool IsChecked(std::string_view control) const override;
  void SetChecked(std::string_view control, bool checked) override;
  bool IsEnabled(std::string_view control) const override;
  void SetEnabled(std::string_view control, bool enabled) override;
  /// Selects the control's tab first.
  void SetFocus(std::string_view control) override;
  void SelectTab(Tab tab) override;
  GridView& PassData() override;
  GridView& DelayData() override;
  CellEditorView& txtCellEditor() override;

  void Unload() { close(); }

 Q_SIGNALS:
  void mnuFileNew();
  void mnuFileOpen();
  void mnuFileSave();
  void mnuFileSaveAs();
  void mnuFileDelete();
  void mnuFileVersions();
  void mnuFileImport();
  void mnuFileExport();
  void mnuFileSubmit();
  void mnuViewDemos();
  void mnuViewOutput();
  void mnuDemosRun();
  void mnuDemosRestore();
  void mnuHelpManual();
  void mnuHelpPage();
  void mnuHelpEmail();
  void mnuHelpAbout();
  void cmdSubmit();
  /// Something was changed a while ago, and nothing since.
  void settled();
  /// The window closes, by its close box or by File > Exit.
  void unloaded();

 protected:
  bool focusNextPrevChild(bool next) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  using Signal = void (MainWindow::*)();

  void BuildTabs();
  void BuildMenus();
  void ConnectControls();
  void ConnectFocus();
  void OnClick(const char* button, const std::function<void(Program&)>& action);
  /// Runs `action` under the guard, once there are values to work on.
  void Run(const std::function<void(Program&)>& action);
  void Choose(const MenuEntry& entry);
  /// Does what a notice offers, as one step.
  void Decide(const std::function<void()>& action);
  void Command(Signal signal, const QString& name, StepKind kind);
  void ShowTitle();
  void RestorePlace();
  void Leave(QWidget* control);
  void ApplyRule(QWidget* control);

  Guard guard_;
  Program* program_ = nullptr;
  QTabWidget* tabs_;
  FormTables tables_;
  FormFocus* focus_;
  NoticeBar* notices_;
  StatusLine* status_;
  /// Shows what follows the cells once they have been left alone for a while.
  QTimer notesDue_;
  EditMenu* edit_ = nullptr;
  NamedControls controls_;
};

}  // namespace polefit
