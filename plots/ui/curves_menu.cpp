#include "plots/ui/curves_menu.h"

#include <QMenu>
#include <QMenuBar>
#include <functional>

#include "form/ui/main_window.h"
#include "plots/ui/curves_dock.h"
#include "plots/ui/curves_pane.h"
#include "plots/ui/diagram_view.h"
#include "plots/ui/orders_dialog.h"
#include "plots/ui/picture_files.h"
#include "plots/ui/structure_menu.h"

namespace polefit {

namespace {

QAction* AddEntry(QMenu& menu, const char* name, const QString& caption, const char* shortcut,
                  const std::function<void()>& chosen) {
  QAction* action = menu.addAction(caption);
  action->setObjectName(name);
  action->setShortcut(QKeySequence(shortcut));
  QObject::connect(action, &QAction::triggered, &menu, chosen);
  return action;
}

QAction* AddSwitch(QMenu& menu, const char* name, const QString& caption, bool isOn,
                   const std::function<void(bool)>& switched) {
  QAction* action = menu.addAction(caption);
  action->setObjectName(name);
  action->setCheckable(true);
  action->setChecked(isOn);
  QObject::connect(action, &QAction::toggled, &menu, switched);
  return action;
}

void AddViewEntries(MainWindow& form, CurvesDock& dock) {
  auto* view = form.findChild<QMenu*>("mnuView");
  view->addSeparator();
  AddEntry(*view, "mnuViewCurves", QObject::tr("&Curves"), "F6", [&dock] { dock.ShowOrLeave(); });
  auto* hide = new QAction(&form);
  hide->setObjectName("actHideCurves");
  hide->setShortcut(QKeySequence("Shift+F6"));
  QObject::connect(hide, &QAction::triggered, &dock, &QWidget::hide);
  form.addAction(hide);
}

/// Before a menu that has the entries opens: only what is drawn can be taken, copied, saved.
void AllowEntries(const QMenu& fit, CurvesDock& dock) {
  const bool hasPreview = dock.Live().Curves().Previewed().has_value();
  fit.findChild<QAction*>("mnuFitTakePreview")->setEnabled(hasPreview);
  for (const char* const name : {"mnuFitView", "mnuFitCopy", "mnuFitCopyData", "mnuFitSavePicture",
                                 "mnuFitSaveData", "mnuFitPrint"}) {
    fit.findChild<QAction*>(name)->setEnabled(dock.isVisible());
  }
}

void AddFitEntries(QMenu& menu, CurvesDock& dock) {
  LiveCurves& live = dock.Live();
  QAction* preview = AddSwitch(menu, "mnuFitPreview", QObject::tr("Pre&view"), false,
                               [&live](bool on) { live.SetPreview(on); });
  preview->setShortcut(QKeySequence("Ctrl+F5"));
  AddEntry(menu, "mnuFitTakePreview", QObject::tr("&Take Preview"), "",
           [&live] { live.TakePreview(); });
  QObject::connect(&menu, &QMenu::aboutToShow, &live, [&menu, &dock] { AllowEntries(menu, dock); });
  AddEntry(menu, "mnuFitTakeImproved", QObject::tr("Take &Improved Values"), "",
           [&dock] { dock.improvedValuesWanted(); });
  AddEntry(menu, "mnuFitSuggest", QObject::tr("S&uggest Start Values ..."), "Ctrl+G",
           [&live] { live.SuggestStart(); });
  AddEntry(menu, "mnuFitOrders", QObject::tr("&Which Order ..."), "",
           [&dock] { OrdersDialog(dock.Live(), &dock.Form()).exec(); });
}

void AddPictureEntries(QMenu& menu, Program& program, CurvesPane& pane) {
  menu.addSeparator();
  AddEntry(menu, "mnuFitView", QObject::tr("&Fit View"), "", [&pane] { pane.FitView(); });
  AddSwitch(menu, "mnuFitLogarithmic", QObject::tr("&Logarithmic Frequencies"),
            pane.Choices().isLogFrequency, [&pane](bool on) { pane.SetLogFrequency(on); });
  AddSwitch(menu, "mnuFitPlain", QObject::tr("|&H| Alone"), pane.Choices().showsPlainMagnitude,
            [&pane](bool on) { pane.SetPlainMagnitude(on); });
  menu.addSeparator();
  AddEntry(menu, "mnuFitCopy", QObject::tr("&Copy Picture"), "", [&pane] { CopyPicture(pane); });
  AddEntry(menu, "mnuFitCopyData", QObject::tr("Copy &Data"), "", [&pane] { CopyData(pane); });
  AddEntry(menu, "mnuFitSavePicture", QObject::tr("&Save Picture ..."), "",
           [&program, &pane] { SavePicture(program, pane); });
  AddEntry(menu, "mnuFitSaveData", QObject::tr("Save D&ata ..."), "",
           [&program, &pane] { SaveData(program, pane); });
  AddEntry(menu, "mnuFitPrint", QObject::tr("&Print ..."), "", [&pane] { PrintPicture(pane); });
}

/// The entries of the menu stand where the pointer is too, under those for poles and zeros.
void ShowContextMenu(QMenu& fit, CurvesDock& dock, DiagramView& view, const QPoint& at) {
  auto* menu = new QMenu(&view);
  menu->setObjectName("mnuDiagram");
  menu->setAttribute(Qt::WA_DeleteOnClose);
  if (view.Shown().kind == DiagramKind::poles) AddStructureEntries(*menu, dock.Live(), view, at);
  AllowEntries(fit, dock);
  menu->addActions(fit.actions());
  menu->popup(view.mapToGlobal(at));
}

}  // namespace

void AddCurvesMenu(MainWindow& form, CurvesDock& dock) {
  AddViewEntries(form, dock);
  auto* menu = new QMenu(QObject::tr("F&it"), &form);
  menu->setObjectName("mnuFit");
  form.menuBar()->insertMenu(form.findChild<QMenu*>("mnuDemos")->menuAction(), menu);
  AddFitEntries(*menu, dock);
  AddPictureEntries(*menu, dock.State(), dock.Pane());
  for (DiagramView* view : dock.Pane().findChildren<DiagramView*>()) {
    view->setContextMenuPolicy(Qt::CustomContextMenu);
    QObject::connect(
        view, &QWidget::customContextMenuRequested, menu,
        [menu, view, &dock](const QPoint& at) { ShowContextMenu(*menu, dock, *view, at); });
  }
}

}  // namespace polefit
