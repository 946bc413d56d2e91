#include "runs/ui/runs_pane.h"

#include <QDateTime>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLocale>
#include <QMenu>
#include <QPushButton>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "base/text_format.h"
#include "exchange/ui/copy_as.h"
#include "runs/fit_quality.h"
#include "widgets/controls.h"

namespace polefit {

namespace {

enum RunColumn {
  shown,
  time,
  file,
  order,
  ipower,
  rms,
  worst,
  cost,
  verdict,
  note,
  runColumnCount
};

constexpr int kIdRole = Qt::UserRole;
/// What a cell is sorted by, where that is not its text.
constexpr int kKeyRole = Qt::UserRole + 1;

/// Takes for itself the keys that the window's Edit menu has too.
class RunTable final : public QTreeWidget {
 public:
  std::function<void()> onEnter;
  std::function<void()> onDelete;
  std::function<void()> onCopy;

 protected:
  bool event(QEvent* event) override {
    if (event->type() == QEvent::ShortcutOverride) {
      const auto& key = static_cast<QKeyEvent&>(*event);
      for (const auto own : {QKeySequence::Delete, QKeySequence::Copy, QKeySequence::SelectAll}) {
        if (key.matches(own)) event->accept();
      }
    }
    return QTreeWidget::event(event);
  }
  void keyPressEvent(QKeyEvent* event) override {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) return onEnter();
    if (event->matches(QKeySequence::Delete)) return onDelete();
    if (event->matches(QKeySequence::Copy)) return onCopy();
    QTreeWidget::keyPressEvent(event);
  }
};

class RunItem final : public QTreeWidgetItem {
 public:
  using QTreeWidgetItem::QTreeWidgetItem;

  bool operator<(const QTreeWidgetItem& other) const override {
    const int column = treeWidget()->sortColumn();
    if (column == shown) return checkState(shown) < other.checkState(shown);
    const QVariant one = data(column, kKeyRole);
    const QVariant two = other.data(column, kKeyRole);
    if (one.isValid() && two.isValid()) return one.toDouble() < two.toDouble();
    if (one.isValid() != two.isValid()) return one.isValid();
    return text(column).localeAwareCompare(other.text(column)) < 0;
  }
};

void SetFigure(QTreeWidgetItem& item, int column, std::optional<double> figure,
               const std::string& text) {
  item.setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
  if (!figure) return;
  item.setText(column, QString::fromStdString(text));
  item.setData(column, kKeyRole, *figure);
}

void ShowFigures(QTreeWidgetItem& item, const KeptRun& run) {
  const auto poles = run.Figure("poles");
  SetFigure(item, order, poles,
            Format("%g / %g", poles.value_or(0), run.Figure("zeros").value_or(0)));
  const auto power = run.Figure("ipower");
  SetFigure(item, ipower, power, ShortestNumber(power.value_or(0)));
  const auto error = run.Figure("rms");
  SetFigure(item, rms, error, PerCent(error.value_or(0)));
  const auto decibels = run.Figure("worstdb");
  SetFigure(
      item, worst, decibels,
      Rounded(decibels.value_or(0), 2) + Format(" at %.4g", run.Figure("worstdbat").value_or(0)));
  const auto f = run.Figure("F");
  SetFigure(item, cost, f, Format("%.3e", f.value_or(0)));
}

QDateTime TimeOf(std::int64_t milliseconds) {
  return QDateTime::fromMSecsSinceEpoch(milliseconds);
}

/// "22 Nov 07:51", of another year "22 Nov 2025".
QString TimeText(std::int64_t milliseconds) {
  const QDateTime time = TimeOf(milliseconds);
  const bool isOfThisYear = time.date().year() == QDate::currentDate().year();
  return QLocale::c().toString(time, isOfThisYear ? "d MMM HH:mm" : "d MMM yyyy");
}

/// All buttons of a row are seen on a narrow page, too: with less room round their captions.
void AllowNarrow(QPushButton& button) {
  const int caption = button.fontMetrics().horizontalAdvance(button.text() + "  ");
  const bool hasArrow = button.menu() != nullptr;
  button.setMinimumWidth(caption + (hasArrow ? button.fontMetrics().height() : 0));
  button.setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
}

/// As wide as what stands in it, but a long file name or note must not push the figures out.
int WantedWidth(QTreeWidget& table, int column) {
  constexpr int kMostCharacters = 30;
  const int most = kMostCharacters * table.fontMetrics().averageCharWidth();
  const int contents = static_cast<QAbstractItemView&>(table).sizeHintForColumn(column);
  const bool isText = column == file || column == RunColumn::note;
  return std::max(table.header()->sectionSizeHint(column),
                  isText ? std::min(contents, most) : contents);
}

/// Columns grow with their contents, and never shrink: the user may have set their widths.
void SizeColumns(QTreeWidget& table, bool isFirst) {
  for (int column = 0; column < runColumnCount; ++column) {
    const int wanted = WantedWidth(table, column);
    if (isFirst || table.columnWidth(column) < wanted) table.setColumnWidth(column, wanted);
  }
}

}  // namespace

RunsPane::RunsPane() : table_(new RunTable), menu_(new QMenu(this)) {
  setObjectName("runsPane");
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->addWidget(MakeHeader("lblRuns", tr("Runs so far")));
  rows->addWidget(table_, 1);
  BuildTable();
  BuildButtons();
  FollowSelection();
}

void RunsPane::BuildTable() {
  table_->setObjectName("lstRuns");
  table_->setAccessibleName(tr("Runs so far"));
  table_->setRootIsDecorated(false);
  table_->setUniformRowHeights(true);
  table_->setAlternatingRowColors(true);
  table_->setAllColumnsShowFocus(true);
  table_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  table_->setContextMenuPolicy(Qt::CustomContextMenu);
  table_->setHeaderLabels({tr("Shown"), tr("Time"), tr("File"), tr("Poles\n/ zeros"), tr("Ipower"),
                           tr("rms"), tr("Worst dB\nat MHz"), tr("F"), tr("Verdict"), tr("Note")});
  for (int column = order; column <= cost; ++column) {
    table_->headerItem()->setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
  }
  table_->headerItem()->setToolTip(shown, tr("A tick draws the run's curve beside the others"));
  table_->setSortingEnabled(true);
  table_->sortByColumn(time, Qt::DescendingOrder);
  table_->setMinimumHeight(6 * table_->fontMetrics().lineSpacing());
  connect(table_, &QTreeWidget::itemSelectionChanged, this, &RunsPane::FollowSelection);
  // A click alone, which activates on some desktops, only selects.
  connect(table_, &QTreeWidget::itemDoubleClicked, this,
          [this] { actions_.at(RunAction::report)->trigger(); });
  connect(table_, &QTreeWidget::itemChanged, this, [this](QTreeWidgetItem* /*item*/, int column) {
    if (column == shown) Q_EMIT ticked(Ticked());
  });
  connect(table_, &QWidget::customContextMenuRequested, this,
          [this](const QPoint& at) { menu_->popup(table_->viewport()->mapToGlobal(at)); });
}

QAction* RunsPane::AddAction(RunAction action, const char* name, const QString& caption,
                             const QString& tip) {
  QAction* entry = menu_->addAction(caption);
  entry->setObjectName(name);
  entry->setToolTip(tip);
  connect(entry, &QAction::triggered, this, [this, action] { Q_EMIT wanted(action, Selected()); });
  actions_[action] = entry;
  return entry;
}

void RunsPane::BuildButtons() {
  auto* row = new QHBoxLayout;
  const auto addButton = [&](QAction* action, const char* name) {
    // The tab has mnemonics of its own.
    auto* button = MakeButton(name, action->text().remove('&'));
    button->setToolTip(action->toolTip());
    AllowNarrow(*button);
    connect(button, &QPushButton::clicked, action, &QAction::trigger);
    connect(action, &QAction::changed, button,
            [action, button] { button->setEnabled(action->isEnabled()); });
    row->addWidget(button);
  };
  using enum RunAction;
  addButton(AddAction(report, "actRunReport", tr("Show &Report"), tr("Opens its report (Enter)")),
            "cmdRunReport");
  addButton(AddAction(compare, "actRunCompare", tr("&Compare"),
                      tr("Compares the two runs that are selected")),
            "cmdRunCompare");
  addButton(AddAction(takeValues, "actRunTake", tr("&Take These Values"),
                      tr("Shows its answers, with the locations found, on the form")),
            "cmdRunTake");
  addButton(AddAction(openInput, "actRunInput", tr("&Open Its Input"),
                      tr("Shows what it was given on the form, as new data")),
            "cmdRunInput");
  copyAs_ = menu_->addMenu(tr("Copy &As"));
  AddExportFormats(*copyAs_, [this](const ExportFormatName& format) {
    if (Selected().size() == 1) Q_EMIT copyAsWanted(format, Selected().front());
  });
  AddAction(copyTable, "actRunCopyTable", tr("Copy the Ta&ble") + "\tCtrl+C", {});
  menu_->addSeparator();
  AddAction(pin, "actRunPin", tr("&Pin"), tr("A pinned run stays, however many follow"))
      ->setCheckable(true);
  AddAction(RunAction::note, "actRunNote", tr("&Note ..."), {});
  AddAction(remove, "actRunDelete", tr("&Delete ...") + "\tDel", {});
  auto& table = static_cast<RunTable&>(*table_);
  table.onEnter = [this] {
    // Tab alone makes a row the current one.
    QTreeWidgetItem* const current = table_->currentItem();
    if (current != nullptr && Selected().empty()) current->setSelected(true);
    actions_.at(report)->trigger();
  };
  table.onDelete = [this] { actions_.at(remove)->trigger(); };
  table.onCopy = [this] { actions_.at(copyTable)->trigger(); };
  auto* more = new QPushButton(tr("More"));
  more->setObjectName("cmdRunMore");
  more->setMenu(menu_);
  AllowNarrow(*more);
  row->addWidget(more);
  row->addStretch();
  static_cast<QVBoxLayout*>(layout())->addLayout(row);
}

void RunsPane::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  Q_EMIT seen();
}

void RunsPane::AddRun(const KeptRun& run, bool isTicked) {
  auto* item = new RunItem(table_);
  const QString id = QString::fromStdString(run.id);
  runs_[id] = run;
  item->setData(shown, kIdRole, id);
  item->setCheckState(shown, isTicked ? Qt::Checked : Qt::Unchecked);
  if (!run.hasValues) item->setData(shown, Qt::CheckStateRole, {});
  item->setText(time, TimeText(run.started));
  item->setToolTip(time, tr("%1 to %2")
                             .arg(TimeOf(run.started).toString("yyyy-MM-dd HH:mm:ss"),
                                  TimeOf(run.ended).toString("HH:mm:ss")));
  item->setData(time, kKeyRole, static_cast<double>(run.started));
  item->setText(file, run.file.empty() ? tr("(none)") : QString::fromStdString(run.file));
  item->setToolTip(file, QString::fromStdString(run.folder + "\n" + run.file));
  ShowFigures(*item, run);
  item->setText(verdict, WordOf(run.verdict.outcome));
  item->setToolTip(verdict, QString::fromStdString(run.verdict.text));
  const QString words = QString::fromStdString(run.note).simplified();
  item->setText(RunColumn::note, run.isPinned ? tr("[pinned] %1").arg(words) : words);
}

void RunsPane::ShowRuns(const std::vector<KeptRun>& runs) {
  std::vector<QString> ticks;
  std::vector<QString> selected;
  const std::size_t drawn = Ticked().size();
  for (const KeptRun& run : Ticked()) ticks.push_back(QString::fromStdString(run.id));
  for (const KeptRun& run : Selected()) selected.push_back(QString::fromStdString(run.id));
  const QTreeWidgetItem* currentItem = table_->currentItem();
  const QVariant current = currentItem == nullptr ? QVariant() : currentItem->data(shown, kIdRole);
  const bool isFirst = runs_.empty();
  const QSignalBlocker silence(table_);
  table_->setSortingEnabled(false);
  table_->clear();
  runs_.clear();
  for (const KeptRun& run : runs) {
    AddRun(run, std::ranges::find(ticks, QString::fromStdString(run.id)) != ticks.end());
  }
  table_->setSortingEnabled(true);
  for (int row = 0; row < table_->topLevelItemCount(); ++row) {
    QTreeWidgetItem* item = table_->topLevelItem(row);
    const QString id = item->data(shown, kIdRole).toString();
    if (current == id) table_->setCurrentItem(item, time, QItemSelectionModel::NoUpdate);
    item->setSelected(std::ranges::find(selected, id) != selected.end());
  }
  SizeColumns(*table_, isFirst);
  FollowSelection();
  if (Ticked().size() != drawn) Q_EMIT ticked(Ticked());  // a run that was drawn is gone
}

const KeptRun& RunsPane::RunOf(const QTreeWidgetItem& item) const {
  return runs_.at(item.data(shown, kIdRole).toString());
}

std::vector<KeptRun> RunsPane::Selected() const {
  std::vector<KeptRun> runs;
  for (int row = 0; row < table_->topLevelItemCount(); ++row) {
    const QTreeWidgetItem& item = *table_->topLevelItem(row);
    if (item.isSelected()) runs.push_back(RunOf(item));
  }
  return runs;
}

std::vector<KeptRun> RunsPane::Ticked() const {
  std::vector<KeptRun> runs;
  for (int row = 0; row < table_->topLevelItemCount(); ++row) {
    const QTreeWidgetItem& item = *table_->topLevelItem(row);
    if (item.checkState(shown) == Qt::Checked) runs.push_back(RunOf(item));
  }
  return runs;
}

void RunsPane::FollowSelection() {
  const std::vector<KeptRun> runs = Selected();
  const bool isOne = runs.size() == 1;
  using enum RunAction;
  actions_.at(report)->setEnabled(isOne && runs[0].hasReport);
  actions_.at(compare)->setEnabled(runs.size() == 2);
  actions_.at(takeValues)->setEnabled(isOne && runs[0].hasValues);
  for (const RunAction action : {openInput, pin, RunAction::note}) {
    actions_.at(action)->setEnabled(isOne);
  }
  actions_.at(pin)->setChecked(isOne && runs[0].isPinned);
  actions_.at(remove)->setEnabled(!runs.empty());
  copyAs_->setEnabled(isOne && runs[0].hasValues);
}

QString RunsPane::TableText() const {
  QStringList lines;
  for (int row = -1; row < table_->topLevelItemCount(); ++row) {
    const QTreeWidgetItem& item = row < 0 ? *table_->headerItem() : *table_->topLevelItem(row);
    QStringList cells;
    for (int column = time; column < runColumnCount; ++column) {
      cells << item.text(column).replace('\n', ' ');
    }
    lines << cells.join('\t');
  }
  return lines.join('\n') + '\n';
}

QList<QWidget*> RunsPane::TabOrder() const {
  QList<QWidget*> order = {table_};
  for (auto* button : findChildren<QPushButton*>()) order << button;
  return order;
}

}  // namespace polefit
