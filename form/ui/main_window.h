#pragma once

#include <QMainWindow>
#include <QPointer>
#include <QTimer>
#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "form/form_view.h"
#include "form/history.h"
#include "form/state.h"
#include "form/table_edits.h"

class QTabWidget;

namespace polefit {

class CellEditorBox;
class EditMenu;
class GridWidget;
class NoticeBar;
class TableNote;
struct MenuEntry;

/// A place on the form with a finding.
struct FormMark {
  FormPlace place;
  bool isFault = false;
  QString text;
};

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
  /// Undo does not reach behind the form as it stands.
  void ForgetSteps();
  /// The name of the answer box that has the focus in this window, or "".
  std::string FocusedBox() const;
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
  void mnuHelpEmail();
  void mnuHelpAbout();
  void cmdSubmit();
  /// Something was changed a while ago, and nothing since.
  void settled();
  /// The window closes, by its close box or by File > Exit.
  void unloaded();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  bool focusNextPrevChild(bool next) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  using Signal = void (MainWindow::*)();

  void BuildTabs();
  void BuildMenus();
  void ConnectControls();
  void ConnectGrid(GridWidget& grid);
  void ConnectEditor();
  void ConnectNote(TableNote& note, Table table);
  void ShowTableNotes();
  void OnClick(const char* button, const std::function<void(Program&)>& action);
  /// Runs `action` under the guard, once there are values to work on.
  void Run(const std::function<void(Program&)>& action);
  /// The same, and makes a step of a cell that it has changed.
  void RunInTable(const std::function<void(Program&)>& action);
  void Choose(const MenuEntry& entry);
  /// Does what a notice offers, as one step.
  void Decide(const std::function<void()>& action);
  void Command(Signal signal, const QString& name, StepKind kind);
  void RestorePlace();
  /// Every control that the routines know by name is there; a missing one ends the start.
  void RequireControls() const;
  /// Notices the control that has the focus. One that the focus has left for another one of this
  /// form is left; a menu or another window takes it only for a while.
  void FollowFocus(QWidget* now);
  void Leave(QWidget* control);
  void ApplyRuleOfFocus();
  void GiveFocusOfPress(QWidget* control);
  template <typename Widget>
  Widget* Find(std::string_view control) const;

  Guard guard_;
  Program* program_ = nullptr;
  QTabWidget* tabs_;
  GridWidget* passData_;
  GridWidget* delayData_;
  CellEditorBox* editor_;
  TableNote* passNote_;
  TableNote* delayNote_;
  NoticeBar* notices_;
  /// Shows what follows the cells once they have been left alone for a while.
  QTimer notesDue_;
  EditMenu* edit_ = nullptr;
  /// The control of this form that had the focus last.
  QPointer<QWidget> focused_;
  std::map<std::string, QWidget*, std::less<>> controls_;
};

}  // namespace polefit
