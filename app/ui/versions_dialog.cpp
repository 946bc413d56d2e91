#include "app/ui/versions_dialog.h"

#include <QComboBox>
#include <QDateTime>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>
#include <utility>

#include "widgets/window_size.h"

namespace polefit {

namespace {

enum VersionColumn { date, content, firstLine, columnCount };

QString DateText(std::int64_t seconds) {
  return QLocale().toString(QDateTime::fromSecsSinceEpoch(seconds), QLocale::ShortFormat);
}

}  // namespace

VersionsDialog::VersionsDialog(const std::vector<std::string>& paths, const std::string& chosen,
                               Lister lister, QWidget* parent)
    : QDialog(parent),
      lister_(std::move(lister)),
      files_(new QComboBox),
      table_(new QTableWidget(0, columnCount)),
      none_(new QLabel(tr("No former versions yet. Each save keeps here what it replaces."))) {
  setObjectName("frmVersions");
  setWindowTitle(tr("Former Versions"));
  auto* rows = new QVBoxLayout(this);
  auto* label = new QLabel(tr("&File:"));
  label->setBuddy(files_);
  files_->setObjectName("versionFiles");
  files_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  for (const std::string& path : paths) files_->addItem(QString::fromStdString(path));
  files_->setCurrentText(QString::fromStdString(chosen));
  none_->setObjectName("lblNoVersions");
  rows->addWidget(label);
  rows->addWidget(files_);
  none_->setAlignment(Qt::AlignTop);
  rows->addWidget(none_, 1);
  rows->addWidget(table_, 1);
  BuildTable();
  BuildButtons();
  connect(files_, &QComboBox::currentIndexChanged, this, &VersionsDialog::ShowPath);
  ShowPath();
  ResizeOnScreen(*this, {fontMetrics().averageCharWidth() * 100, fontMetrics().height() * 24});
  table_->setFocus();
}

void VersionsDialog::BuildTable() {
  table_->setObjectName("versions");
  table_->setHorizontalHeaderLabels({tr("Written"), tr("Content"), tr("First line")});
  table_->horizontalHeader()->setStretchLastSection(true);
  table_->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  table_->horizontalHeader()->setHighlightSections(false);
  table_->verticalHeader()->hide();
  table_->setSelectionBehavior(QAbstractItemView::SelectRows);
  table_->setSelectionMode(QAbstractItemView::SingleSelection);
  table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table_->setShowGrid(false);
  table_->setWordWrap(false);
  table_->setTabKeyNavigation(false);
  table_->setAccessibleName(tr("Former versions"));
  connect(table_, &QTableWidget::itemSelectionChanged, this, &VersionsDialog::FollowSelection);
}

void VersionsDialog::BuildButtons() {
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
  putBack_ = buttons->addButton(tr("&Put Back"), QDialogButtonBox::ActionRole);
  openAsNew_ = buttons->addButton(tr("&Open as New"), QDialogButtonBox::ActionRole);
  putBack_->setObjectName("cmdPutBack");
  openAsNew_->setObjectName("cmdOpenAsNew");
  putBack_->setToolTip(tr("Gives the file this content again; the present one becomes a version"));
  openAsNew_->setToolTip(tr("Shows this content as data that are in no file yet"));
  connect(putBack_, &QPushButton::clicked, this, [this] { Take(Wish::putBack); });
  connect(openAsNew_, &QPushButton::clicked, this, [this] { Take(Wish::openAsNew); });
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  layout()->addWidget(buttons);
}

std::string VersionsDialog::Path() const {
  return files_->currentText().toStdString();
}

const VersionLine& VersionsDialog::Line() const {
  return lines_.at(static_cast<std::size_t>(table_->currentRow()));
}

void VersionsDialog::ShowPath() {
  lines_ = lister_(Path());
  table_->clearContents();
  table_->setRowCount(static_cast<int>(lines_.size()));
  int row = 0;
  for (const VersionLine& line : lines_) ShowRow(row++, line);
  for (const int column : {date, content}) {
    table_->resizeColumnToContents(column);
    table_->setColumnWidth(column, table_->columnWidth(column) + fontMetrics().height());
  }
  table_->setVisible(!lines_.empty());
  none_->setVisible(lines_.empty());
  files_->setEnabled(files_->count() > 0);
  if (!lines_.empty()) table_->selectRow(0);
  FollowSelection();
}

void VersionsDialog::ShowRow(int row, const VersionLine& line) {
  const QString texts[] = {DateText(line.version.written), QString::fromStdString(line.content),
                           QString::fromStdString(line.firstLine).simplified()};
  for (int column = 0; column < columnCount; ++column) {
    table_->setItem(row, column, new QTableWidgetItem(texts[column]));
  }
}

void VersionsDialog::FollowSelection() {
  const bool isChosen = !table_->selectedItems().isEmpty();
  putBack_->setEnabled(isChosen && Line().canPutBack);
  openAsNew_->setEnabled(isChosen && Line().canOpen);
}

void VersionsDialog::Take(Wish wish) {
  wish_ = wish;
  accept();
}

}  // namespace polefit
