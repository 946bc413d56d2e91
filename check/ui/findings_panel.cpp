#include "check/ui/findings_panel.h"

#include <QAction>
#include <QListWidget>
#include <QMenu>

#include "check/finding_place.h"
#include "check/ui/finding_item.h"
#include "form/ui/main_window.h"
#include "form/ui/panel_entry.h"
#include "widgets/status_line.h"

namespace polefit {

FindingsPanel::FindingsPanel(MainWindow& form)
    : QDockWidget(tr("Findings"), &form), form_(form), list_(new QListWidget) {
  setObjectName("findingsPanel");
  setFeatures(DockWidgetClosable);
  list_->setObjectName("lstFindings");
  list_->setAccessibleName(tr("Findings"));
  list_->setWordWrap(true);
  setWidget(list_);
  form_.addDockWidget(Qt::BottomDockWidgetArea, this);
  hide();
  connect(list_, &QListWidget::itemActivated, this, [this] { GoTo(list_->currentRow()); });
  connect(list_, &QListWidget::itemClicked, this, [this] { GoTo(list_->currentRow()); });
  connect(&form_.Status(), &StatusLine::findingsClicked, this, [this] { TogglePanel(*this); });
  AddEntries();
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

void FindingsPanel::ShowFindings(const std::vector<Finding>& findings) {
  const std::string focused = form_.FocusedBox();
  findings_.clear();
  for (const Finding& finding : findings) {
    const FormPlace place = PlaceOnForm(finding.place);
    if (place.control.empty() || place.control != focused) findings_.push_back(finding);
  }
  visited_ = std::min(visited_, static_cast<int>(findings_.size()) - 1);
  list_->clear();
  for (const Finding& finding : findings_) AddFinding(*list_, finding);
  const QString counts = QString::fromStdString(CountText(findings_));
  form_.Status().ShowFindings(findings_.empty()
                                  ? tr("No findings")
                                  : counts + ": " + QString::fromStdString(findings_.front().text));
  Mark();
}

void FindingsPanel::Mark() const {
  std::vector<FormMark> marks;
  for (const Finding& finding : findings_) {
    // An answer that is still to be given is no mistake.
    if (finding.severity == Severity::open) continue;
    marks.push_back({PlaceOnForm(finding.place), finding.severity == Severity::fault,
                     QString::fromStdString(finding.text)});
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
  list_->setCurrentRow(index);
  form_.ShowPlace(PlaceOnForm(findings_[static_cast<std::size_t>(index)].place));
}

}  // namespace polefit
