#include "runs/ui/compare_dialog.h"

#include <QClipboard>
#include <QDialogButtonBox>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "widgets/controls.h"
#include "widgets/window_size.h"

namespace polefit {

namespace {

QStringList Texts(const std::vector<std::string>& cells) {
  QStringList texts;
  for (const std::string& cell : cells) texts << QString::fromStdString(cell);
  return texts;
}

/// The first column names what stands at the right of the others.
QTreeWidgetItem* MakeRow(const std::vector<std::string>& cells) {
  auto* row = new QTreeWidgetItem(Texts(cells));
  for (int column = 0; column < row->columnCount(); ++column) {
    row->setToolTip(column, row->text(column));
    if (column > 0) row->setTextAlignment(column, Qt::AlignRight);
  }
  return row;
}

void Show(QTreeWidget& tree, const ComparedTable& table) {
  QTreeWidgetItem* heading = MakeRow(table.heading);
  tree.addTopLevelItem(heading);
  QFont font = tree.font();
  font.setBold(true);
  for (int column = 0; column < tree.columnCount(); ++column) heading->setFont(column, font);
  for (const auto& row : table.rows) heading->addChild(MakeRow(row));
  if (table.rows.empty()) new QTreeWidgetItem(heading, {QObject::tr("None")});
}

QTreeWidget* MakeTree(const std::vector<ComparedTable>& tables) {
  auto* tree = new QTreeWidget;
  tree->setObjectName("compared");
  tree->setAccessibleName(QObject::tr("Comparison of two runs"));
  tree->setHeaderHidden(true);
  tree->setRootIsDecorated(false);
  tree->setAlternatingRowColors(true);
  tree->setColumnCount(static_cast<int>(tables.front().heading.size()));
  for (const ComparedTable& table : tables) Show(*tree, table);
  tree->expandAll();
  constexpr int kWidest = 40;  // characters
  const int letter = tree->fontMetrics().averageCharWidth();
  for (int column = 0; column < tree->columnCount(); ++column) {
    tree->resizeColumnToContents(column);
    tree->setColumnWidth(column, std::min(tree->columnWidth(column), kWidest * letter) + letter);
  }
  return tree;
}

}  // namespace

CompareDialog::CompareDialog(const std::vector<ComparedTable>& tables, const QStringList& titles,
                             QWidget* parent)
    : QDialog(parent) {
  setObjectName("frmCompare");
  setWindowTitle(tr("Compare Runs"));
  auto* rows = new QVBoxLayout(this);
  for (const QString& title : titles) rows->addWidget(MakeText("", title));
  QTreeWidget* tree = MakeTree(tables);
  rows->addWidget(tree, 1);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
  QPushButton* copy = buttons->addButton(tr("&Copy"), QDialogButtonBox::ActionRole);
  copy->setObjectName("cmdCompareCopy");
  copy->setToolTip(tr("Puts the tables onto the clipboard, for a spreadsheet"));
  const QString text = titles.join('\n') + "\n\n" + QString::fromStdString(TextOf(tables));
  connect(copy, &QPushButton::clicked, this,
          [text] { QGuiApplication::clipboard()->setText(text); });
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  rows->addWidget(buttons);
  // As wide as all columns, as far as the screen goes.
  const QMargins margins = layout()->contentsMargins();
  const int wanted = tree->header()->length() + margins.left() + margins.right() +
                     tree->verticalScrollBar()->sizeHint().width() + 2 * tree->frameWidth();
  ResizeOnScreen(*this, {wanted, fontMetrics().height() * 36});
  tree->setFocus();
}

}  // namespace polefit
