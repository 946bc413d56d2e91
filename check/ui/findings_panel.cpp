#include "check/ui/findings_panel.h"

#include <QAction>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QMenu>
#include <QPushButton>
#include <QTableWidget>
#include <algorithm>

#include "check/cures.h"
#include "check/finding_place.h"
#include "check/ui/finding_item.h"
#include "form/ui/main_window.h"
#include "form/ui/panel_entry.h"
#include "grids/ui/grid_widget.h"
#include "widgets/status_line.h"

namespace polefit {

namespace {

enum PanelColumn { kText, kCure };

QTableWidget* MakeList() {
  auto* list = new QTableWidget(0, 2);
  list->setObjectName("lstFindings");
  list->setAccessibleName(QObject::tr("Findings"));
  list->horizontalHeader()->hide();
  list->horizontalHeader()->setSectionResizeMode(kText, QHeaderView::Stretch);
  list->horizontalHeader()->setSectionResizeMode(kCure, QHeaderView::ResizeToContents);
  list->verticalHeader()->hide();
  list->verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
  list->setShowGrid(false);
  list->setEditTriggers(QAbstractItemView::NoEditTriggers);
  list->setSelectionBehavior(QAbstractItemView::SelectRows);
  list->setSelectionMode(QAbstractItemView::SingleSelection);
  list->setTabKeyNavigation(false);
  return list;
}

/// The button with some room around it, so that those of the rows do not touch.
QWidget* InRoom(QPushButton* button) {
  auto* room = new QWidget;
  auto* layout = new QHBoxLayout(room);
  const int gap = button->fontMetrics().height() / 8;
  layout->setContentsMargins(2 * gap, gap, 2 * gap, gap);
  layout->addWidget(button);
  return room;
}

bool IsAt(const FormPlace& place, const FormPlace& typing) {
  return !place.control.empty() && place == typing;
}

/// For the status bar: how many there are and the first one, then where that is, at last how many.
QStringList StatusTexts(const std::vector<Finding>& counted, const std::vector<Finding>& listed) {
  if (counted.empty()) return {QObject::tr("No findings")};
  const QString counts = QString::fromStdString(CountText(counted));
  if (listed.empty()) return {counts};
  QStringList texts = {counts + ": " + QString::fromStdString(listed.front().text)};
  const std::string place = PlaceText(listed.front().place);
  if (!place.empty()) texts << counts + ": " + QString::fromStdString(place);
  return texts << counts;
}

}  // namespace

FindingsPanel::FindingsPanel(MainWindow& form)
    : QDockWidget(tr("Findings"), &form), form_(form), list_(MakeList()) {
  setObjectName("findingsPanel");
  setFeatures(DockWidgetClosable);
  setWidget(list_);
  form_.addDockWidget(Qt::BottomDockWidgetArea, this);
  hide();
  connect(list_, &QTableWidget::cellActivated, this, [this](int row) { GoTo(row); });
  connect(list_, &QTableWidget::cellClicked, this, [this](int row) { GoTo(row); });
  connect(&form_.Status(), &StatusLine::findingsClicked, this, [this] { TogglePanel(*this); });
  AddEntries();
  for (GridWidget* grid : form_.findChildren<GridWidget*>()) AddCureEntry(*grid);
}

void FindingsPanel::AddEntries() {
  auto* menu = form_.findChild<QMenu*>("mnuView");
  menu->addSeparator();
  AddPanelEntry(*menu, *this, "mnuViewFindings", tr("&Findings"), "F7");
  for (const auto& [name, caption, key, step] :
       {std::tuple("mnuViewNextFinding", tr("&Next Finding"), "F8", 1),
        {"mnuViewPreviousFinding", tr("Pre&vious Finding"), "Shift+F8", -1}}) {
    QAction* action = menu->addAction(caption);
    action->setObjectName(name);
    action->setShortcut(QKeySequence(key));
    connect(action, &QAction::triggered, this, [this, by = step] { Visit(by); });
  }
}

/// Above the entries of the Edit menu; it shows only at a cell that it can cure.
void FindingsPanel::AddCureEntry(GridWidget& grid) {
  auto* entry = new QAction(&grid);
  entry->setObjectName("cure" + grid.objectName());
  entry->setVisible(false);
  auto* line = new QAction(&grid);
  line->setSeparator(true);
  line->setVisible(false);
  grid.insertActions(grid.actions().value(0), {entry, line});
  connect(entry, &QAction::visibleChanged, line,
          [entry, line] { line->setVisible(entry->isVisible()); });
  cureEntries_[&grid] = entry;
  connect(entry, &QAction::triggered, this, [this, entry] {
    const auto index = entry->data().toULongLong();
    if (index < findings_.size()) Apply(findings_[index]);
  });
  connect(grid.selectionModel(), &QItemSelectionModel::currentChanged, this,
          [this, &grid] { OfferCure(grid); });
}

void FindingsPanel::ShowFindings(const std::vector<Finding>& findings, bool isSubmitted) {
  const FormPlace typing = form_.TypingPlace();
  std::vector<Finding> counted;
  std::vector<Finding> listed;
  for (const Finding& finding : findings) {
    if (IsAt(PlaceOnForm(finding.place), typing)) continue;
    counted.push_back(finding);
    if (isSubmitted || finding.severity != Severity::open) listed.push_back(finding);
  }
  form_.Status().ShowFindings(StatusTexts(counted, listed));
  if (listed == findings_) return;
  findings_ = std::move(listed);
  visited_ = std::min(visited_, static_cast<int>(findings_.size()) - 1);
  ShowList();
  Mark();
  for (const auto& [grid, entry] : cureEntries_) OfferCure(*grid);
}

void FindingsPanel::ShowList() {
  list_->setRowCount(0);
  list_->setRowCount(static_cast<int>(findings_.size()));
  for (int row = 0; const Finding& finding : findings_) {
    auto* item = new QTableWidgetItem(FindingIcon(*style(), finding.severity),
                                      QString::fromStdString(finding.text));
    item->setData(Qt::AccessibleTextRole, SpokenFinding(finding));
    list_->setItem(row, kText, item);
    if (finding.cure != Cure::none) {
      auto* button = new QPushButton(QString::fromStdString(CureName(finding.cure)));
      button->setToolTip(tr("Puts this right, as one step that Undo takes back"));
      // The list, and with it the button, goes when its finding does.
      connect(
          button, &QPushButton::clicked, this, [this, finding] { Apply(finding); },
          Qt::QueuedConnection);
      list_->setCellWidget(row, kCure, InRoom(button));
    }
    ++row;
  }
}

void FindingsPanel::Mark() const {
  std::vector<FormMark> marks;
  for (const Finding& finding : findings_) {
    marks.push_back(
        {PlaceOnForm(finding.place), finding.IsFault(), QString::fromStdString(finding.text)});
  }
  form_.ShowMarks(marks);
}

void FindingsPanel::Visit(int step) {
  const int count = static_cast<int>(findings_.size());
  if (count == 0) return;
  const int from = visited_ < 0 && step < 0 ? 0 : visited_;
  GoTo((from + step + count) % count);
}

void FindingsPanel::GoTo(int index) {
  if (index < 0 || index >= static_cast<int>(findings_.size())) return;
  visited_ = index;
  list_->setCurrentCell(index, kText);
  form_.ShowPlace(PlaceOnForm(findings_[static_cast<std::size_t>(index)].place));
}

void FindingsPanel::OfferCure(GridWidget& grid) {
  QAction& entry = *cureEntries_[&grid];
  const FormPlace here = {grid.objectName().toStdString(), grid.CurrentRow(), grid.CurrentColumn()};
  const auto found = std::find_if(findings_.begin(), findings_.end(), [&](const Finding& finding) {
    return finding.cure != Cure::none && PlaceOnForm(finding.place) == here;
  });
  entry.setVisible(found != findings_.end());
  if (found == findings_.end()) return;
  entry.setText(QString::fromStdString(CureName(found->cure)));
  entry.setData(static_cast<qulonglong>(found - findings_.begin()));
}

void FindingsPanel::Apply(const Finding& finding) {
  const Finding cured = finding;
  form_.ChangeCells(QString::fromStdString(CureName(cured.cure)),
                    [&cured](FormCells& cells) { ApplyCure(cells, cured); });
  form_.ShowPlace(PlaceOnForm(cured.place));
}

}  // namespace polefit
