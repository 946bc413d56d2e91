#pragma once

#include <QMainWindow>
#include <functional>
#include <map>
#include <span>
#include <string>
#include <string_view>

#include "form/form_view.h"
#include "form/state.h"

class QTabWidget;

namespace polefit {

class CellEditorBox;
class GridWidget;
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

 Q_SIGNALS:
  void mnuFileNew();
  void mnuFileOpen();
  void mnuFileSave();
  void mnuFileSaveAs();
  void mnuFileDelete();
  void mnuFileSubmit();
  void mnuViewDemos();
  void mnuViewOutput();
  void mnuDemosRun();
  void mnuHelpManual();
  void mnuHelpEmail();
  void mnuHelpAbout();
  void cmdSubmit();
  /// The window closes, by its close box or by File > Exit.
  void unloaded();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  using Signal = void (MainWindow::*)();

  void Unload() { close(); }
  void BuildTabs();
  void BuildMenus();
  void BuildMenu(const char* name, const char* caption, std::span<const MenuEntry> entries);
  void ConnectControls();
  void ConnectGrid(GridWidget& grid);
  void ConnectEditor();
  void OnClick(const char* button, const std::function<void(Program&)>& action);
  /// Runs `action` under the guard, once there are values to work on.
  void Run(const std::function<void(Program&)>& action);
  void Command(Signal signal);
  /// What follows the program's values and has no notification of its own.
  void RestorePlace();
  template <typename Widget>
  Widget* Find(std::string_view control) const;

  Guard guard_;
  Program* program_ = nullptr;
  QTabWidget* tabs_;
  GridWidget* passData_;
  GridWidget* delayData_;
  CellEditorBox* editor_;
  std::map<std::string, QWidget*, std::less<>> controls_;
};

}  // namespace polefit
